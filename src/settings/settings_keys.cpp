#include "settings/settings_keys.h"
#include "formula/texts.h"
#include "model/texts.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace velk {

namespace {

constexpr NumberRule kPositive{.lowest = std::numeric_limits<double>::min()};
/// Samples in a block, twips that a sample goes down, and twips of the whole height: each fits in a graph.
constexpr NumberRule kGraphMeasure{
    .lowest = std::numeric_limits<double>::min(), .highest = kMaxGraphHeight, .held = Held::LiveOnly};
/// Points. Wider than what may be entered, so that a file from elsewhere is taken as it is.
constexpr NumberRule kFontSize{.lowest = 1, .highest = 100, .held = Held::LiveOnly};
constexpr NumberRule kGraphNumber{.lowest = 0, .highest = kMaxParameters};

std::string CurrentDirectory() {
  std::error_code none;
  return std::filesystem::current_path(none).string();
}

std::string Numbered(std::string_view text, int i) {
  return std::string(text) + std::to_string(i);
}

/// What input channels, playback and additional parameters have in common.
struct ParameterPresets {
  OperatorText name;
  int formIndex = 0;
  NumberRule formIndexRule = kGraphNumber;
  std::string_view visibleKey = "GraphVisible";
  NumberRule gainRule = {};
  bool wrapping = true;
};

void VisitFields(KeyVisitor& visit, Parameter& parameter, const ParameterPresets& presets) {
  visit.Key("name", parameter.name, presets.name);
  visit.Key("units", parameter.units, text::DefaultUnits);
  visit.Key("min", parameter.min, 0);
  visit.Key("max", parameter.max, 100);
  visit.Key("color", parameter.color, 0);
  visit.Key("format", parameter.format, "#0.0000");
  visit.Key("FormIndex", parameter.FormIndex, presets.formIndex, presets.formIndexRule);
  visit.Key(presets.visibleKey, parameter.GraphVisible, true);
  visit.Key("CommandString", parameter.CommandString, "");
  visit.Key("loweralarm", parameter.loweralarm, kNoAlarm);
  visit.Key("upperalarm", parameter.upperalarm, kNoAlarm);
  visit.Key("ResetCommand", parameter.ResetCommand, "");
  visit.Key("Gain", parameter.Gain, 1, presets.gainRule);
  visit.Key("Offset", parameter.Offset, 0);
  visit.Key("Wrapping", parameter.Wrapping, presets.wrapping);
}

}  // namespace

void VisitGeneral(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("General");
  visit.Key("Current_language", session.Current_language, "English", Held::LiveOnly);
  visit.Key("CurrentFont", session.CurrentFont, "MS Sans Serif");
  visit.Key("CompanyLogoFile", session.CompanyLogoFile, "");
  visit.Key("DefaultDirectory", session.DefaultDirectory,
            session.DirectoryAtStart.empty() ? CurrentDirectory() : session.DirectoryAtStart);
  visit.Key("SamplingRate", session.SamplingRate, 1.0 / 86400, kPositive);
  visit.Key("TheTimeOut", session.TheTimeOut, 5);
  visit.Key("SensitivityCriterion", session.SensitivityCriterion, 20);
  visit.Constant("intMaxNoParamsInForm", kMaxParameters);
  visit.Key("intFontSize", session.intFontSize, 10, kFontSize);
  visit.Key("MaximumTime", session.MaximumTime, 3600, kGraphMeasure);
  visit.Key("pixelslength", session.pixelslength, 120, kGraphMeasure);
  visit.Key("pixeldivide", session.pixeldivide, 15, kGraphMeasure);
  visit.Key("CompanyLogoVisible", session.CompanyLogoVisible, true, Held::LiveOnly);
  visit.Key("FitGraphsToWindows", session.FitGraphsToWindows, true, Held::LiveOnly);
  visit.Key("MainWindowPlace", session.MainWindowPlace, "", Held::LiveOnly);
  visit.Key("LargeValues", session.LargeValues, "", Held::LiveOnly);
  visit.Key("NightColours", session.NightColours, false, Held::LiveOnly);
}

