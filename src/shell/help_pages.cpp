#include "shell/help_pages.h"

#include <QFile>
#include <QStringList>
#include <QTextDocument>
#include <algorithm>

/// A static library's resources have to be asked for, from outside any namespace.
static void LoadHelp() {
  Q_INIT_RESOURCE(help);
}

namespace velk {

namespace {

struct Topic {
  int number;
  const char* page;
};

/// In the order of the contents.
constexpr Topic kTopics[] = {
    {topic::FirstStart, "first_start"},
    {topic::Connecting, "connecting"},
    {topic::Instruments, "instruments"},
    {topic::Recording, "recording"},
    {topic::Playback, "playback"},
    {topic::Parameters, "parameters"},
    {topic::StripChart, "strip_chart"},
    {topic::Printing, "printing"},
    {topic::Viewer, "viewer"},
    {topic::Exchange, "exchange"},
    {topic::Opc, "opc"},
    {topic::Formulas, "formulas"},
    {topic::Alarms, "alarms"},
    {topic::Templates, "templates"},
    {topic::Languages, "languages"},
    {topic::Failures, "failures"},
    {topic::Files, "files"},
    {topic::Keyboard, "keyboard"},
    {topic::Wells, "wells"},
    {topic::UnitTable, "units"},
    {topic::Licences, "licences"},
};

QString PathOf(const char* page, const std::string& language) {
  const auto in = [page](const char* folder) {
    return QStringLiteral(":/help/%1/%2.html").arg(QLatin1String(folder), QLatin1String(page));
  };
  if (language == "Russian" && QFile::exists(in("ru"))) return in("ru");
  return in("en");
}

HelpPage Read(const Topic& topic, const std::string& language) {
  const QString path = PathOf(topic.page, language);
  QFile file(path);
  QTextDocument document;
  if (file.open(QIODevice::ReadOnly)) document.setHtml(QString::fromUtf8(file.readAll()));
  return {topic.number, QUrl(QStringLiteral("qrc") + path), document.metaInformation(QTextDocument::DocumentTitle),
          document.toPlainText()};
}

bool HoldsAll(const QString& text, const QStringList& words) {
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

}  // namespace

std::vector<HelpPage> ReadHelpPages(const std::string& language) {
  LoadHelp();
  std::vector<HelpPage> pages;
  for (const Topic& topic : kTopics) pages.push_back(Read(topic, language));
  return pages;
}

int FindTopic(const std::vector<HelpPage>& pages, int number) {
  const auto found =
      std::find_if(pages.begin(), pages.end(), [number](const HelpPage& page) { return page.number == number; });
  return found == pages.end() ? 0 : static_cast<int>(found - pages.begin());
}

std::vector<int> FindPages(const std::vector<HelpPage>& pages, const QString& words) {
  const QStringList wanted = words.split(' ', Qt::SkipEmptyParts);
  std::vector<int> found;
  for (int i = 0; i < static_cast<int>(pages.size()); ++i)
    if (HoldsAll(pages[static_cast<std::size_t>(i)].title + '\n' + pages[static_cast<std::size_t>(i)].text, wanted))
      found.push_back(i);
  return found;
}

}  // namespace velk
