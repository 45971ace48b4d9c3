#include "support/window_texts.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>

#include "i18n/windows/translate_form.h"
#include "model/texts.h"

namespace velk {
namespace {

using namespace test;

template <class Control>
Control* Add(QWidget& form, const char* name, const char* text) {
  auto* control = new Control(text, &form);
  control->setObjectName(name);
  return control;
}

/// A window that has rows.
struct FileExist : QDialog {
  FileExist() {
    setObjectName("frmFileExist");
    setWindowTitle("Pre-Existing File !!");
    append = Add<QPushButton>(*this, "cmdAppend", "&Append to Existing File");
  }
  QPushButton* append;
};

TEST(WindowTexts, WindowWithRowsForAllHasNoFault) {
  const FileExist window;
  EXPECT_EQ(TextsOf(window).size(), 2U);
  EXPECT_EQ(TextsWithoutRussian(window), kNone);
}

TEST(WindowTexts, TextWithoutARowIsToldWithItsKey) {
  FileExist window;
  Add<QLabel>(window, "lblNew", "Brand new");
  window.append->setToolTip("Appends");
  EXPECT_EQ(TextsWithoutRussian(window), (Faults{"frmFileExist_T_cmdAppend \"Appends\": has no row in data/captions",
                                                 "frmFileExist_lblNew \"Brand new\": has no row in data/captions"}));
  EXPECT_EQ(TextsWithoutRussian(window, {"lblNew", "cmdAppend"}), kNone);
}

TEST(WindowTexts, RowOfAnotherEnglishTextIsNotTakenForIt) {
  FileExist window;
  window.append->setText("&Append");
  ASSERT_EQ(TextsWithoutRussian(window).size(), 1U);
  EXPECT_NE(TextsWithoutRussian(window)[0].find("has the English text \"&Append to Existing File\""),
            std::string::npos);
}

TEST(WindowTexts, MessagesAndTextsWithoutLettersNeedNoRow) {
  FileExist window;
  Add<QLabel>(window, "lblWord", "Ready");
  Add<QLabel>(window, "lblNumber", "12.5 %");
  EXPECT_EQ(TextsWithoutRussian(window), kNone);
}

TEST(WindowTexts, PlaceholdersHeadingsMenusAndToolbarsAreTexts) {
  QMainWindow window;
  window.setObjectName("frm");
  Add<QLineEdit>(window, "txt", "typed")->setPlaceholderText("Placeholder");
  auto* table = new QTableWidget(1, 1, &window);
  table->setHorizontalHeaderLabels({"Heading"});
  auto* menu = window.menuBar()->addMenu("Menu");
  menu->setObjectName("mnu");
  menu->addAction("Item")->setObjectName("mnuItem");
  auto* bar = window.addToolBar("Bar");
  bar->setObjectName("Toolbar1");
  bar->addSeparator();
  bar->addAction("Button")->setToolTip("Tip");
  const Faults faults = TextsWithoutRussian(window);
  EXPECT_EQ(
      std::set<std::string>(faults.begin(), faults.end()),
      (std::set<std::string>{
          "frm_txt \"Placeholder\": has no row in data/captions", "(no key) \"Heading\": has no row in data/captions",
          "frm_mnu \"Menu\": has no row in data/captions", "frm_mnuItem \"Item\": has no row in data/captions",
          "frm_Toolbar1 \"Bar\": has no row in data/captions", "frm_Toolbar1_2 \"Button\": has no row in data/captions",
          "frm_T_Toolbar1_2 \"Tip\": has no row in data/captions"}));
  EXPECT_EQ(faults.size(), 7U);
}

TEST(WindowTexts, WindowThatWasNotTranslatedIsTold) {
  FileExist window;
  auto* word = Add<QLabel>(window, "lblWord", "Ready");
  EXPECT_EQ(TextsLeftInEnglish(window).size(), 3U);
  TranslateForm(window, RussianWindows());
  EXPECT_EQ(TextsLeftInEnglish(window), (Faults{"frmFileExist_lblWord \"Ready\": stayed English"}));
  word->setText(QString::fromStdString(RussianWindows().Translator.In(text::StatusReady)));
  EXPECT_EQ(TextsLeftInEnglish(window), kNone);
}

TEST(WindowTexts, KeyThatPressesTwoThingsIsTold) {
  QMainWindow window;
  window.setObjectName("frm");
  auto* menu = window.menuBar()->addMenu("&Файл");
  menu->setObjectName("mnuFile");
  menu->addAction("&Один");
  menu->addAction("Вт&орой");
  Add<QPushButton>(window, "cmd", "&Файл");
  EXPECT_EQ(KeysMarkedTwice(window), (Faults{"frm: &Файл and &Файл", "mnuFile: &Один and Вт&орой"}));
}

TEST(WindowTexts, TextThatDoesNotFitIsCutOff) {
  QDialog window;
  window.setObjectName("frm");
  window.resize(400, 100);
  auto* label = Add<QLabel>(window, "lbl", "Дополнительные поля");
  label->resize(label->sizeHint());
  auto* button = Add<QPushButton>(window, "cmd", "Закрыть");
  button->move(0, 40);
  button->resize(button->sizeHint());
  window.show();
  EXPECT_EQ(TextsCutOff(window), kNone);
  label->resize(label->width() - 1, label->height());
  button->resize(20, button->height());
  EXPECT_EQ(TextsCutOff(window).size(), 2U);
  label->hide();
  button->resize(button->sizeHint());
  button->move(window.width() - 10, 40);
  EXPECT_EQ(TextsCutOff(window), (Faults{"cmd \"Закрыть\": reaches over the edge"}));
}

TEST(WindowTexts, TitleWrappedTextAndMenuBarThatDoNotFitAreCutOff) {
  QDialog dialog;
  dialog.setObjectName("frm");
  dialog.setWindowTitle("Заголовок, который шире своего окна");
  auto* label = Add<QLabel>(dialog, "lbl", "много слов в узком месте");
  label->setWordWrap(true);
  label->setGeometry(0, 0, 60, label->fontMetrics().height());
  dialog.resize(100, 100);
  dialog.show();
  EXPECT_EQ(TextsCutOff(dialog).size(), 2U);

  QMainWindow window;
  for (const char* menu : {"Первое меню", "Второе меню", "Третье меню"}) window.menuBar()->addMenu(menu);
  window.resize(150, 100);
  window.show();
  EXPECT_FALSE(TextsCutOff(window).empty());
}

TEST(WindowTexts, LargeTextNeedsMoreRoom) {
  const int before = QLabel("Закрыть").sizeHint().width();
  {
    const LargeText large(1.5);
    EXPECT_GT(QLabel("Закрыть").sizeHint().width(), before * 1.3);
  }
  EXPECT_EQ(QLabel("Закрыть").sizeHint().width(), before);
}

}  // namespace
}  // namespace velk
