#include "ui/instruments.h"

#include <ostream>

namespace velk::test {

namespace {

using Journal = std::vector<SentFrame>;
using Lines = std::vector<SentLine>;

Lines AtTerminator(const Journal& journal, const LineForm& form) {
  return LinesEndingIn(form.terminator, journal);
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

}  // namespace

void PrintTo(const Instrument& instrument, std::ostream* out) {
  *out << instrument.serialData;
}

const std::vector<Instrument>& Instruments() {
  static const std::vector<Instrument> instruments = {
      {"Kesta3", "KESTA version 3", "unit", {"--unit", "kesta3"}, {18}, AtTerminator, AsLongAsTheLineBefore, 36},
      {"Kesta4",
       "KESTA version 4",
       "unit",
       {"--unit", "kesta4", "--change-length-after", "22"},
       {18},
       AtTerminator,
       AsLongAsTheLineBefore,
       38,
       kNeverDue},
      {"Kesta5",
       "KESTA version 5",
       "unit",
       {"--unit", "kesta5", "--damage", "0.2", "--seed", "5"},
       {22},
       AtTerminator,
       AsLongAsTheLineBefore,
       50,
       kNeverDue},
      {"LumoA",
       "LUMO version A",
       "unit",
       {"--unit", "lumoa", "--damage", "0.2", "--seed", "2"},
       {4},
       AtTerminator,
       AsLongAsTheLineBefore,
       50,
       kNeverDue},
      {"LumoB",
       "LUMO version B",
       "unit",
       {"--unit", "lumob", "--damage", "0.2", "--seed", "3"},
       {10},
       AtTerminator,
       AsLongAsTheLineBefore,
       50,
       kNeverDue},
      {"FormattedByBlanks",
       "formatted and at regular intervals",
       "formatted",
       {"--end", "cr", "--noise-every", "16", "--cut-every", "21"},
       {8, kBlank, kCr},
       AtTerminator,
       FormattedLine,
       45,
       kNeverDue,
       20,
       4,
       true},
      {"FormattedBySemicolons",
       "formatted and at regular intervals",
       "formatted",
       {"--end", "lfcr", "--delimiter", ";", "--width", "11", "--wrong-count-every", "9", "--noise-every", "7"},
       {3, ";", "\n\r"},
       AtTerminator,
       FormattedLine,
       45,
       kNeverDue,
       20,
       4,
       true},
      {"NationalOilWellPlc",
       "National Oil Well PLC",
       "formatted",
       {"--width", "13", "--zeros"},
       {8},
       AtTerminator,
       NoLine,
       25,
       1,
       0,
       0,
       true},
      {"AnySerialData",
       "Any Serial Data",
       "formatted",
       {"--zeros", "--delimiter", ",", "--noise-every", "7", "--cut-every", "9", "--wrong-count-every", "5"},
       {4, ",", kCrLf},
       AtTerminator,
       AnyLine,
       35,
       kNeverDue,
       20,
       0,
       true},
      {"SentWhenRequested",
       "sent when requested",
       "request",
       {"--command", "R1\\r", "--command", "R2\\r", "--garbage-every", "11"},
       {2, kBlank, kCr},
       AnswersTogether,
       Answers,
       0},
      {"IntermittentAndByRequest",
       "intermittent and by request",
       "intermittent",
       {"--clock", "23:59:50", "--noise-every", "4", "--cut-every", "5"},
       {5, ",", kCr},
       AtTerminator,
       OwnDateAndTime,
       16,
       kNeverDue,
       20,
       5},
      {"Das104",
       "S&S DAS 104",
       "das104",
       {"--delimiter", ",", "--noise-every", "8", "--cut-every", "13", "--step"},
       {6, ",", kCr},
       AtTerminator,
       AnyLine,
       28,
       kNeverDue,
       20,
       1,
       false,
       true},
      {"DataTakerA",
       "Data Taker a",
       "data_taker",
       {"--delimiter", ",", "--noise-every", "7", "--cut-every", "11", "--wrong-count-every", "5"},
       {5, ",", kLf},
       AtEitherEnd,
       CountAndTime,
       45,
       kNeverDue},
      {"DataTakerB",
       "Data Taker b",
       "data_taker",
       {"--form", "b", "--noise-every", "7", "--cut-every", "11", "--wrong-count-every", "5"},
       {3, kBlank, kCr},
       AtBlankLine,
       DataTakerBlock,
       45,
       kNeverDue},
      {"HoneywellEZtrend",
       "HPT - Honeywell eZtrend",
       "web",
       {"--page", "table", "--channels", "6", "--chunked", "--header-bytes"},
       {6, kBlank, kCrLf},
       TablePages,
       PageAsLongAsTheOneBefore,
       0,
       0.5},
      {"LumoThroughHmi",
       "ORBEN LUMO through HMI",
       "web",
       {"--page", "panel", "--channels", "2"},
       {2, kBlank, kCrLf},
       PanelPages,
       PageAsLongAsTheOneBefore,
       0,
       0.5,
       10},
  };
  return instruments;
}

}  // namespace velk::test
