#pragma once

#include <QApplication>
#include <QFont>
#include <QString>
#include <QWidget>
#include <set>
#include <string>
#include <vector>

#include "i18n/translation.h"

namespace velk::test {

// How a window's texts are tested:
//
//   frmX english({}, ...);                            made with no language loaded
//   EXPECT_EQ(TextsWithoutRussian(english), kNone);
//   frmX russian(RussianWindows(), ...);             made as under Russian; it translates itself
//   EXPECT_EQ(TextsLeftInEnglish(russian), kNone);
//   EXPECT_EQ(KeysMarkedTwice(russian), kNone);
//   const LargeText text(1.5);
//   frmX large(RussianWindows(), ...);
//   large.show();
//   EXPECT_EQ(TextsCutOff(large), kNone);

/// Faults of a window, one a line: the key, the text, and what is wrong with it.
using Faults = std::vector<std::string>;
inline const Faults kNone;

/// The translation files as the build makes them from data/, in Russian.
const Translation& RussianWindows();

/// One text that a window shows.
struct WindowText {
  QString text;
  const QWidget* control;         ///< where it stands; null for an item of a menu
  std::vector<std::string> keys;  ///< rows that may translate it; none where only a message can
  bool isToolTip = false;
};

/// All captions, menu items, tool tips, placeholders and headings of a window, without those of windows inside it and
/// of parts that the toolkit makes itself.
std::vector<WindowText> TextsOf(const QWidget& window);

/// Texts of an English window that no table of data/ has in Russian. `composed` names
/// controls whose texts are put together from messages and values ("Label1_*": all that begin so); texts without a
/// letter need no row.
Faults TextsWithoutRussian(const QWidget& window, const std::set<std::string>& composed = {});

/// Texts of a Russian window that stayed English although there is a Russian one.
Faults TextsLeftInEnglish(const QWidget& window);

/// Letters marked by "&" that would press two things at once: in the window with its menu bar, and in each menu.
Faults KeysMarkedTwice(const QWidget& window);

/// Texts of a window on the screen that don't fit where they stand. Hidden ones don't count.
Faults TextsCutOff(const QWidget& window);

/// A desktop whose texts are so many times as large; for windows that are made while it lives.
class LargeText {
 public:
  explicit LargeText(double scale) : before_(QApplication::font()) {
    QFont font = before_;
    font.setPointSizeF(before_.pointSizeF() * scale);
    QApplication::setFont(font);
  }
  ~LargeText() { QApplication::setFont(before_); }
  LargeText(const LargeText&) = delete;
  LargeText& operator=(const LargeText&) = delete;

 private:
  QFont before_;
};

}  // namespace velk::test
