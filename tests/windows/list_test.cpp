#include <gtest/gtest.h>

#include <QMetaObject>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "windows/every_window.h"

namespace velk {
namespace {

namespace fs = std::filesystem;
using namespace test;

const fs::path kSources = VELK_SOURCE_DIR;

std::string Read(const fs::path& path) {
  const std::ifstream file(path);
  EXPECT_TRUE(file.is_open()) << path;
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Files of the folders that may hold windows.
std::vector<fs::path> FilesOfWindows(const std::string& extension) {
  std::vector<fs::path> found;
  for (const auto& entry : fs::recursive_directory_iterator(kSources / "src")) {
    const std::string folder = entry.path().parent_path().filename();
    if ((folder == "windows" || folder == "shell") && entry.path().extension() == extension)
      found.push_back(entry.path());
  }
  EXPECT_GT(found.size(), 10U) << extension;
  return found;
}

void AddMatches(const std::string& text, const char* pattern, std::set<std::string>& names) {
  const std::regex expression(pattern);
  for (auto match = std::sregex_iterator(text.begin(), text.end(), expression); match != std::sregex_iterator();
       ++match)
    names.insert((*match)[1]);
}

/// Classes of the program's own among a window and what it is made of.
void AddClasses(const QObject& object, std::set<std::string>& names) {
  const std::string name = object.metaObject()->className();
  if (name.starts_with("velk::")) names.insert(name.substr(6));
  for (const QObject* child : object.children()) AddClasses(*child, names);
}

std::set<std::string> Without(std::set<std::string> all, const std::set<std::string>& known) {
  std::erase_if(all, [&](const std::string& name) { return known.contains(name); });
  return all;
}

class ListOfWindows : public testing::Test {
 protected:
  ListOfWindows() {
    for (const ListedWindow& window : EveryWindow()) {
      names.insert(window.name);
      AddClasses(*window.open("English"), classes);
    }
  }

  const std::set<std::string> none;
  std::set<std::string> names;
  std::set<std::string> classes;  ///< of the windows and of their parts
};

TEST_F(ListOfWindows, HoldsEveryDesignedForm) {
  std::set<std::string> designed;
  for (const fs::path& form : FilesOfWindows(".ui")) AddMatches(Read(form), "<class>(\\w+)</class>", designed);
  EXPECT_GT(designed.size(), 15U);
  EXPECT_EQ(Without(designed, classes), none);
}

TEST_F(ListOfWindows, HoldsEveryClassThatShowsSomething) {
  std::set<std::string> shown;
  for (const fs::path& header : FilesOfWindows(".h"))
    AddMatches(Read(header), "class (\\w+) : public Q(?:Dialog|Widget|MainWindow|ToolBar|Frame|Label|MdiSubWindow)\\b",
               shown);
  EXPECT_GT(shown.size(), 15U);
  EXPECT_EQ(Without(shown, classes), none);
}

TEST_F(ListOfWindows, HoldsEveryWindowThatIsTranslated) {
  std::set<std::string> translated;
  for (const auto& table : fs::directory_iterator(kSources / "data" / "captions")) {
    std::istringstream rows(Read(table.path()));
    std::string row;
    std::getline(rows, row);
    while (std::getline(rows, row)) translated.insert(row.substr(0, row.find('\t')));
  }
  EXPECT_GT(translated.size(), 15U);
  EXPECT_EQ(Without(translated, names), none);
}

}  // namespace
}  // namespace velk
