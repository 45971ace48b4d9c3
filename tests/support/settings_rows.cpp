#include "support/settings_rows.h"

#include <filesystem>
#include <sstream>
#include <type_traits>

namespace velk::test {

namespace {

template <class T>
std::string Text(const T& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    return value;
  } else if constexpr (std::is_same_v<T, bool>) {
    return value ? "True" : "False";
  } else {
    std::ostringstream out;
    out.precision(12);
    out << value;
    return out.str();
  }
}

using Rows = std::vector<SettingsRow>;

template <class T>
std::function<std::string(const Session&)> Of(T StoredSettings::*member) {
  return [member](const Session& session) { return Text(session.*member); };
}

void AddGeneral(Rows& rows) {
  const std::string s = "General";
  rows.push_back({s, "Current_language", Kind::Text, "English", "Russian", Of(&Session::Current_language)});
  rows.push_back({s, "CurrentFont", Kind::Text, "MS Sans Serif", "Arial", Of(&Session::CurrentFont)});
  rows.push_back({s, "CompanyLogoFile", Kind::Text, "", "/home/x/logo.bmp", Of(&Session::CompanyLogoFile)});
  rows.push_back({s, "DefaultDirectory", Kind::Text, std::filesystem::current_path().string(), "/jobs",
                  Of(&Session::DefaultDirectory)});
  rows.push_back({s, "SamplingRate", Kind::Double, "1.15740740741e-05", "0.25", Of(&Session::SamplingRate)});
  rows.push_back({s, "TheTimeOut", Kind::Int16, "5", "7", Of(&Session::TheTimeOut)});
  rows.push_back({s, "SensitivityCriterion", Kind::Int16, "20", "33", Of(&Session::SensitivityCriterion)});
  rows.push_back({s, "intFontSize", Kind::Int16, "10", "12", Of(&Session::intFontSize)});
  rows.push_back({s, "MaximumTime", Kind::Double, "3600", "7200.5", Of(&Session::MaximumTime)});
  rows.push_back({s, "pixelslength", Kind::Double, "120", "60", Of(&Session::pixelslength)});
  rows.push_back({s, "pixeldivide", Kind::Double, "15", "30", Of(&Session::pixeldivide)});
  rows.push_back({s, "CompanyLogoVisible", Kind::Boolean, "True", "False", Of(&Session::CompanyLogoVisible)});
  rows.push_back({s, "FitGraphsToWindows", Kind::Boolean, "True", "False", Of(&Session::FitGraphsToWindows)});
  rows.push_back({s, "NightColours", Kind::Boolean, "False", "True", Of(&Session::NightColours)});
  rows.push_back({s, "LargeValues", Kind::Text, "", "3 7", Of(&Session::LargeValues)});
  rows.push_back({s, "MainWindowPlace", Kind::Text, "", "8 16 1280 800", Of(&Session::MainWindowPlace)});
}

void AddPrintGraph(Rows& rows) {
  const std::string s = "PrintGraph";
  rows.push_back({s, "LogoInserted", Kind::Boolean, "False", "True", Of(&Session::LogoInserted)});
  rows.push_back({s, "TextInserted", Kind::Boolean, "False", "True", Of(&Session::TextInserted)});
  rows.push_back({s, "PrintGraphText1X", Kind::Single, "0", "1.5", Of(&Session::PrintGraphText1X)});
  rows.push_back({s, "PrintGraphText1Y", Kind::Single, "0", "2.5", Of(&Session::PrintGraphText1Y)});
  rows.push_back({s, "PrintGraphImageX", Kind::Single, "0", "-3.5", Of(&Session::PrintGraphImageX)});
  rows.push_back({s, "PrintGraphImageY", Kind::Single, "0", "4.5", Of(&Session::PrintGraphImageY)});
  rows.push_back({s, "PrintGraphImageH", Kind::Single, "0", "5.5", Of(&Session::PrintGraphImageH)});
  rows.push_back({s, "PrintGraphImageW", Kind::Single, "0", "6.5", Of(&Session::PrintGraphImageW)});
}

void AddProtocol(Rows& rows) {
  const std::string s = "Protocol";
  for (std::size_t port = 1; port <= 16; ++port) {
    rows.push_back({s, "Port" + std::to_string(port), Kind::Boolean, "False", "True",
                    [port](const Session& session) { return Text(session.Port[port]); }});
  }
  rows.push_back({s, "PortNumber", Kind::Int16, "1", "16", Of(&Session::PortNumber)});
  rows.push_back({s, "BaudRate", Kind::Int32, "9600", "115200", Of(&Session::BaudRate)});
  rows.push_back({s, "Handshake", Kind::Int16, "0", "2", Of(&Session::Handshake)});
  rows.push_back({s, "Parity", Kind::Text, "N", "E", Of(&Session::Parity)});
  rows.push_back({s, "DataBits", Kind::Int16, "8", "7", Of(&Session::DataBits)});
  rows.push_back({s, "StopBits", Kind::Text, "1", "1.5", Of(&Session::StopBits)});
  rows.push_back({s, "Delimiter", Kind::Text, " ", "\t", Of(&Session::Delimiter)});
  rows.push_back({s, "Terminator", Kind::Text, "\r", std::string("\n\r\0 ", 4), Of(&Session::Terminator)});
  rows.push_back({s, "SerialData", Kind::Text, "formatted and at regular intervals", "sent when requested",
                  Of(&Session::SerialData)});
  rows.push_back({s, "FormattedLineLength", Kind::Int16, "0", "80", Of(&Session::FormattedLineLength)});
  rows.push_back({s, "daqIPAddress", Kind::Text, "192.168.0.100", "10.0.0.7", Of(&Session::daqIPAddress)});
  rows.push_back({s, "daqHTML", Kind::Text, "pens.htm", "page.htm", Of(&Session::daqHTML)});
}

void AddPlayback(Rows& rows) {
  const std::string s = "Playback";
  rows.push_back({s, "PlaybackSpeed", Kind::Int16, "1", "9", Of(&Session::PlaybackSpeed)});
  rows.push_back({s, "FirstDataLine", Kind::Int16, "1", "3", Of(&Session::FirstDataLine)});
  rows.push_back({s, "PlayBackNoOfFields", Kind::Int16, "1", "18", Of(&Session::PlayBackNoOfFields)});
  rows.push_back({s, "PlaybackDelimiter", Kind::Text, "", ",", Of(&Session::PlaybackDelimiter)});
}

/// Gives the parameter record of a session that a section fills.
using Record = std::function<const Parameter&(const Session&)>;

struct ParameterPresets {
  std::string name;
  std::string formIndex;
  std::string visibleKey;
  std::string wrapping;
};

void AddParameter(Rows& rows, const std::string& s, const Record& record, const ParameterPresets& presets) {
  const auto of = [&record](auto Parameter::*member) {
    return [record, member](const Session& session) { return Text(record(session).*member); };
  };
  rows.push_back({s, "name", Kind::Text, presets.name, "Pump \"A\" ", of(&Parameter::name)});
  rows.push_back({s, "units", Kind::Text, "Units", "\xC2\xB0\x43", of(&Parameter::units)});
  rows.push_back({s, "min", Kind::Double, "0", "-5.5", of(&Parameter::min)});
  rows.push_back({s, "max", Kind::Double, "100", "1234.5", of(&Parameter::max)});
  rows.push_back({s, "color", Kind::Int32, "0", "16711680", of(&Parameter::color)});
  rows.push_back({s, "format", Kind::Text, "#0.0000", "#0", of(&Parameter::format)});
  rows.push_back({s, "FormIndex", Kind::Int16, presets.formIndex, "17", of(&Parameter::FormIndex)});
  rows.push_back({s, presets.visibleKey, Kind::Boolean, "True", "False", of(&Parameter::GraphVisible)});
  rows.push_back({s, "CommandString", Kind::Text, "", "R01\r\n", of(&Parameter::CommandString)});
  rows.push_back({s, "loweralarm", Kind::Text, "None", "1.5", of(&Parameter::loweralarm)});
  rows.push_back({s, "upperalarm", Kind::Text, "None", "", of(&Parameter::upperalarm)});
  rows.push_back({s, "ResetCommand", Kind::Text, "", "Z\\x\r", of(&Parameter::ResetCommand)});
  rows.push_back({s, "Gain", Kind::Double, "1", "0.125", of(&Parameter::Gain)});
  rows.push_back({s, "Offset", Kind::Double, "0", "-2.75", of(&Parameter::Offset)});
  rows.push_back({s, "Wrapping", Kind::Boolean, presets.wrapping, presets.wrapping == "True" ? "False" : "True",
                  of(&Parameter::Wrapping)});
}

}  // namespace