void VisitPrintGraph(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("PrintGraph");
  visit.Key("LogoInserted", session.LogoInserted, false);
  visit.Key("TextInserted", session.TextInserted, false, Held::LiveOnly);
  visit.Key("PrintGraphText1X", session.PrintGraphText1X, 0);
  visit.Key("PrintGraphText1Y", session.PrintGraphText1Y, 0);
  visit.Key("PrintGraphImageX", session.PrintGraphImageX, 0);
  visit.Key("PrintGraphImageY", session.PrintGraphImageY, 0);
  visit.Key("PrintGraphImageH", session.PrintGraphImageH, 0);
  visit.Key("PrintGraphImageW", session.PrintGraphImageW, 0);
}

void VisitProtocol(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("Protocol");
  for (int i = 1; i <= kPorts; ++i) visit.Key(Numbered("Port", i), session.Port[i], false);
  visit.Key("PortNumber", session.PortNumber, 1, {.lowest = 1, .highest = kPorts});
  visit.Key("BaudRate", session.BaudRate, 9600);
  visit.Key("Handshake", session.Handshake, 0);
  visit.Key("Parity", session.Parity, "N");
  visit.Key("DataBits", session.DataBits, 8);
  visit.Key("StopBits", session.StopBits, "1");
  const bool apart = HasChosenSeparators(session);
  visit.Key("Delimiter", apart ? session.ChosenDelimiter : session.Delimiter, " ");
  visit.Key("Terminator", apart ? session.ChosenTerminator : session.Terminator, "\r");
  visit.Key("SerialData", session.SerialData, "formatted and at regular intervals");
  visit.Key("FormattedLineLength", session.FormattedLineLength, 0);
  visit.Key("daqIPAddress", session.daqIPAddress, "192.168.0.100", Held::LiveOnly);
  visit.Key("daqHTML", session.daqHTML, "pens.htm", Held::LiveOnly);
}

void VisitParameterCount(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("Parameters");
  visit.Key("NumberOfParameters", session.UnitParameters ? *session.UnitParameters : session.NumberOfParameters, 1,
            {.lowest = 0, .highest = kMaxParameters});
}

void VisitParameter(KeyVisitor& visit, StoredSettings& session, int i) {
  visit.Section(Numbered("Parameter", i));
  VisitFields(visit, session.Parameters[i],
              {.name = Numbered("Parameter ", i), .formIndex = i, .gainRule = {.zeroIsPreset = true}});
  visit.Key("SmoothValue", session.SmoothValue[i], 1, {.lowest = 1, .highest = kMaxSmooth, .zeroIsPreset = true});
}

void VisitPlayback(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("Playback");
  visit.Key("PlaybackSpeed", session.PlaybackSpeed, 1);
  visit.Key("FirstDataLine", session.FirstDataLine, 1);
  visit.Key("PlayBackNoOfFields", session.PlayBackNoOfFields, 1);
  visit.Key("PlaybackDelimiter", session.PlaybackDelimiter, "");
}

void VisitPlaybackParameter(KeyVisitor& visit, StoredSettings& session, int i) {
  NumberRule graphNumber = kGraphNumber;
  graphNumber.emptyIsZero = true;
  visit.Section(Numbered("PlaybackParameter", i));
  VisitFields(visit, session.PlaybackParameters[i], {.name = Numbered("Parameter ", i), .formIndexRule = graphNumber});
}

void VisitFormulae(KeyVisitor& visit, StoredSettings& session) {
  visit.Section("Formulae");
  visit.Key("NumberOfFormulae", session.NumberOfFormulae, 0,
            {.lowest = 0,
             .highest = static_cast<double>(kMaxParameters - session.NumberOfParameters),
             .beyondIsHighest = true});
}

void VisitFormula(KeyVisitor& visit, StoredSettings& session, int i) {
  const auto index = static_cast<std::size_t>(i);
  visit.Section(Numbered("Formula", i));
  visit.Key("Formula", session.Formula[index], "");
  VisitFields(visit, session.AdditionalParameters[index],
              {.name = text::DefaultAdditionalName + std::to_string(i), .visibleKey = "visible", .wrapping = false});
}

void VisitTemplateList(KeyVisitor& visit, Session& session) {
  auto count = static_cast<std::int16_t>(std::max<std::size_t>(session.TemplateNames.size(), 1) - 1);
  visit.Section("General");
  visit.Key("NumberOfTemplates", count, 0, {.lowest = 0});
  session.TemplateNames.resize(static_cast<std::size_t>(count) + 1);
  for (int i = 1; i <= count; ++i) {
    visit.Key(Numbered("TheTemplateName", i), session.TemplateNames[static_cast<std::size_t>(i)], "");
  }
}

}  // namespace velk
