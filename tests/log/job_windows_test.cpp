#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QTimer>

#include "log/windows/frm_file_exist.h"
#include "log/windows/frm_inc_param_in_sum.h"
#include "log/windows/job_questions_qt.h"
#include "platform/windows/qt_dialogs.h"
#include "support/host.h"

namespace velk {
namespace {

using test::EnglishHost;

template <class Control>
Control* Find(const QWidget& window, const char* name) {
  auto* control = window.findChild<Control*>(QLatin1String(name));
  EXPECT_NE(control, nullptr) << name;
  return control;
}

SummaryInclusion Inclusion(int channels) {
  SummaryInclusion inclusion;
  for (int i = 1; i <= channels; ++i)
    inclusion.parameters.push_back({i, "Давление на входе насоса № " + std::to_string(i), i % 2 == 0});
  return inclusion;
}

/// Shows a window, and keeps its picture where VELK_PICTURES says.
void Show(QWidget& window, const char* picture) {
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  const QString folder = qEnvironmentVariable("VELK_PICTURES");
  if (!folder.isEmpty()) window.grab().save(QDir(folder).filePath(QString::fromLatin1(picture) + ".png"));
}

/// Presses Alt and a letter until the window that it answers is gone; the button shows itself pressed for a moment.
void AnswerWith(QWidget& window, Qt::Key letter) {
  QTest::keyClick(&window, letter, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
}

TEST(FrmFileExist, AsksWhatToDoWithTheFile) {
  frmFileExist window(EnglishHost(), ExistingLog{"/jobs/run#7.mdb", "/jobs/run#8.mdb"});
  Show(window, "frmFileExist");
  EXPECT_EQ(window.objectName(), "frmFileExist");
  EXPECT_EQ(window.windowTitle(), "Pre-Existing File !!");
  EXPECT_EQ(Find<QLabel>(window, "lblFile")->text(), "/jobs/run#7.mdb");
  EXPECT_EQ(Find<QLabel>(window, "lblQuestion")->text(), "What would you like to do?");
  EXPECT_EQ(Find<QPushButton>(window, "cmdAppend")->text(), "&Append to Existing File");
  EXPECT_EQ(Find<QPushButton>(window, "cmdCreate")->text(), "&Create New File");
  EXPECT_TRUE(Find<QPushButton>(window, "cmdAppend")->isEnabled());
  EXPECT_FALSE(Find<QLabel>(window, "lblNote")->isVisible());
  EXPECT_EQ(Find<QLabel>(window, "lblNewFile")->text(), "The new file will be /jobs/run#8.mdb");
}

TEST(FrmFileExist, DoesNotAppendToAFileThatIsNotCompatible) {
  frmFileExist window(EnglishHost(), ExistingLog{"/jobs/run.mdb", "/jobs/run#1.mdb", false, false,
                                                 "It has no column for the channel Rate"});
  Show(window, "frmFileExist-not-compatible");
  EXPECT_EQ(Find<QLabel>(window, "lblFile")->text(),
            "The file [/jobs/run.mdb] is not compatible with current velk data");
  EXPECT_FALSE(Find<QPushButton>(window, "cmdAppend")->isEnabled());
  EXPECT_TRUE(Find<QPushButton>(window, "cmdCreate")->isDefault());
  EXPECT_EQ(Find<QLabel>(window, "lblNote")->text(), "It has no column for the channel Rate");
  EXPECT_TRUE(Find<QLabel>(window, "lblNote")->isVisible());
}

TEST(FrmFileExist, WarnsWhereColumnsStandInAnotherOrder) {
  frmFileExist window(EnglishHost(), ExistingLog{"/jobs/run.mdb", "/jobs/run#1.mdb", true, false});
  Show(window, "frmFileExist-other-order");
  EXPECT_TRUE(Find<QLabel>(window, "lblNote")->isVisible());
  EXPECT_NE(Find<QLabel>(window, "lblNote")->text().indexOf("stand in another order"), -1);
  EXPECT_TRUE(Find<QPushButton>(window, "cmdAppend")->isEnabled());
  EXPECT_TRUE(Find<QPushButton>(window, "cmdCreate")->isDefault());
}

TEST(FrmFileExist, GivesWhatWasPressed) {
  frmFileExist appending(EnglishHost(), ExistingLog{"run.mdb", "run#1.mdb"});
  Show(appending, "appending");
  AnswerWith(appending, Qt::Key_A);
  EXPECT_EQ(appending.Answer(), FileChoice::Append);

  frmFileExist creating(EnglishHost(), ExistingLog{"run.mdb", "run#1.mdb"});
  Show(creating, "creating");
  AnswerWith(creating, Qt::Key_C);
  EXPECT_EQ(creating.Answer(), FileChoice::CreateNew);

  frmFileExist closing(EnglishHost(), ExistingLog{"run.mdb", "run#1.mdb"});
  Show(closing, "closing");
  QTest::keyClick(&closing, Qt::Key_Escape);
  EXPECT_EQ(closing.Answer(), FileChoice::None);
  EXPECT_FALSE(closing.isVisible());
}

TEST(FrmFileExist, ShowsAPathAsPlainText) {
  frmFileExist window(EnglishHost(), ExistingLog{"/jobs/<b>&x</b>.mdb", ""});
  EXPECT_EQ(Find<QLabel>(window, "lblFile")->textFormat(), Qt::PlainText);
}

TEST(FrmIncParamInSum, ShowsEachChannelAsItIsIncluded) {
  SummaryInclusion inclusion = Inclusion(3);
  inclusion.parameters[2].parameter = 5;
  inclusion.parameters[2].name = "Gas & oil";
  frmIncParamInSum window(EnglishHost(), inclusion);
  Show(window, "frmIncParamInSum");
  EXPECT_EQ(window.objectName(), "frmIncParamInSum");
  EXPECT_EQ(window.windowTitle(), "Include In Summary Report");
  EXPECT_FALSE(Find<QCheckBox>(window, "chk_1")->isChecked());
  EXPECT_TRUE(Find<QCheckBox>(window, "chk_2")->isChecked());
  EXPECT_EQ(window.findChild<QCheckBox*>("chk_3"), nullptr);
  EXPECT_EQ(Find<QCheckBox>(window, "chk_5")->text(), "Gas && oil");
  EXPECT_EQ(Find<QLabel>(window, "Label1")->text(), "Additional Fields for manual data entry");
  EXPECT_EQ(Find<QPushButton>(window, "cmdClose")->text(), "&Close");
}

TEST(FrmIncParamInSum, GivesTheChecksAndTheFieldsThatAreNotEmptyInOrder) {
  frmIncParamInSum window(EnglishHost(), Inclusion(3));
  Show(window, "filled");
  Find<QCheckBox>(window, "chk_1")->click();
  Find<QCheckBox>(window, "chk_2")->click();
  Find<QLineEdit>(window, "Text1_1")->setText("Уровень");
  Find<QLineEdit>(window, "Text1_3")->setText("Crew");
  AnswerWith(window, Qt::Key_C);
  const SummaryInclusion& result = window.Answer();
  EXPECT_TRUE(result.parameters[0].included);
  EXPECT_FALSE(result.parameters[1].included);
  EXPECT_FALSE(result.parameters[2].included);
  EXPECT_EQ(result.extraFields, (std::vector<std::string>{"Уровень", "Crew"}));
}

TEST(FrmIncParamInSum, SaysWhatItIsForAndTakesEnterForCloseWhereverTheFocusIs) {
  for (const char* focus : {"chk_1", "Text1_2"}) {
    frmIncParamInSum window(EnglishHost(), Inclusion(2));
    Show(window, "purpose");
    EXPECT_EQ(Find<QLabel>(window, "lblPurpose")->text(),
              "Each comment of the job is written to its summary report with the values that are checked here.");
    Find<QCheckBox>(window, "chk_1")->click();
    auto* field = Find<QWidget>(window, focus);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(window.result(), QDialog::Accepted) << focus;
    EXPECT_TRUE(window.Answer().parameters[0].included) << focus;
  }
}

TEST(FrmIncParamInSum, ShowsTheFieldsOfBefore) {
  SummaryInclusion inclusion = Inclusion(1);
  inclusion.extraFields = {"One", "Two", "Three", "Four"};
  frmIncParamInSum window(EnglishHost(), inclusion);
  EXPECT_EQ(Find<QLineEdit>(window, "Text1_0")->text(), "One");
  EXPECT_EQ(Find<QLineEdit>(window, "Text1_3")->text(), "Four");
}

TEST(FrmIncParamInSum, LeavesTheChoiceWhenItIsClosedOtherwise) {
  frmIncParamInSum window(EnglishHost(), Inclusion(2));
  Show(window, "left");
  Find<QCheckBox>(window, "chk_1")->click();
  window.close();
  EXPECT_FALSE(window.Answer().parameters[0].included);
}

TEST(FrmIncParamInSum, BringsEveryOfSixtyFourBoxesIntoViewByKeyboard) {
  frmIncParamInSum window(EnglishHost(), Inclusion(64));
  Show(window, "frmIncParamInSum-64");
  const auto* area = Find<QScrollArea>(window, "scrollArea");
  for (int i = 1; i <= 64; ++i) {
    auto* box = Find<QCheckBox>(window, ("chk_" + std::to_string(i)).c_str());
    EXPECT_TRUE(box->hasFocus()) << i;
    const QRect seen(box->mapTo(area->viewport(), QPoint(0, 0)), box->size());
    EXPECT_TRUE(area->viewport()->rect().contains(seen)) << i;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_TRUE(Find<QLineEdit>(window, "Text1_0")->hasFocus());
}

class JobQuestionsOnScreen : public testing::Test {
 protected:
  /// Acts on the window once it stands.
  template <class Window>
  void WhenShown(std::function<void(Window&)> act) {
    QTimer::singleShot(0, &parent, [this, act] {
      auto* window = parent.findChild<Window*>();
      ASSERT_NE(window, nullptr);
      gateStoodOpen = gate.IsOpen();
      act(*window);
    });
  }

  QWidget parent;
  Gate gate;
  QtDialogs dialogs{gate, test::English()};
  WindowHost host{dialogs, test::EnglishWindows()};
  JobQuestionsQt questions{host};
  bool gateStoodOpen = false;
};

TEST_F(JobQuestionsOnScreen, LetSamplesGoOnWhileTheyStand) {
  host.SetParent(&parent);
  const GateState shut(gate, GateState::Shut);
  WhenShown<frmFileExist>([](frmFileExist& window) { Find<QPushButton>(window, "cmdAppend")->click(); });
  EXPECT_EQ(questions.AppendOrCreate({"run.mdb", "run#1.mdb"}), FileChoice::Append);
  EXPECT_TRUE(gateStoodOpen);
  EXPECT_FALSE(gate.IsOpen());
}

TEST_F(JobQuestionsOnScreen, GiveTheInclusion) {
  host.SetParent(&parent);
  SummaryInclusion inclusion = Inclusion(2);
  WhenShown<frmIncParamInSum>([](frmIncParamInSum& window) {
    Find<QCheckBox>(window, "chk_1")->click();
    Find<QPushButton>(window, "cmdClose")->click();
  });
  questions.IncludeInSummary(inclusion);
  EXPECT_TRUE(inclusion.parameters[0].included);
  EXPECT_EQ(parent.findChild<frmIncParamInSum*>(), nullptr);
}

TEST_F(JobQuestionsOnScreen, AreLeftWithoutAnAnswerAtTheEndOfTheProgram) {
  host.SetParent(&parent);
  WhenShown<frmFileExist>([this](frmFileExist&) { dialogs.SetEnding(); });
  EXPECT_EQ(questions.AppendOrCreate({"run.mdb", "run#1.mdb"}), FileChoice::None);
  EXPECT_EQ(questions.AppendOrCreate({"run.mdb", "run#1.mdb"}), FileChoice::None);
}

}  // namespace
}  // namespace velk
