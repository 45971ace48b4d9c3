#include "exchange/windows/frm_imprt_live_data.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

#include "base/errors.h"
#include "exchange/exchange_fixture.h"
#include "support/host.h"
#include "support/window_script.h"

namespace velk {
namespace {

using Names = std::vector<std::string>;

class LiveChoice : public test::ExchangeFixture {
 protected:
  LiveChoice() {
    MakeDatabase(path,
                 "CREATE TABLE Readings (Day DATE, Clock DATE, Hook DOUBLE, Depth DOUBLE, Note TEXT);"
                 "CREATE TABLE MSysThings (a DOUBLE); CREATE TABLE Alarms (Day DATE, Level DOUBLE)");
  }
  frmImprtLiveData& Open(const LiveImport& live = {}) {
    window = std::make_unique<frmImprtLiveData>(host,
                                                LiveChoiceAccess{platform, "/", JetTools{VELK_JET_READER},
                                                                 [this](const LiveImport& choice) {
                                                                   if (fails) throw RuntimeError(ErrorNumber::DiskFull);
                                                                   stored.push_back(choice);
                                                                 }},
                                                live);
    window->show();
    return *window;
  }
  frmImprtLiveData& OpenReadings() {
    return Open({false, path, "Readings", "Day", "Clock", {LiveField{.Name = "Hook", .DisplayName = "Hook load"}}});
  }
  template <class Control>
  Control& Find(const char* name) {
    return *window->findChild<Control*>(QLatin1String(name));
  }
  Names List(const char* name) {
    Names names;
    auto& list = Find<QListWidget>(name);
    for (int i = 0; i < list.count(); ++i) names.push_back(list.item(i)->text().toStdString());
    return names;
  }
  std::string Text(const char* label) { return Find<QLabel>(label).text().toStdString(); }
  void Press(const char* key) { QTest::mouseClick(&Find<QPushButton>(key), Qt::LeftButton); }
  void Mark(const char* list, const char* field) {
    auto& fields = Find<QListWidget>(list);
    fields.setCurrentItem(fields.findItems(QLatin1String(field), Qt::MatchExactly).at(0));
  }
  void DoubleClick(const char* list, const char* field) {
    auto& fields = Find<QListWidget>(list);
    Mark(list, field);
    const QPoint at = fields.visualItemRect(fields.currentItem()).center();
    QTest::mouseClick(fields.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(fields.viewport(), Qt::LeftButton, {}, at);
  }

  WindowHost host{dialogs, test::EnglishWindows()};
  std::unique_ptr<frmImprtLiveData> window;
  std::vector<LiveImport> stored;
  bool fails = false;
};

TEST_F(LiveChoice, BeginsWithTheChoiceOfAFile) {
  Open();
  EXPECT_EQ(window->windowTitle(), "Import External Live Data");
  EXPECT_TRUE(Find<QRadioButton>("optOn").isChecked());
  EXPECT_FALSE(Find<QComboBox>("cmbAvilableTables").isEnabled());
  dialogs.ExpectOpenFile(path);
  Press("cmdGetFileName");
  EXPECT_EQ(dialogs.filesAsked.back().filter, "Data files (*.mdb)|*.mdb");
  EXPECT_EQ(Find<QLineEdit>("txtDatabaseName").text().toStdString(), path);
  auto& tables = Find<QComboBox>("cmbAvilableTables");
  ASSERT_EQ(tables.count(), 2) << "without the engine's own";
  EXPECT_EQ(tables.itemText(0), "Alarms");
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Day", "Level"}));
}

TEST_F(LiveChoice, ShowsWhatIsFollowed) {
  OpenReadings();
  EXPECT_EQ(Find<QComboBox>("cmbAvilableTables").currentText(), "Readings");
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Depth"})) << "a text is not offered";
  EXPECT_EQ(List("lstSelected"), (Names{"Hook"}));
  EXPECT_EQ(Text("lblDate"), "Day");
  EXPECT_EQ(Text("lblTime"), "Clock");
  EXPECT_TRUE(Find<QRadioButton>("optOff").isChecked());
}

TEST_F(LiveChoice, MovesFieldsByKeysAndByDoubleClicks) {
  OpenReadings();
  DoubleClick("lstAvailableFields", "Depth");
  EXPECT_EQ(List("lstSelected"), (Names{"Hook", "Depth"}));
  Mark("lstSelected", "Hook");
  Press("cmdRemove");
  EXPECT_EQ(List("lstSelected"), (Names{"Depth"}));
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Hook"}));
  Press("cmdSelect");
  EXPECT_EQ(List("lstSelected"), (Names{"Depth", "Hook"}));
}

TEST_F(LiveChoice, PutsFieldsInTheirPlacesAndClearsThemByADoubleClick) {
  OpenReadings();
  QTest::mouseDClick(&Find<QLabel>("lblDate"), Qt::LeftButton);
  EXPECT_EQ(Text("lblDate"), "");
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Day", "Depth"}));
  Mark("lstAvailableFields", "Day");
  Press("cmdTime");
  EXPECT_EQ(Text("lblTime"), "Day");
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Clock", "Depth"}));
  Mark("lstAvailableFields", "Clock");
  Press("cmdDate");
  EXPECT_EQ(Text("lblDate"), "Clock");
}

TEST_F(LiveChoice, ForgetsFieldsOfAnotherTable) {
  OpenReadings();
  auto& tables = Find<QComboBox>("cmbAvilableTables");
  tables.setFocus();
  QTest::keyClick(&tables, Qt::Key_Up);
  EXPECT_EQ(tables.currentText(), "Alarms");
  EXPECT_EQ(List("lstAvailableFields"), (Names{"Day", "Level"}));
  EXPECT_EQ(List("lstSelected"), Names{});
  EXPECT_EQ(Text("lblDate") + Text("lblTime"), "");
}

TEST_F(LiveChoice, AsksForTheTypesThatItNeeds) {
  OpenReadings();
  Find<QRadioButton>("optOn").setChecked(true);
  QTest::mouseDClick(&Find<QLabel>("lblTime"), Qt::LeftButton);
  dialogs.Expect("Please select Time and Date data field?", Answer::Ok);
  Press("cmdOK1");
  Mark("lstAvailableFields", "Depth");
  Press("cmdTime");
  dialogs.Expect("The field [Depth] is not VALID time type", Answer::Ok);
  Press("cmdOK1");
  Mark("lstAvailableFields", "Clock");
  Press("cmdTime");
  Mark("lstAvailableFields", "Depth");
  Press("cmdDate");
  dialogs.Expect("The field [Depth] is not VALID date type", Answer::Ok);
  Press("cmdOK1");
  Mark("lstAvailableFields", "Day");
  Press("cmdDate");
  Press("cmdRemove");
  dialogs.Expect("No fields are selected", Answer::Ok);
  Press("cmdOK1");
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(stored.empty());
}

TEST_F(LiveChoice, StoresTheChoice) {
  OpenReadings();
  Press("cmdSelect");
  Find<QRadioButton>("optOn").setChecked(true);
  Press("cmdOK1");
  EXPECT_EQ(window->result(), QDialog::Accepted);
  ASSERT_EQ(stored.size(), 1U);
  EXPECT_TRUE(stored[0].Import);
  ASSERT_EQ(stored[0].Fields.size(), 2U);
  EXPECT_EQ(stored[0].Fields[0].DisplayName, "Hook load") << "as it was called before";
  EXPECT_EQ(stored[0].Fields[1].DisplayName, "Depth");
  EXPECT_EQ(stored[0].Fields[1].Type, 5);
  EXPECT_NE(stored[0].Fields[1].Colour, stored[0].Fields[0].Colour);
  EXPECT_EQ(window->Answer(), stored[0]);
}

TEST_F(LiveChoice, SwitchesOffWithoutAsking) {
  Open({true, path, "Readings", "", "", {}});
  Find<QRadioButton>("optOff").setChecked(true);
  Press("cmdOK1");
  ASSERT_EQ(stored.size(), 1U);
  EXPECT_FALSE(stored[0].Import);
}

TEST_F(LiveChoice, StaysWhereItCantStore) {
  OpenReadings();
  fails = true;
  dialogs.Expect(" - cmdOK1_Click", Answer::Cancel);
  Press("cmdOK1");
  EXPECT_TRUE(window->isVisible());
}

TEST_F(LiveChoice, KeepsWhatIsFollowedWhereTheFileIsGone) {
  std::filesystem::remove(path);
  dialogs.Expect(" - Form_Load", Answer::Cancel);
  OpenReadings();
  EXPECT_EQ(List("lstSelected"), (Names{"Hook"}));
  EXPECT_EQ(Text("lblDate"), "Day");
  Find<QRadioButton>("optOn").setChecked(true);
  Press("cmdOK1");
  ASSERT_EQ(stored.size(), 1U) << "its chart says what it can't read, and tries again";
  EXPECT_EQ(stored[0].TimeField, "Clock");
}

TEST_F(LiveChoice, LeavesTheFileWhereAnotherCantBeRead) {
  OpenReadings();
  dialogs.ExpectOpenFile(Write("text.mdb", "no database at all, only text"));
  dialogs.Expect(" - cmdGetFileName_Click", Answer::Cancel);
  Press("cmdGetFileName");
  EXPECT_EQ(Find<QLineEdit>("txtDatabaseName").text().toStdString(), path);
  EXPECT_EQ(List("lstSelected"), (Names{"Hook"}));
}

TEST_F(LiveChoice, EditsHowAFieldIsDrawn) {
  OpenReadings();
  test::WindowScript script;
  script.Then("frmProperties", [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtName")->text(), "Hook load");
    dialog.findChild<QLineEdit*>("txtMaximum")->setText("250");
    test::Click(dialog, "cmdOK");
  });
  DoubleClick("lstSelected", "Hook");
  script.Then("frmProperties", [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtMaximum")->text(), "250");
    dialog.findChild<QLineEdit*>("txtUnits")->setText("t");
    test::Click(dialog, "cmdOK");
  });
  Find<QListWidget>("lstSelected").actions().at(0)->trigger();
  Press("cmdOK1");
  ASSERT_EQ(stored.size(), 1U);
  EXPECT_EQ(stored[0].Fields[0].max, 250);
  EXPECT_EQ(stored[0].Fields[0].Unit, "t");
}

}  // namespace
}  // namespace velk
