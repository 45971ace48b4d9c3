#include "ui/sent_lines.h"

#include <regex>

namespace velk::test {

namespace {

template <class Ends>
std::vector<SentLine> CutWhere(const Ends& ends, const std::vector<SentFrame>& journal) {
  std::vector<SentLine> lines;
  std::string line;
  for (const SentFrame& frame : journal) {
    // What was cut off is not continued.
    if (frame.kind == "gone") line.clear();
    for (const char byte : frame.text) {
      line += byte;
      if (!ends(line)) continue;
      lines.push_back({line, frame.sentAt});
      line.clear();
    }
  }
  return lines;
}

/// All that the pattern's first group finds.
std::vector<std::string> Found(const std::string& page, const char* pattern) {
  const std::regex search(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator at(page.begin(), page.end(), search), end; at != end; ++at) found.push_back((*at)[1]);
  return found;
}

/// "00050.300" as "50.3".
std::string Plain(const std::string& digits) {
  const std::string text = std::regex_replace(digits, std::regex("\\.?0*$"), "");
  return std::regex_replace(text, std::regex("^0+(?=[0-9])"), "");
}

}  // namespace

std::vector<SentLine> LinesEndingIn(const std::string& end, const std::vector<SentFrame>& journal) {
  return CutWhere([&](const std::string& line) { return line.ends_with(end); }, journal);
}

std::vector<SentLine> LinesOfEitherEnd(const std::vector<SentFrame>& journal) {
  return CutWhere([](const std::string& line) { return line.ends_with("\r\n") || line.ends_with("\n\r"); }, journal);
}

std::vector<SentLine> LinesOfAnswers(int parameters, const std::vector<SentFrame>& journal) {
  std::vector<SentLine> lines;
  std::string line;
  int answers = 0;
  for (const SentFrame& answer : journal) {
    if (!answer.text.ends_with("\r\n")) {
      line.clear();
      answers = 0;
      continue;
    }
    line += " " + answer.text.substr(0, answer.text.size() - 2);
    if (++answers < parameters) continue;
    lines.push_back({line, answer.sentAt});
    line.clear();
    answers = 0;
  }
  return lines;
}

std::vector<SentLine> LinesOfTablePages(const std::vector<SentFrame>& journal) {
  std::vector<SentLine> lines;
  for (const SentFrame& page : journal) {
    if (page.text.find("<TABLE") == std::string::npos) continue;
    const std::vector<std::string> times = Found(page.text, "Time&nbsp;(........)");
    std::string line = times.empty() ? "" : times[0];
    for (const std::string& value : Found(page.text, "<font size=2>([^<]*)</font>")) line += " " + value;
    lines.push_back({line, page.sentAt});
  }
  return lines;
}

std::vector<SentLine> LinesOfPanelPages(const std::vector<SentFrame>& journal) {
  std::vector<SentLine> lines;
  for (const SentFrame& page : journal) {
    const std::vector<std::string> values = Found(page.text, "<b> ([^ ]*) &nbsp;");
    if (values.empty()) continue;
    std::string line = "hh:mm:ss";
    for (const std::string& value : values) line += " " + Plain(value);
    lines.push_back({line, page.sentAt});
  }
  return lines;
}

}  // namespace velk::test
