#pragma once

#include <QString>
#include <QUrl>
#include <string>
#include <vector>

namespace velk {

/// Numbers that windows name a help topic by: their property "helpTopic", which F1 looks for. Two of them are named by
/// windows of lower layers: a graph window (1500), and what needs a file name first (572).
namespace topic {
inline constexpr int FirstStart = 100;
inline constexpr int Connecting = 110;
inline constexpr int Instruments = 115;
inline constexpr int Recording = 572;
inline constexpr int StripChart = 1500;
inline constexpr int Formulas = 300;
inline constexpr int Alarms = 310;
inline constexpr int Templates = 400;
inline constexpr int Languages = 410;
inline constexpr int Failures = 500;
inline constexpr int Files = 510;
inline constexpr int Keyboard = 120;
inline constexpr int Licences = 520;
}  // namespace topic

struct HelpPage {
  int number = 0;
  QUrl address;
  QString title;
  QString text;  ///< without the markup, for the search
};

/// The help's pages in the order of the contents, in a language by its English name. A page that is not there in the
/// language comes in English.
std::vector<HelpPage> ReadHelpPages(const std::string& language);

/// The place of a numbered topic among the pages; 0, the first page, for a number that no page has.
int FindTopic(const std::vector<HelpPage>& pages, int number);

/// The places of the pages that hold every word of `words`, small and capital letters being the same. All for no words.
std::vector<int> FindPages(const std::vector<HelpPage>& pages, const QString& words);

}  // namespace velk
