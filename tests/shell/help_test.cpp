#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>
#include <set>

#include "shell/frm_about.h"
#include "shell/help_window.h"
#include "support/host.h"
#include "support/window_driving.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using namespace test;

QString Html(const HelpPage& page) {
  QFile file(':' + page.address.path());
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << page.address.toString().toStdString();
  return QString::fromUtf8(file.readAll());
}

// --- Pages ---

TEST(HelpPages, AreThereInBothLanguagesWithTitleAndText) {
  for (const auto& [language, folder] : {std::pair("English", "/help/en/"), {"Russian", "/help/ru/"}}) {
    for (const HelpPage& page : ReadHelpPages(language)) {
      EXPECT_TRUE(page.address.path().startsWith(QLatin1String(folder))) << page.number;
      EXPECT_FALSE(page.title.isEmpty()) << page.number;
      EXPECT_GT(page.text.size(), 200) << page.number;
    }
  }
}

TEST(HelpPages, CoverWhatIsInTheHelpFolder) {
  std::set<QString> shown;
  for (const HelpPage& page : ReadHelpPages("English")) shown.insert(page.address.fileName());
  for (const QString& file : QDir(":/help/en").entryList()) EXPECT_TRUE(shown.contains(file)) << file.toStdString();
  EXPECT_EQ(QDir(":/help/en").entryList(), QDir(":/help/ru").entryList());
}

TEST(HelpPages, OfAnotherLanguageAreEnglish) {
  EXPECT_EQ(ReadHelpPages("Klingon")[0].title, "First start");
}

TEST(HelpPages, LinkOnlyToPagesThatAreThere) {
  static const QRegularExpression link("href=\"([^\"]*)\"");
  int links = 0;
  for (const char* language : {"English", "Russian"}) {
    for (const HelpPage& page : ReadHelpPages(language)) {
      auto matches = link.globalMatch(Html(page));
      while (matches.hasNext()) {
        const QUrl target = page.address.resolved(QUrl(matches.next().captured(1)));
        EXPECT_TRUE(QFile::exists(':' + target.path())) << target.toString().toStdString();
        ++links;
      }
    }
  }
  EXPECT_GE(links, 8);
}

TEST(HelpPages, HaveNumbersOfTheirOwn) {
  std::set<int> numbers;
  for (const HelpPage& page : ReadHelpPages("English")) EXPECT_TRUE(numbers.insert(page.number).second) << page.number;
}

TEST(HelpPages, AreFoundByNumberAndAnUnknownNumberIsTheFirst) {
  const auto pages = ReadHelpPages("English");
  EXPECT_EQ(pages[static_cast<std::size_t>(FindTopic(pages, 1500))].title, "The strip chart");
  EXPECT_EQ(pages[static_cast<std::size_t>(FindTopic(pages, 572))].title, "Recording");
  EXPECT_EQ(FindTopic(pages, 9999), 0);
}

TEST(HelpPages, AreFoundByAllWordsWhateverTheCase) {
  const std::vector<HelpPage> pages = {
      {1, {}, "Ports", "A cable"}, {2, {}, "Disks", "Full disk, no CABLE"}, {3, {}, "Журнал", "x"}};
  EXPECT_EQ(FindPages(pages, "cable"), (std::vector<int>{0, 1}));
  EXPECT_EQ(FindPages(pages, " disk  cable "), std::vector<int>{1});
  EXPECT_EQ(FindPages(pages, "ЖУР"), std::vector<int>{2});
  EXPECT_EQ(FindPages(pages, "ports"), std::vector<int>{0}) << "titles count";
  EXPECT_TRUE(FindPages(pages, "nowhere").empty());
  EXPECT_EQ(FindPages(pages, "").size(), 3U);
}

TEST(HelpPages, TellTheLicenceOfEachLibraryAsTheAboutBoxDoes) {
  Session session;
  for (const char* language : {"English", "Russian"}) {
    const bool russian = language == std::string("Russian");
    Host host(russian ? RussianWindows() : EnglishWindows());
    const frmAbout about(host, session, "/settings");
    const auto pages = ReadHelpPages(language);
    const HelpPage& page = pages[static_cast<std::size_t>(FindTopic(pages, topic::Licences))];
    const QStringList libraries = FindControl<QPlainTextEdit>(about, "txtLibraries")->toPlainText().split('\n');
    EXPECT_GE(libraries.size(), 4);
    for (const QString& library : libraries) EXPECT_TRUE(page.text.contains(library)) << library.toStdString();
  }
}

