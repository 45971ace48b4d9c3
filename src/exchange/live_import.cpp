#include "exchange/live_import.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "exchange/texts.h"
#include "settings/settings_keys.h"

namespace velk {

namespace {

constexpr const char* kImportLive = "ImportLive";
constexpr double kMostFields = 1024;

/// A number as the keys of a list have it: with the blank that stands for its sign.
std::string Numbered(const char* key, std::size_t number) {
  return std::string(key) + " " + std::to_string(number);
}

/// Reads the keys of one field.
class FieldKeys {
 public:
  FieldKeys(SettingsStore& settings, std::size_t number) : settings_(settings), number_(number) {}

  std::string Text(const char* key, const std::string& preset) const {
    return settings_.Get(kLiveSettings, kImportLive, Numbered(key, number_), preset);
  }
  double Number(const char* key, double preset) const {
    const double number = Val(Text(key, NumberText(preset)));
    return std::isfinite(number) ? number : preset;
  }
  int Whole(const char* key, int preset, double most) const {
    const double number = Number(key, preset);
    return number >= 0 && number <= most ? static_cast<int>(number) : preset;
  }
  bool Flag(const char* key, bool preset) const { return Number(key, preset ? 1 : 0) != 0; }

 private:
  SettingsStore& settings_;
  const std::size_t number_;
};

LiveField ReadField(SettingsStore& settings, const Language& language, std::size_t number) {
  const FieldKeys keys(settings, number);
  const LiveField preset;
  LiveField field;
  field.Name = keys.Text("name", "");
  field.Type = static_cast<std::int16_t>(keys.Whole("Type", preset.Type, 32767));
  field.min = keys.Number("min", preset.min);
  field.max = keys.Number("max", preset.max);
  field.DisplayName = keys.Text("DisplayName", "");
  field.Unit = keys.Text("Unit", language.In(text::FieldUnit));
  field.format = keys.Text("format", preset.format);
  field.Lower = keys.Number("Lower", preset.Lower);
  field.Upper = keys.Number("Upper", preset.Upper);
  field.Colour = keys.Whole("Colour", preset.Colour, 0xFFFFFF);
  field.UpperSet = keys.Flag("UpperSet", preset.UpperSet);
  field.LowerSet = keys.Flag("LowerSet", preset.LowerSet);
  field.Wrapping = keys.Flag("Wrapping", preset.Wrapping);
  return field;
}

}  // namespace

bool LoadFromRegistry(SettingsStore& settings, const Language& language, LiveImport& live) {
  live = {};
  const auto read = [&](const char* key, const char* preset) {
    return settings.Get(kLiveSettings, kImportLive, key, preset);
  };
  live.DBaseName = read("DataBaseFileName", "");
  if (live.DBaseName.empty()) return false;
  live.TableName = read("TableName", "");
  live.DateField = read("DateField", "");
  live.TimeField = read("TimeField", "");
  live.Import = Val(read("Import", "0")) != 0;
  const double fields = std::clamp(Val(read("FieldsCounts", "0")), 0.0, kMostFields);
  for (std::size_t i = 1; i <= static_cast<std::size_t>(fields); ++i)
    live.Fields.push_back(ReadField(settings, language, i));
  return true;
}

void SaveToRegistory(SettingsStore& settings, const LiveImport& live) {
  const auto save = [&](const std::string& key, const std::string& value) {
    settings.Save(kLiveSettings, kImportLive, key, value);
  };
  const auto flag = [](bool set) { return set ? "1" : "0"; };
  save("TableName", live.TableName);
  save("DateField", live.DateField);
  save("TimeField", live.TimeField);
  save("Import", flag(live.Import));
  save("FieldsCounts", std::to_string(live.Fields.size()));
  for (std::size_t i = 1; i <= live.Fields.size(); ++i) {
    const LiveField& field = live.Fields[i - 1];
    save(Numbered("name", i), field.Name);
    save(Numbered("Type", i), std::to_string(field.Type));
    save(Numbered("min", i), NumberText(field.min));
    save(Numbered("max", i), NumberText(field.max));
    save(Numbered("DisplayName", i), field.DisplayName);
    save(Numbered("Unit", i), field.Unit);
    save(Numbered("format", i), field.format);
    save(Numbered("Lower", i), NumberText(field.Lower));
    save(Numbered("Upper", i), NumberText(field.Upper));
    save(Numbered("Colour", i), std::to_string(field.Colour));
    save(Numbered("UpperSet", i), flag(field.UpperSet));
    save(Numbered("LowerSet", i), flag(field.LowerSet));
    save(Numbered("Wrapping", i), flag(field.Wrapping));
  }
  save("DataBaseFileName", live.DBaseName);
}

}  // namespace velk
