#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>

#include "graphs/label_reading.h"
#include "platform/database/command.h"
#include "shell/shell_rig.h"

namespace velk {
namespace {

/// The program beside a database that another one fills. The clock stands at 14 March 2026, 09:30:00.
class FollowedDatabase : public testing::Test {
 protected:
  FollowedDatabase() {
    rig.Start();
    Connection::Open(database, OpenMode::CreateNew)
        ->Execute("CREATE TABLE Readings (Day DATE, Clock DATE, Hook DOUBLE, Depth DOUBLE)");
  }

  void Fill(int first, int last) {
    Connection::Open(database, OpenMode::ReadWrite)
        ->Execute("WITH RECURSIVE n(i) AS (SELECT " + std::to_string(first) +
                  " UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(last) +
                  ") INSERT INTO Readings SELECT 46095, (34200 + i) / 86400.0, i, 2 * i FROM n");
  }
  static void Mark(QDialog& dialog, const char* list, const char* field) {
    auto& fields = *dialog.findChild<QListWidget*>(QLatin1String(list));
    fields.setCurrentItem(fields.findItems(QLatin1String(field), Qt::MatchExactly).at(0));
  }
  /// Chooses the database by the menu, with both of its values.
  void Choose() {
    rig.windows.Then("frmImprtLiveData", [this](QDialog& dialog) {
      rig.dialogs.ExpectOpenFile(database);
      test::Click(dialog, "cmdGetFileName");
      Mark(dialog, "lstAvailableFields", "Day");
      test::Click(dialog, "cmdDate");
      Mark(dialog, "lstAvailableFields", "Clock");
      test::Click(dialog, "cmdTime");
      test::Click(dialog, "cmdSelect");
      test::Click(dialog, "cmdSelect");
      test::Click(dialog, "cmdOK1");
    });
    rig.Choose("mnuImprtLiveData");
  }
  static frmExtGraphForm* Chart() {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* window = qobject_cast<frmExtGraphForm*>(widget); window && window->isVisible()) return window;
    return nullptr;
  }
  void Poll() { rig.clock.Advance(7100); }
  std::string Value(const char* label) {
    rig.clock.Advance(40);
    return test::LabelText(*Chart(), label);
  }

  test::ShellRig rig;
  const std::string database = rig.folder.File("rig 7.mdb");
};

TEST_F(FollowedDatabase, IsChosenFromTheMenuAndDrawn) {
  const MessageText status = rig.State().CurrentStatus;
  Choose();
  ASSERT_NE(Chart(), nullptr);
  Fill(1, 60);
  Poll();
  EXPECT_EQ(Value("Label2_0"), "60.000");
  EXPECT_EQ(Value("Label2_1"), "120.000");
  EXPECT_EQ(rig.Window().Panel(1), "Acquiring Data");
  EXPECT_EQ(rig.State().CurrentStatus, status) << "only the panel tells";
}

TEST_F(FollowedDatabase, IsFoundAgainAfterARestart) {
  Choose();
  rig.Start();
  EXPECT_EQ(Chart(), nullptr);
  rig.windows.Then("frmImprtLiveData", [this](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtDatabaseName")->text().toStdString(), database);
    EXPECT_EQ(dialog.findChild<QListWidget*>("lstSelected")->count(), 2);
    EXPECT_TRUE(dialog.findChild<QRadioButton*>("optOn")->isChecked());
    test::Click(dialog, "cmdOK1");
  });
  rig.Choose("mnuImprtLiveData");
  ASSERT_NE(Chart(), nullptr);
  EXPECT_TRUE(Chart()->IsReading());
}

TEST_F(FollowedDatabase, GoesOnWithThePageWhereOnlyItsLooksAreChosenAnew) {
  Choose();
  Fill(1, 60);
  Poll();
  const frmExtGraphForm* before = Chart();
  rig.windows.ThenClick("frmImprtLiveData", "cmdOK1");
  rig.Choose("mnuImprtLiveData");
  EXPECT_EQ(Chart(), before);
  EXPECT_EQ(Value("Label2_0"), "60.000");
  rig.windows.Then("frmImprtLiveData", [](QDialog& dialog) {
    test::Click(dialog, "cmdRemove");
    test::Click(dialog, "cmdOK1");
  });
  rig.Choose("mnuImprtLiveData");
  EXPECT_EQ(test::LabelsOf(*Chart()).Count(), 1) << "other rows, another chart";
}

TEST_F(FollowedDatabase, IsSwitchedOff) {
  Choose();
  rig.windows.Then("frmImprtLiveData", [](QDialog& dialog) {
    dialog.findChild<QRadioButton*>("optOff")->setChecked(true);
    test::Click(dialog, "cmdOK1");
  });
  rig.Choose("mnuImprtLiveData");
  EXPECT_FALSE(Chart()->IsReading());
  EXPECT_EQ(rig.Window().Panel(1), "Acquiring Paused");
}

TEST_F(FollowedDatabase, KeepsWhatIsEditedOnTheChart) {
  Choose();
  rig.dialogs.ExpectInput("Enter parameter name", "Hook load");
  test::ClickLabel(*Chart(), "Label1_0");
  rig.Start();
  LiveImport live;
  ASSERT_TRUE(LoadFromRegistry(*rig.settings, rig.translation.Translator, live));
  EXPECT_EQ(live.Fields[0].DisplayName, "Hook load");
}

TEST_F(FollowedDatabase, IsFollowedWhileAJobRuns) {
  rig.Connect();
  rig.Press("Pause");
  Choose();
  Fill(1, 60);
  for (int i = 0; i < 5; ++i) rig.Frame(i, i, i);
  Poll();
  EXPECT_EQ(Value("Label2_0"), "60.000");
  EXPECT_TRUE(rig.State().AcquireStarted);
}

TEST_F(FollowedDatabase, EndsWithTheProgram) {
  Choose();
  rig.application.reset();
  EXPECT_EQ(Chart(), nullptr);
}

}  // namespace
}  // namespace velk
