#pragma once

#include <QString>
#include <QUrl>
#include <string>
#include <vector>

#include "model/help_topics.h"

namespace velk {

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
