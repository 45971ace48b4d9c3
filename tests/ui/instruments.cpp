#include "ui/instruments.h"

#include <ostream>
#include <utility>

namespace velk::test {

namespace {

using Journal = std::vector<SentFrame>;
using Lines = std::vector<SentLine>;

Lines AtTerminator(const Journal& journal, const LineForm& form) {
  return LinesEndingIn(form.terminator, journal);
}
/// Frames between CRs of their own: the CR ahead of a frame ends no line.
Lines BetweenCrs(const Journal& journal, const LineForm& form) {
  Lines lines = LinesEndingIn(form.terminator, journal);
  std::erase_if(lines, [&](const SentLine& line) { return line.text == form.terminator; });
  return lines;
}
Lines AtEitherEnd(const Journal& journal, const LineForm&) {
  return LinesOfEitherEnd(journal);
}
Lines AtBlankLine(const Journal& journal, const LineForm&) {
  return LinesEndingIn("\r\n\r\n", journal);
}
Lines AnswersTogether(const Journal& journal, const LineForm& form) {
  return LinesOfAnswers(form.channels, journal);
}
Lines TablePages(const Journal& journal, const LineForm&) {
  return LinesOfTablePages(journal);
}
Lines PanelPages(const Journal& journal, const LineForm&) {
  return LinesOfPanelPages(journal);
}

const std::string kBlank = " ", kCr = "\r", kLf = "\n", kCrLf = "\r\n";

/// A KESTA or LUMO unit. With `faults` no rejected line is due: then only accepted ones are in the log.
Instrument Unit(const char* name, const char* serialData, int channels, std::size_t frames,
                std::vector<std::string> faults = {}) {
  const double sampling = faults.empty() ? 1 : kNeverDue;
  std::vector<std::string> arguments = std::move(faults);
  arguments.insert(arguments.end(), {"--unit", serialData});
  return {.name = name,
          .serialData = serialData,
          .simulator = "unit",
          .arguments = arguments,
          .form = {.channels = channels},
          .lines = AtTerminator,
          .rule = AsLongAsTheLineBefore,
          .frames = frames,
          .samplingSeconds = sampling};
}

std::vector<Instrument> Units() {
  return {Unit("Kesta3", "KESTA version 3", 18, 36),
          Unit("Kesta4", "KESTA version 4", 18, 38, {"--change-length-after", "22"}),
          Unit("Kesta5", "KESTA version 5", 22, 50, {"--damage", "0.2", "--seed", "5"}),
          Unit("LumoA", "LUMO version A", 4, 50, {"--damage", "0.2", "--seed", "2"}),
          Unit("LumoB", "LUMO version B", 10, 50, {"--damage", "0.2", "--seed", "3"})};
}

std::vector<Instrument> FormattedOnes() {
  return {{.name = "FormattedByBlanks",
           .serialData = "formatted and at regular intervals",
           .simulator = "formatted",
           .arguments = {"--end", "cr", "--noise-every", "16", "--cut-every", "21"},
           .form = {8, kBlank, kCr},
           .lines = AtTerminator,
           .rule = FormattedLine,
           .frames = 45,
           .samplingSeconds = kNeverDue,
           .setUp = 4,
           .asksAtStartUp = true},
          {.name = "FormattedBySemicolons",
           .serialData = "formatted and at regular intervals",
           .simulator = "formatted",
           .arguments = {"--end", "lfcr", "--delimiter", ";", "--width", "11", "--wrong-count-every", "9",
                         "--noise-every", "7"},
           .form = {3, ";", "\n\r"},
           .lines = AtTerminator,
           .rule = FormattedLine,
           .frames = 45,
           .samplingSeconds = kNeverDue,
           .setUp = 4,
           .asksAtStartUp = true},
          {.name = "NationalOilWellPlc",
           .serialData = "National Oil Well PLC",
           .simulator = "formatted",
           .arguments = {"--width", "13", "--zeros"},
           .form = {8, kBlank, kCrLf},
           .lines = AtTerminator,
           .rule = NoLine,
           .frames = 25,
           .leastAccepted = 0,
           .asksAtStartUp = true},
          {.name = "AnySerialData",
           .serialData = "Any Serial Data",
           .simulator = "formatted",
           .arguments = {"--zeros", "--delimiter", ",", "--noise-every", "7", "--cut-every", "9", "--wrong-count-every",
                         "5"},
           .form = {4, ",", kCrLf},
           .lines = AtTerminator,
           .rule = AnyLine,
           .frames = 40,
           .samplingSeconds = kNeverDue,
           .asksAtStartUp = true}};
}

std::vector<Instrument> PolledOnes() {
  return {{.name = "SentWhenRequested",
           .serialData = "sent when requested",
           .simulator = "request",
           .arguments = {"--command", "R1\\r", "--command", "R2\\r", "--garbage-every", "11"},
           .form = {2, kBlank, kCr},
           .lines = AnswersTogether,
           .rule = Answers,
           .frames = 0},
          {.name = "IntermittentAndByRequest",
           .serialData = "intermittent and by request",
           .simulator = "intermittent",
           .arguments = {"--clock", "23:59:50", "--noise-every", "4", "--cut-every", "5"},
           .form = {5, ",", kCr},
           .lines = AtTerminator,
           .rule = OwnDateAndTime,
           .frames = 16,
           .samplingSeconds = kNeverDue,
           .setUp = 5},
          {.name = "Das104",
           .serialData = "S&S DAS 104",
           .simulator = "das104",
           .arguments = {"--delimiter", ",", "--noise-every", "8", "--cut-every", "13", "--step"},
           .form = {6, ",", kCr},
           .lines = AtTerminator,
           .rule = AnyLine,
           .frames = 28,
           .samplingSeconds = kNeverDue,
           .setUp = 1,
           .stepByStep = true},
          {.name = "Das104Doubled",
           .serialData = "S&S DAS 104",
           .simulator = "das104",
           .arguments = {"--double", "--delimiter", ",", "--step"},
           .form = {6, ",", kCr},
           .lines = BetweenCrs,
           .rule = AnyLine,
           .frames = 28,
           .samplingSeconds = kNeverDue,
           .setUp = 2,
           .stepByStep = true},
          {.name = "DataTakerA",
           .serialData = "Data Taker a",
           .simulator = "data_taker",
           .arguments = {"--delimiter", ",", "--noise-every", "7", "--cut-every", "11", "--wrong-count-every", "5"},
           .form = {5, ",", kLf},
           .lines = AtEitherEnd,
           .rule = CountAndTime,
           .frames = 48,
           .samplingSeconds = kNeverDue},
          {.name = "DataTakerB",
           .serialData = "Data Taker b",
           .simulator = "data_taker",
           .arguments = {"--form", "b", "--noise-every", "7", "--cut-every", "11", "--wrong-count-every", "5"},
           .form = {3, kBlank, kCr},
           .lines = AtBlankLine,
           .rule = DataTakerBlock,
           .frames = 48,
           .samplingSeconds = kNeverDue}};
}

std::vector<Instrument> NetworkedOnes() {
  return {{.name = "HoneywellEZtrend",
           .serialData = "HPT - Honeywell eZtrend",
           .simulator = "web",
           .arguments = {"--page", "table", "--channels", "6", "--chunked", "--header-bytes"},
           .form = {6, kBlank, kCrLf},
           .lines = TablePages,
           .rule = PageAsLongAsTheOneBefore,
           .frames = 0,
           .samplingSeconds = 0.5},
          // A number of another length than the one before costs its page.
          {.name = "LumoThroughHmi",
           .serialData = "ORBEN LUMO through HMI",
           .simulator = "web",
           .arguments = {"--page", "panel", "--channels", "2"},
           .form = {2, kBlank, kCrLf},
           .lines = PanelPages,
           .rule = PageAsLongAsTheOneBefore,
           .frames = 0,
           .samplingSeconds = 0.5,
           .leastAccepted = 10}};
}

}  // namespace

const std::vector<Instrument>& Instruments() {
  static const std::vector<Instrument> instruments = [] {
    std::vector<Instrument> all;
    for (const auto& some : {Units(), FormattedOnes(), PolledOnes(), NetworkedOnes()})
      all.insert(all.end(), some.begin(), some.end());
    return all;
  }();
  return instruments;
}

void PrintTo(const Instrument& instrument, std::ostream* out) {
  *out << instrument.serialData;
}

}  // namespace velk::test
