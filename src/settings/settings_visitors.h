#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/errors.h"
#include "base/language.h"
#include "platform/settings/settings.h"
#include "settings/settings_keys.h"

namespace velk {

/// Which keys a visitor takes; it passes over the others.
enum class Keys { All, OfTemplates };

/// Fills the fields from an application of the store. A missing key gives its preset, and so does one whose value is
/// none of its type or is refused by its rule; that is a problem, and the walk goes on.
class SettingsReader : public KeyVisitor {
 public:
  SettingsReader(const Language& language, SettingsStore& store, std::string_view application, Keys keys = Keys::All)
      : language_(language), store_(store), application_(application), keys_(keys) {}

  void Section(std::string_view name) override { section_ = name; }
  void Key(std::string_view key, std::string& field, const OperatorText& preset, Held held) override;
  void Key(std::string_view key, bool& field, bool preset, Held held) override;
  void Key(std::string_view key, std::int16_t& field, int preset, const NumberRule& rule) override;
  void Key(std::string_view key, std::int32_t& field, std::int32_t preset, const NumberRule& rule) override;
  void Key(std::string_view key, float& field, float preset) override;
  void Key(std::string_view key, double& field, double preset, const NumberRule& rule) override;
  void Constant(std::string_view, int) override {}

  /// In the order of the keys; the text is "section/key: what is wrong (value)".
  std::vector<RuntimeError> problems;
  /// "section/key" of each problem.
  std::vector<std::string> badKeys;

 private:
  bool Takes(Held held) const { return keys_ == Keys::All || held == Held::InTemplates; }
  template <class Number, class Narrow>
  void ReadNumber(std::string_view key, Number& field, Number preset, const NumberRule& rule, Narrow narrow);
  template <class Conversion>
  void Convert(std::string_view key, Conversion convert);

  const Language& language_;
  SettingsStore& store_;
  std::string application_;
  Keys keys_;
  std::string section_;
};

/// Writes the fields to an application of the store.
class SettingsWriter : public KeyVisitor {
 public:
  SettingsWriter(SettingsStore& store, std::string_view application, Keys keys = Keys::All)
      : store_(store), application_(application), keys_(keys) {}

  void Section(std::string_view name) override { section_ = name; }
  void Key(std::string_view key, std::string& field, const OperatorText& preset, Held held) override;
  void Key(std::string_view key, bool& field, bool preset, Held held) override;
  void Key(std::string_view key, std::int16_t& field, int preset, const NumberRule& rule) override;
  void Key(std::string_view key, std::int32_t& field, std::int32_t preset, const NumberRule& rule) override;
  void Key(std::string_view key, float& field, float preset) override;
  void Key(std::string_view key, double& field, double preset, const NumberRule& rule) override;
  void Constant(std::string_view key, int value) override;

 private:
  void Save(std::string_view key, std::string_view text, Held held);

  SettingsStore& store_;
  std::string application_;
  Keys keys_;
  std::string section_;
};

/// Reads all keys in their order, the additional parameters as many as NumberOfFormulae says. A SerialData of older
/// stores becomes the present one.
void ReadSettings(SettingsReader& reader, StoredSettings& session);

/// Writes all keys in their order, NumberOfParameters aside.
void WriteSettings(SettingsWriter& writer, StoredSettings& session);

}  // namespace velk
