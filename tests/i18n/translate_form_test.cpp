#include "i18n/windows/translate_form.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>

#include "support/translation_file.h"

namespace velk {
namespace {

/// Rows of one form, `frm`, under control names.
Translation Captions(const std::vector<std::pair<std::string, std::string>>& rows) {
  const test::TemporaryFolder folder;
  std::string sql = "CREATE TABLE Languages(FormName,ControllName,English,Transelate,Russian);";
  for (const auto& [control, russian] : rows)
    sql += "INSERT INTO Languages VALUES('frm','" + control + "','',1,'" + russian + "');";
  Translation words;
  EXPECT_TRUE(words.Languages.Load(test::MakeDatabase(folder, "captions.mdb", sql), "Russian"));
  return words;
}

template <class Control>
Control* Add(QWidget& form, const char* name, const char* text) {
  auto* control = new Control(text, &form);
  control->setObjectName(name);
  return control;
}

TEST(TranslateForm, CaptionsTheWindowItself) {
  QDialog form;
  form.setObjectName("frm");
  form.setWindowTitle("Title");
  TranslateForm(form, Captions({{"frm", "Заголовок"}}));
  EXPECT_EQ(form.windowTitle(), "Заголовок");
}

TEST(TranslateForm, CaptionsEachKindOfControl) {
  QDialog form;
  form.setObjectName("frm");
  auto* label = Add<QLabel>(form, "lbl", "Label");
  auto* button = Add<QPushButton>(form, "cmd", "Button");
  auto* group = Add<QGroupBox>(form, "fra", "Group");
  auto* inside = Add<QCheckBox>(*group, "chk", "Check");
  auto* edit = Add<QLineEdit>(form, "txt", "typed by the user");
  TranslateForm(
      form,
      Captions({{"lbl", "Надпись"}, {"cmd", "Кнопка"}, {"fra", "Группа"}, {"chk", "Флаг"}, {"txt", "Подсказка"}}));
  EXPECT_EQ(label->text(), "Надпись");
  EXPECT_EQ(button->text(), "Кнопка");
  EXPECT_EQ(group->title(), "Группа");
  EXPECT_EQ(inside->text(), "Флаг");
  EXPECT_EQ(edit->placeholderText(), "Подсказка");
  EXPECT_EQ(edit->text(), "typed by the user");
}

TEST(TranslateForm, ElementOfAnArrayStandsUnderItsIndex) {
  QDialog form;
  form.setObjectName("frm");
  auto* third = Add<QCheckBox>(form, "chk_3", "Three");
  auto* fourth = Add<QCheckBox>(form, "chk_4", "Four");
  TranslateForm(form, Captions({{"chk_3", "Три"}, {"T_chk_4", "Подсказка четвёртого"}}));
  EXPECT_EQ(third->text(), "Три");
  EXPECT_EQ(third->toolTip(), "");
  EXPECT_EQ(fourth->text(), "Four");
  EXPECT_EQ(fourth->toolTip(), "Подсказка четвёртого");
}

TEST(TranslateForm, ControlThatIsNotInTheTableKeepsItsDesign) {
  QDialog form;
  form.setObjectName("frm");
  form.setWindowTitle("Title");
  auto* button = Add<QPushButton>(form, "cmd", "Button");
  button->setToolTip("Tip");
  TranslateForm(form, Captions({{"other", "Другая"}}));
  TranslateForm(form, Translation{});
  EXPECT_EQ(form.windowTitle(), "Title");
  EXPECT_EQ(button->text(), "Button");
  EXPECT_EQ(button->toolTip(), "Tip");
}

TEST(TranslateForm, ControlWithoutACaptionIsPassedOver) {
  QDialog form;
  form.setObjectName("frm");
  auto* bar = new QProgressBar(&form);
  bar->setObjectName("bar");
  TranslateForm(form, Captions({{"bar", "Ход"}, {"T_bar", "Ход работы"}}));
  EXPECT_EQ(bar->toolTip(), "Ход работы");
}

TEST(TranslateForm, MenusAndTheirItemsAreControls) {
  QMainWindow form;
  form.setObjectName("frm");
  auto* menu = form.menuBar()->addMenu("&File");
  menu->setObjectName("mnuFile");
  auto* inside = menu->addMenu("&More");
  inside->setObjectName("mnuMore");
  auto* item = new QAction("E&xit", &form);
  item->setObjectName("mnuFileExit");
  inside->addAction(item);
  TranslateForm(form, Captions({{"mnuFile", "&Файл"}, {"mnuMore", "&Ещё"}, {"mnuFileExit", "В&ыход"}}));
  EXPECT_EQ(menu->menuAction()->text(), "&Файл");
  EXPECT_EQ(inside->menuAction()->text(), "&Ещё");
  EXPECT_EQ(item->text(), "В&ыход");
}

TEST(TranslateForm, ButtonsOfAToolbarStandUnderTheirIndexWithSeparatorsCounted) {
  QMainWindow form;
  form.setObjectName("frm");
  auto* toolbar = form.addToolBar("Bar");
  toolbar->setObjectName("Toolbar1");
  auto* first = toolbar->addAction("One");
  toolbar->addSeparator();
  auto* third = toolbar->addAction("Three");
  auto* button = qobject_cast<QToolButton*>(toolbar->widgetForAction(third));
  TranslateForm(form, Captions({{"Toolbar1_1", "Один"}, {"T_Toolbar1_3", "Подсказка"}, {"Toolbar1_3", "Три"}}));
  EXPECT_EQ(first->text(), "Один");
  EXPECT_EQ(third->text(), "Три");
  EXPECT_EQ(third->toolTip(), "Подсказка");
  EXPECT_EQ(button->text(), "Три");
  EXPECT_EQ(button->toolTip(), "Подсказка");
  third->setEnabled(false);  // the button takes its texts over again
  EXPECT_EQ(button->text(), "Три");
}

TEST(TranslateForm, WindowsInsideTranslateThemselves) {
  QMainWindow form;
  form.setObjectName("frm");
  auto* area = new QMdiArea(&form);
  form.setCentralWidget(area);
  auto* graph = new QWidget;
  auto* inGraph = Add<QLabel>(*graph, "lbl", "Label");
  area->addSubWindow(graph);
  auto* dialog = new QDialog(&form);
  auto* inDialog = Add<QLabel>(*dialog, "lbl", "Label");
  TranslateForm(form, Captions({{"lbl", "Надпись"}}));
  EXPECT_EQ(inGraph->text(), "Label");
  EXPECT_EQ(inDialog->text(), "Label");
}

}  // namespace
}  // namespace velk
