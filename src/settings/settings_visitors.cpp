#include "settings/settings_visitors.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "formula/additional_parameters.h"
#include "instruments/table/protocols.h"
#include "settings/texts.h"

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

}  // namespace

// --- Reading ---

template <class Number, class Narrow>
void SettingsReader::ReadNumber(std::string_view key, Number& field, Number preset, const NumberRule& rule,
                                Narrow narrow) {
  if (!Takes(rule.held)) return;
  field = preset;
  Convert(key, [&](const std::string& text) {
    const Number value = rule.emptyIsZero && text.empty() ? Number{} : narrow(ToDouble(text));
    if (rule.zeroIsPreset && std::fpclassify(value) == FP_ZERO) return;
    const auto wide = static_cast<double>(value);
    if (wide < rule.lowest || wide > rule.highest) {
      if (rule.beyondIsHighest && wide > rule.highest) field = static_cast<Number>(rule.highest);
      throw RuntimeError(ErrorNumber::Overflow, text::SettingOutOfRange);
    }
    field = value;
  });
}

/// Hands a stored text to `convert`; a failure is noted and leaves the preset.
template <class Conversion>
void SettingsReader::Convert(std::string_view key, Conversion convert) {
  const auto text = store_.Find(application_, section_, key);
  if (!text) return;
  try {
    convert(*text);
  } catch (const RuntimeError& error) {
    badKeys.push_back(section_ + '/' + std::string(key));
    problems.emplace_back(error.Number(), badKeys.back() + ": " + error.Text() + " (\"" + Excerpt(*text) + "\")");
  }
}

void SettingsReader::Key(std::string_view key, std::string& field, const OperatorText& preset, Held held) {
  if (Takes(held)) field = store_.Get(application_, section_, key, language_.In(preset));
}

void SettingsReader::Key(std::string_view key, bool& field, bool preset, Held held) {
  if (!Takes(held)) return;
  field = preset;
  Convert(key, [&](const std::string& text) { field = ToBoolean(text); });
}

void SettingsReader::Key(std::string_view key, std::int16_t& field, int preset, const NumberRule& rule) {
  ReadNumber(key, field, static_cast<std::int16_t>(preset), rule, ToInt16);
}

void SettingsReader::Key(std::string_view key, std::int32_t& field, std::int32_t preset, const NumberRule& rule) {
  ReadNumber(key, field, preset, rule, ToInt32);
}

void SettingsReader::Key(std::string_view key, float& field, float preset) {
  ReadNumber(key, field, preset, {}, ToSingle);
}

void SettingsReader::Key(std::string_view key, double& field, double preset, const NumberRule& rule) {
  ReadNumber(key, field, preset, rule, [](double value) { return value; });
}

// --- Writing ---

void SettingsWriter::Save(std::string_view key, std::string_view text, Held held) {
  if (keys_ == Keys::All || held == Held::InTemplates) store_.Save(application_, section_, key, text);
}

void SettingsWriter::Key(std::string_view key, std::string& field, const OperatorText&, Held held) {
  Save(key, field, held);
}

void SettingsWriter::Key(std::string_view key, bool& field, bool, Held held) {
  Save(key, field ? "True" : "False", held);
}

void SettingsWriter::Key(std::string_view key, std::int16_t& field, int, const NumberRule& rule) {
  Save(key, std::to_string(field), rule.held);
}

void SettingsWriter::Key(std::string_view key, std::int32_t& field, std::int32_t, const NumberRule& rule) {
  Save(key, std::to_string(field), rule.held);
}

void SettingsWriter::Key(std::string_view key, float& field, float) {
  Save(key, NumberText(field), Held::InTemplates);
}

void SettingsWriter::Key(std::string_view key, double& field, double, const NumberRule& rule) {
  Save(key, NumberText(field), rule.held);
}

void SettingsWriter::Constant(std::string_view key, int value) {
  Save(key, std::to_string(value), Held::LiveOnly);
}

// --- All keys ---

namespace {

/// NumberOfFormulae rules the length of both arrays.
void SizeFormulae(StoredSettings& session) {
  const auto size = static_cast<std::size_t>(session.NumberOfFormulae) + 1;
  session.AdditionalParameters.resize(size);
  session.Formula.resize(size);
}

/// The additional parameters that stand in both arrays.
int FormulaCount(const StoredSettings& session) {
  const std::size_t entries = std::min(session.AdditionalParameters.size(), session.Formula.size());
  return std::min<int>(session.NumberOfFormulae, static_cast<int>(entries) - 1);
}

void VisitParameters(KeyVisitor& visit, StoredSettings& session) {
  for (int i = 1; i <= kMaxParameters; ++i) VisitParameter(visit, session, i);
  VisitPlayback(visit, session);
  for (int i = 1; i <= kMaxParameters; ++i) VisitPlaybackParameter(visit, session, i);
  VisitFormulae(visit, session);
}

}  // namespace

void ReadSettings(SettingsReader& reader, StoredSettings& session) {
  VisitGeneral(reader, session);
  VisitPrintGraph(reader, session);
  ForgetChosenSeparators(session);
  VisitProtocol(reader, session);
  session.SerialData = PresentName(session.SerialData);
  VisitParameterCount(reader, session);
  VisitParameters(reader, session);
  SizeFormulae(session);
  for (int i = 1; i <= FormulaCount(session); ++i) {
    VisitFormula(reader, session, i);
    PrepareStatistics(session.AdditionalParameters[i], session.Formula[i]);
  }
}

void WriteSettings(SettingsWriter& writer, StoredSettings& session) {
  VisitGeneral(writer, session);
  VisitPrintGraph(writer, session);
  VisitProtocol(writer, session);
  VisitParameters(writer, session);
  for (int i = 1; i <= FormulaCount(session); ++i) VisitFormula(writer, session, i);
}

}  // namespace velk