TEST(HelpPages, TellTheSameValuesOfFormulasAsTheUserGuide) {
  // tests/formula computes what the guide tells.
  QFile guide(QStringLiteral(VELK_USER_DOCS "/formulas.md"));
  ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
  const QString told = QString::fromUtf8(guide.readAll()).remove("**");
  static const QRegularExpression row("<tr><td>([^<]*)</td><td>(-?\\d+)</td>");
  for (const char* language : {"English", "Russian"}) {
    const auto pages = ReadHelpPages(language);
    auto rows = row.globalMatch(Html(pages[static_cast<std::size_t>(FindTopic(pages, topic::Formulas))]));
    int count = 0;
    for (; rows.hasNext(); ++count) {
      const auto found = rows.next();
      const QString wanted = QStringLiteral("| `%1` | %2 |").arg(found.captured(1), found.captured(2));
      EXPECT_TRUE(told.contains(wanted)) << language << ": " << wanted.toStdString();
    }
    EXPECT_EQ(count, 7) << language;
  }
}

// --- The window ---

class HelpWindowTest : public testing::Test {
 protected:
  QString Shown() { return browser->source().fileName(); }
  QString Selected() { return list->currentItem() ? list->currentItem()->text() : QString(); }

  Host host;
  HelpWindow& window = host.windows.Open<HelpWindow>();
  QTextBrowser* browser = FindControl<QTextBrowser>(window, "Browser");
  QListWidget* list = FindControl<QListWidget>(window, "lstContents");
  QLineEdit* search = FindControl<QLineEdit>(window, "txtSearch");
  QPushButton* back = FindControl<QPushButton>(window, "cmdBack");
};

TEST_F(HelpWindowTest, OpensATopicAndMarksItInTheContents) {
  window.ShowTopic(topic::Recording);
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(Shown(), "recording.html");
  EXPECT_EQ(Selected(), "Recording");
  EXPECT_EQ(list->count(), 21);
}

TEST_F(HelpWindowTest, GoesThroughTheContentsByArrowKeysAndBackByAltLeft) {
  window.ShowTopic(topic::FirstStart);
  EXPECT_FALSE(back->isEnabled());
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(Shown(), "connecting.html");
  ASSERT_TRUE(back->isEnabled());
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(&window, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Shown(), "first_start.html");
  EXPECT_EQ(Selected(), "First start");
}

TEST_F(HelpWindowTest, FollowsLinksAndKeepsTheContentsInStep) {
  window.ShowTopic(topic::FirstStart);
  browser->setSource(browser->source().resolved(QUrl("recording.html")));
  EXPECT_EQ(Selected(), "Recording");
  back->click();
  EXPECT_EQ(Selected(), "First start");
}

TEST_F(HelpWindowTest, SearchNarrowsTheContentsAndEnterShowsTheFirstPageFound) {
  window.ShowTopic(topic::FirstStart);
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(search, "15 seconds wrapping");
  EXPECT_EQ(list->count(), 1);
  EXPECT_EQ(Shown(), "first_start.html") << "typing alone turns no page";
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(Shown(), "strip_chart.html");
  EXPECT_EQ(browser->textCursor().selectedText(), "15") << "the first word is marked";
  search->clear();
  EXPECT_EQ(list->count(), 21);
}

TEST_F(HelpWindowTest, SaysThatNothingWasFound) {
  window.ShowTopic(topic::FirstStart);
  const auto* nothing = FindControl<QLabel>(window, "lblNothing");
  EXPECT_FALSE(nothing->isVisible());
  search->setText("zzzz");
  EXPECT_TRUE(nothing->isVisible());
  QTest::keyClick(search, Qt::Key_Return);
  EXPECT_EQ(Shown(), "first_start.html");
}

TEST_F(HelpWindowTest, TellsTheVersionAtItsFoot) {
  EXPECT_EQ(FindControl<QLabel>(window, "lblVersion")->text(),
            "Velk Acquisition Console (VELK) - version " VELK_VERSION);
}

TEST_F(HelpWindowTest, EscapeClosesIt) {
  window.ShowTopic(topic::FirstStart);
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(HelpWindowLanguage, IsTheOneThatWasLoadedWhateverIsSetForTheNextStart) {
  Host russianHost(RussianWindows());
  HelpWindow russian(russianHost);
  EXPECT_EQ(FindControl<QListWidget>(russian, "lstContents")->item(0)->text(), "Первый запуск");
  Host englishHost;
  HelpWindow english(englishHost);
  EXPECT_EQ(FindControl<QListWidget>(english, "lstContents")->item(0)->text(), "First start");
}

}  // namespace
}  // namespace velk
