#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "model/texts.h"

namespace velk {
namespace {

namespace fs = std::filesystem;

const fs::path kSources = VELK_SOURCE_DIR;

/// Names of characters, the same in every language, and the tool tip that stands in data/captions.
const std::set<std::string> kNoMessages = {"CR", "LF", "Click here to change company logo"};

std::string Read(const fs::path& path) {
  const std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Texts that are shown as they stand in a source: words behind a call that puts them on the screen.
std::set<std::string> TextsShownBy(const std::string& source) {
  static const std::regex shown(
      R"re((?:set(?:Text|Title|WindowTitle|ToolTip|StatusTip|WhatsThis|PlaceholderText|LabelText|AccessibleName)|)re"
      R"re(add(?:Item|Menu|Action|Button)|Message|Input|Choose|ProcedureError|)re"
      R"re(Q(?:Label|CheckBox|PushButton|RadioButton|GroupBox))\(\s*\{?\s*)re"
      R"re((?:(?:QStringLiteral|QLatin1String|QString::fromLatin1|QObject::tr|tr)\()?"([^"]*[A-Za-z]{2,}[^"]*)")re");
  std::set<std::string> texts;
  for (auto match = std::sregex_iterator(source.begin(), source.end(), shown); match != std::sregex_iterator(); ++match)
    texts.insert((*match)[1]);
  return texts;
}

TEST(Sources, ShowNoTextFromOutsideTheTables) {
  int files = 0;
  std::set<std::string> strays;
  for (const auto& entry : fs::recursive_directory_iterator(kSources / "src")) {
    if (entry.path().extension() != ".cpp") continue;
    ++files;
    for (const std::string& text : TextsShownBy(Read(entry.path())))
      if (!kNoMessages.contains(text)) strays.insert(entry.path().filename().string() + ": " + text);
  }
  EXPECT_GT(files, 100);
  EXPECT_EQ(strays, std::set<std::string>());
}

TEST(Sources, AreSearchedForEachWayToShowAText) {
  EXPECT_EQ(TextsShownBy(R"(box->setText(QStringLiteral("Well done"));)"), std::set<std::string>{"Well done"});
  EXPECT_EQ(TextsShownBy(R"(dialogs.Message({"Disk is full", "", Buttons::Ok});)"),
            std::set<std::string>{"Disk is full"});
  EXPECT_EQ(TextsShownBy("new QLabel(\n    \"Depth\", this)"), std::set<std::string>{"Depth"});
  EXPECT_TRUE(TextsShownBy(R"(label->setText("%1: %2"); Translate(text::Pause))").empty());
}

}  // namespace
}  // namespace velk
