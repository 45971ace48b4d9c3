#include "web_pages.h"

#include <cctype>
#include <string_view>

namespace sim {

namespace {

std::string NamedCells(const Samples& samples, int channels) {
  std::string rows;
  for (int i = 1; i <= channels; ++i) {
    const std::string number = std::to_string(i);
    rows += "<tr><td>" + number + "Var</td><td><b>" + samples.Value(i) + "&nbsp;psi</b></td></tr>\r\n";
  }
  return rows;
}

std::string Table(const Samples& samples, int channels) {
  // The heading's row is written in capitals, unlike those of the values.
  std::string rows = "<TR><TH>No.</TH><TH>Pen</TH><TH>Units</TH><TH>Value</TH></TR>\r\n";
  for (int i = 1; i <= channels; ++i)
    rows += "<tr><td>" + std::to_string(i) + "</td><td>Pen " + std::to_string(i) +
            "</td><td>&deg;C</td><td align=right><font size=2>" + samples.Value(i) + "</font></td></tr>\r\n";
  return rows;
}

std::string Panel(const Samples& samples, int channels) {
  std::string rows = "<tr><th>Channel</th><th>Value</th></tr>\r\n";
  for (int i = 1; i <= channels; ++i)
    rows += "<tr><td>Channel " + std::to_string(i) + "</td><td class=v><b> " + samples.Value(i) +
            " &nbsp;</b></td></tr>\r\n";
  return rows;
}

void Capitalise(std::string& page) {
  bool inTag = false;
  for (char& c : page) {
    if (c == '<') inTag = true;
    if (c == '>') inTag = false;
    if (inTag) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
}

}  // namespace

bool IsPageKind(std::string_view kind) {
  return kind == "named" || kind == "table" || kind == "panel";
}

std::string PageOf(const std::string& kind, const Samples& samples, int channels, const PageStyle& style) {
  std::string rows;
  if (style.cells)
    rows = kind == "named"   ? NamedCells(samples, channels)
           : kind == "table" ? Table(samples, channels)
                             : Panel(samples, channels);
  const std::string time = kind == "table" && style.cells ? "<P>Time&nbsp;" + samples.Time() + "</P>\r\n" : "";
  std::string page = "<HTML><Head><TITLE>Pens</TITLE></Head><BODY BgColor=#FFFFFF>\r\n" + time +
                     "<TABLE Border=1>\r\n" + rows + "</TABLE></BODY></HTML>\r\n";
  if (style.oddCapitals) Capitalise(page);
  return style.headerBytes ? "\x01\x02\r\n" + page : page;
}

}  // namespace sim
