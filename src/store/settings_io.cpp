#include "store/settings_io.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "formula/additional_parameters.h"
#include "platform/errors.h"
#include "platform/numbers.h"
#include "platform/text.h"
#include "store/settings_keys.h"

namespace velk {

namespace {

bool ToBoolean(std::string_view text) {
  const std::string word = LowerCase(Trim(text));
  if (word == "true") return true;
  if (word == "false") return false;
  return ToDouble(text) != 0;
}

/// A stored value as it is shown in a message: short.
std::string Excerpt(const std::string& value) {
  constexpr std::size_t kMost = 40;
  return CharacterCount(value) <= kMost ? value : Left(value, kMost) + "...";
}

class Reader : public KeyVisitor {
 public:
  Reader(const Session& session, SettingsStore& store, std::string_view application)
      : session_(session), store_(store), application_(application) {}

  void Section(std::string_view name) override { section_ = name; }

  void Key(std::string_view key, std::string& field, std::string_view preset, Held) override {
    field = store_.Get(application_, section_, key, preset);
  }

  void Key(std::string_view key, bool& field, bool preset, Held) override {
    field = preset;
    Convert(key, [&](const std::string& text) { field = ToBoolean(text); });
  }

  void Key(std::string_view key, std::int16_t& field, int preset, const NumberRule& rule) override {
    ReadNumber(key, field, static_cast<std::int16_t>(preset), rule, ToInt16);
  }

  void Key(std::string_view key, std::int32_t& field, std::int32_t preset, const NumberRule& rule) override {
    ReadNumber(key, field, preset, rule, ToInt32);
  }

  void Key(std::string_view key, float& field, float preset) override { ReadNumber(key, field, preset, {}, ToSingle); }

  void Key(std::string_view key, double& field, double preset, const NumberRule& rule) override {
    ReadNumber(key, field, preset, rule, [](double value) { return value; });
  }

  void Constant(std::string_view, int) override {}

  std::vector<std::string> problems;

 private:
  template <class Number, class Narrow>
  void ReadNumber(std::string_view key, Number& field, Number preset, const NumberRule& rule, Narrow narrow) {
    field = preset;
    Convert(key, [&](const std::string& text) {
      const Number value = rule.emptyIsZero && text.empty() ? Number{} : narrow(ToDouble(text));
      if (rule.zeroIsPreset && std::fpclassify(value) == FP_ZERO) return;
      const auto wide = static_cast<double>(value);
      if (wide < rule.lowest || wide > rule.highest) {
        throw RuntimeError(ErrorNumber::Overflow, session_.Translator.Translate(MessageId::SettingOutOfRange));
      }
      field = value;
    });
  }

  /// Hands a stored text to `convert`; a failure is noted and leaves the preset.
  template <class Conversion>
  void Convert(std::string_view key, Conversion convert) {
    const auto text = store_.Find(application_, section_, key);
    if (!text) return;
    try {
      convert(*text);
    } catch (const RuntimeError& error) {
      problems.push_back(section_ + '/' + std::string(key) + ": " + error.what() + " (\"" + Excerpt(*text) + "\")");
    }
  }

  const Session& session_;
  SettingsStore& store_;
  std::string_view application_;
  std::string section_;
};

class Writer : public KeyVisitor {
 public:
  Writer(SettingsStore& store, std::string_view application) : store_(store), application_(application) {}

  void Section(std::string_view name) override { section_ = name; }

  void Key(std::string_view key, std::string& field, std::string_view, Held) override { Save(key, field); }
  void Key(std::string_view key, bool& field, bool, Held) override { Save(key, field ? "True" : "False"); }
  void Key(std::string_view key, std::int16_t& field, int, const NumberRule&) override {
    Save(key, std::to_string(field));
  }
  void Key(std::string_view key, std::int32_t& field, std::int32_t, const NumberRule&) override {
    Save(key, std::to_string(field));
  }
  void Key(std::string_view key, float& field, float) override { Save(key, NumberText(field)); }
  void Key(std::string_view key, double& field, double, const NumberRule&) override { Save(key, NumberText(field)); }
  void Constant(std::string_view key, int value) override { Save(key, std::to_string(value)); }

 private:
  void Save(std::string_view key, std::string_view text) { store_.Save(application_, section_, key, text); }

  SettingsStore& store_;
  std::string_view application_;
  std::string section_;
};

/// NumberOfFormulae rules the length of both arrays.
void SizeFormulae(Session& session) {
  const auto size = static_cast<std::size_t>(session.NumberOfFormulae) + 1;
  session.AdditionalParameters.resize(size);
  session.Formula.resize(size);
}

/// The additional parameters that stand in both arrays.
int FormulaCount(const Session& session) {
  const std::size_t entries = std::min(session.AdditionalParameters.size(), session.Formula.size());
  return std::min<int>(session.NumberOfFormulae, static_cast<int>(entries) - 1);
}

}  // namespace

std::vector<std::string> LoadSettings(Session& session, SettingsStore& store) {
  Reader live(session, store, kLiveSettings);
  VisitGeneral(live, session);
  VisitPrintGraph(live, session);
  VisitProtocol(live, session);
  // The name that older stores hold for the same protocol.
  if (session.SerialData == "formatted") session.SerialData = "formatted and at regular intervals";
  VisitParameterCount(live, session);
  for (int i = 1; i <= kMaxParameters; ++i) VisitParameter(live, session, i);
  VisitPlayback(live, session);
  for (int i = 1; i <= kMaxParameters; ++i) VisitPlaybackParameter(live, session, i);
  VisitFormulae(live, session);
  SizeFormulae(session);
  for (int i = 1; i <= FormulaCount(session); ++i) {
    VisitFormula(live, session, i);
    PrepareStatistics(session.AdditionalParameters[i], session.Formula[i]);
  }

  Reader templates(session, store, kTemplateList);
  VisitTemplateList(templates, session);

  std::vector<std::string> problems = store.TakeProblems();
  for (const Reader* reader : {&live, &templates}) {
    problems.insert(problems.end(), reader->problems.begin(), reader->problems.end());
  }
  return problems;
}

void SaveSettings(Session& session, SettingsStore& store) {
  Writer live(store, kLiveSettings);
  VisitGeneral(live, session);
  VisitPrintGraph(live, session);
  VisitProtocol(live, session);
  for (int i = 1; i <= kMaxParameters; ++i) VisitParameter(live, session, i);
  VisitPlayback(live, session);
  for (int i = 1; i <= kMaxParameters; ++i) VisitPlaybackParameter(live, session, i);
  VisitFormulae(live, session);
  for (int i = 1; i <= FormulaCount(session); ++i) VisitFormula(live, session, i);

  Writer templates(store, kTemplateList);
  VisitTemplateList(templates, session);
  store.Flush();
}

}  // namespace velk