std::vector<SettingsRow> SettingsRows(const std::vector<int>& parameters, const std::vector<int>& formulas) {
  Rows rows;
  AddGeneral(rows);
  AddPrintGraph(rows);
  AddProtocol(rows);
  AddPlayback(rows);
  for (const int i : parameters) {
    const auto at = static_cast<std::size_t>(i);
    const std::string number = std::to_string(i);
    AddParameter(rows, "Parameter" + number, [at](const Session& s) -> const Parameter& { return s.Parameters[at]; },
                 {"Parameter " + number, number, "GraphVisible", "True"});
    rows.push_back({"Parameter" + number, "SmoothValue", Kind::Int16, "1", "10",
                    [at](const Session& s) { return Text(s.SmoothValue[at]); }});
    AddParameter(rows, "PlaybackParameter" + number,
                 [at](const Session& s) -> const Parameter& { return s.PlaybackParameters[at]; },
                 {"Parameter " + number, "0", "GraphVisible", "True"});
  }
  for (const int i : formulas) {
    const auto at = static_cast<std::size_t>(i);
    const std::string number = std::to_string(i);
    rows.push_back({"Formula" + number, "Formula", Kind::Text, "", "{Flow} * 2",
                    [at](const Session& s) { return s.Formula.at(at); }});
    AddParameter(rows, "Formula" + number,
                 [at](const Session& s) -> const Parameter& { return s.AdditionalParameters.at(at); },
                 {"Additional Parameter " + number, "0", "visible", "False"});
  }
  return rows;
}

std::vector<std::string> WrongTexts(Kind kind) {
  switch (kind) {
    case Kind::Text:
      return {};
    case Kind::Boolean:
      return {"maybe", "", "truely", "1 0"};
    case Kind::Int16:
      return {"abc", "", "5x", "32768", "-32769", "1e999"};
    case Kind::Int32:
      return {"abc", "", "5x", "2147483648", "-2147483649", "nan"};
    case Kind::Single:
      return {"abc", "", "1.2.3", "1e39", "-1e39"};
    case Kind::Double:
      return {"abc", "", "1,5", "1e309", "inf"};
  }
  return {};
}

}  // namespace velk::test
