#include <gtest/gtest.h>

#include <QApplication>

#include "support/window_texts.h"
#include "windows/every_window.h"

namespace velk {
namespace {

using namespace test;

/// What two menus have shared from the start; the first press of the letter selects one item, the second the other.
const Faults kKnownEnglishKeys = {"mnuEdit: &Load Settings Template and &Language",
                                  "mnuTools: &Remove an Additional Parameter and &Reset Value of Parameter"};

Faults WithoutKnown(const Faults& faults, const std::string& language) {
  Faults rest;
  for (const std::string& fault : faults)
    if (language != "English" ||
        std::find(kKnownEnglishKeys.begin(), kKnownEnglishKeys.end(), fault) == kKnownEnglishKeys.end())
      rest.push_back(fault);
  return rest;
}

TEST(EveryWindow, HasARussianRowForEachText) {
  for (const ListedWindow& listed : EveryWindow()) {
    const auto window = listed.open("English");
    EXPECT_EQ(window->objectName().toStdString(), listed.name);
    EXPECT_FALSE(window->windowTitle().isEmpty()) << listed.Title();
    EXPECT_EQ(TextsWithoutRussian(*window, listed.composed), kNone) << listed.Title();
  }
}

TEST(EveryWindow, SpeaksRussianToTheLastButton) {
  for (const ListedWindow& listed : EveryWindow())
    EXPECT_EQ(TextsLeftInEnglish(*listed.open("Russian")), kNone) << listed.Title();
}

TEST(EveryWindow, MarksEachLetterOnce) {
  for (const char* language : kLanguages)
    for (const ListedWindow& listed : EveryWindow())
      EXPECT_EQ(WithoutKnown(KeysMarkedTwice(*listed.open(language)), language), kNone)
          << listed.Title() << ' ' << language;
}

TEST(EveryWindow, CutsNoTextOffAtAnyScale) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const LargeText text(scale);
    for (const char* language : kLanguages) {
      for (const ListedWindow& listed : EveryWindow()) {
        const auto window = listed.open(language);
        window->show();
        QApplication::processEvents();
        EXPECT_EQ(TextsCutOff(*window), kNone) << listed.Title() << ' ' << language << ' ' << scale;
      }
    }
  }
}

}  // namespace
}  // namespace velk
