#include "platform/windows/qt_dialogs.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/loop/system_clock.h"
#include "support/memory_folder.h"

namespace velk {
namespace {

using test::MemoryFolder;

template <class Box>
Box* Standing() {
  return qobject_cast<Box*>(QApplication::activeModalWidget());
}

/// Runs `answer` once a box of the kind stands; a box that never comes leaves the test's own expectation unmet.
template <class Box>
void WhenShown(std::function<void(Box&)> answer) {
  QTimer::singleShot(0, [answer = std::move(answer)] {
    Box* box = Standing<Box>();
    if (box && box->isVisible()) {
      answer(*box);
    } else {
      WhenShown<Box>(answer);
    }
  });
}

QAbstractButton* ButtonOf(QMessageBox& box, const QString& text) {
  for (QAbstractButton* button : box.buttons()) {
    if (button->text() == text) return button;
  }
  ADD_FAILURE() << "no button " << text.toStdString();
  return box.buttons().first();
}

class German : public Language {
 public:
  std::string Translate(std::string_view english, int) const override {
    static const std::map<std::string_view, std::string> kTexts = {{"VELK", "Program"},     {"OK", "In Ordnung"},
                                                                   {"Cancel", "Abbrechen"}, {"&Yes", "&Ja"},
                                                                   {"&No", "&Nein"},        {"&Retry", "&Wiederholen"}};
    return kTexts.at(english);
  }
};

class QtDialogsTest : public testing::Test {
 protected:
  Answer AnswerWith(const MessageBox& box, std::function<void(QMessageBox&)> act) {
    return AnswerWith(dialogs_, box, std::move(act));
  }

  static Answer AnswerWith(Dialogs& dialogs, const MessageBox& box, std::function<void(QMessageBox&)> act) {
    WhenShown<QMessageBox>(std::move(act));
    return dialogs.Message(box);
  }

  Answer AnswerWithKey(Buttons buttons, Qt::Key key) {
    return AnswerWith({"Text", "", buttons}, [key](QMessageBox& box) { QTest::keyClick(&box, key); });
  }

  Gate gate_;
  German german_;
  QtDialogs dialogs_{gate_, german_};
};

TEST_F(QtDialogsTest, KnowsWhatStandsAndWhetherTheTopmostWasAnswered) {
  EXPECT_EQ(dialogs_.Standing(), 0);
  EXPECT_FALSE(dialogs_.TopIsAnswered());
  AnswerWith({"below", ""}, [this](QMessageBox& below) {
    EXPECT_EQ(dialogs_.Standing(), 1);
    EXPECT_FALSE(dialogs_.TopIsAnswered());
    AnswerWith({"above", ""}, [this](QMessageBox& above) {
      EXPECT_EQ(dialogs_.Standing(), 2);
      EXPECT_FALSE(dialogs_.TopIsAnswered());
      ButtonOf(above, "In Ordnung")->click();
      EXPECT_TRUE(dialogs_.TopIsAnswered()) << "this handler is what it waits for";
    });
    EXPECT_EQ(dialogs_.Standing(), 1);
    EXPECT_FALSE(dialogs_.TopIsAnswered());
    ButtonOf(below, "In Ordnung")->click();
  });
  EXPECT_EQ(dialogs_.Standing(), 0);
}

TEST_F(QtDialogsTest, GivesTheAnswerOfTheButtonThatWasPressed) {
  const auto press = [](const QString& text) { return [text](QMessageBox& box) { ButtonOf(box, text)->click(); }; };
  EXPECT_EQ(AnswerWith({"T", "", Buttons::Ok}, press("In Ordnung")), Answer::Ok);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::YesNo}, press("&Ja")), Answer::Yes);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::YesNo}, press("&Nein")), Answer::No);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::RetryCancel}, press("&Wiederholen")), Answer::Retry);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::RetryCancel}, press("Abbrechen")), Answer::Cancel);
}

TEST_F(QtDialogsTest, GivesTheSafeAnswerOnEscape) {
  EXPECT_EQ(AnswerWithKey(Buttons::Ok, Qt::Key_Escape), Answer::Ok);
  EXPECT_EQ(AnswerWithKey(Buttons::YesNo, Qt::Key_Escape), Answer::No);
  EXPECT_EQ(AnswerWithKey(Buttons::RetryCancel, Qt::Key_Escape), Answer::Cancel);
}

TEST_F(QtDialogsTest, GivesTheSafeAnswerWhenTheFrameIsClosed) {
  const auto close = [](QMessageBox& box) { box.close(); };
  EXPECT_EQ(AnswerWith({"T", "", Buttons::Ok}, close), Answer::Ok);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::YesNo}, close), Answer::No);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::RetryCancel}, close), Answer::Cancel);
}

TEST_F(QtDialogsTest, PressesTheFirstButtonOnEnter) {
  EXPECT_EQ(AnswerWithKey(Buttons::Ok, Qt::Key_Return), Answer::Ok);
  EXPECT_EQ(AnswerWithKey(Buttons::YesNo, Qt::Key_Return), Answer::Yes);
  EXPECT_EQ(AnswerWithKey(Buttons::RetryCancel, Qt::Key_Return), Answer::Retry);
}

TEST_F(QtDialogsTest, EnterAnswersWhatEscapeDoesWhereYesWouldLoseSomething) {
  const Answer answer = AnswerWith({.text = "T", .buttons = Buttons::YesNo, .safeDefault = true},
                                   [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
  EXPECT_EQ(answer, Answer::No);
}

TEST_F(QtDialogsTest, ReachesEveryButtonWithTheKeyboard) {
  const auto tabAndPress = [](QMessageBox& box) {
    QWidget* first = box.focusWidget();
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_NE(box.focusWidget(), first);
    QTest::keyClick(box.focusWidget(), Qt::Key_Space);
  };
  EXPECT_EQ(AnswerWith({"T", "", Buttons::YesNo}, tabAndPress), Answer::No);
}

TEST_F(QtDialogsTest, ShowsTextTitleAndIconAsTheyStand) {
  const MessageBox message{"<b>5 < 6</b> & more", "Database error", Buttons::Ok, BoxIcon::Critical};
  AnswerWith(message, [](QMessageBox& box) {
    EXPECT_EQ(box.text(), "<b>5 < 6</b> & more");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowTitle(), "Database error");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    box.close();
  });
}

TEST_F(QtDialogsTest, NamesThePageThatF1OpensOverIt) {
  AnswerWith({.text = "T", .helpTopic = 572}, [](QMessageBox& box) {
    EXPECT_EQ(box.property("helpTopic").toInt(), 572);
    box.close();
  });
  AnswerWith({.text = "T"}, [](QMessageBox& box) {
    EXPECT_FALSE(box.property("helpTopic").isValid()) << "that of the window below";
    box.close();
  });
}

TEST_F(QtDialogsTest, ShowsTheProgramsNameWithoutATitleAndEachIcon) {
  const std::pair<BoxIcon, QMessageBox::Icon> icons[] = {{BoxIcon::None, QMessageBox::NoIcon},
                                                         {BoxIcon::Information, QMessageBox::Information},
                                                         {BoxIcon::Question, QMessageBox::Question},
                                                         {BoxIcon::Exclamation, QMessageBox::Warning}};
  for (const auto& [icon, shown] : icons) {
    AnswerWith({"T", "", Buttons::Ok, icon}, [expected = shown](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), "Program");
      EXPECT_EQ(box.icon(), expected);
      box.close();
    });
  }
}

TEST_F(QtDialogsTest, SpeaksEnglishWhereNoLanguageIsSet) {
  const Language english;
  QtDialogs dialogs(gate_, english);
  AnswerWith(dialogs, {"T", "", Buttons::YesNo}, [](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), "VELK");
    ButtonOf(box, "&Yes")->click();
  });
}

TEST_F(QtDialogsTest, BlocksTheMainWindowButNotTheEvents) {
  QWidget window;
  window.show();
  dialogs_.SetParent(&window);
  SystemClock clock(gate_);
  const auto timer = clock.MakeTimer();
  int ticks = 0;
  bool gateWasOpen = false;
  timer->SetInterval(1);
  const GateState shut(gate_, GateState::Shut);
  const Answer answer = AnswerWith({"T", "", Buttons::YesNo}, [&](QMessageBox& box) {
    EXPECT_EQ(box.windowModality(), Qt::WindowModal);
    EXPECT_EQ(box.parentWidget(), &window);
    timer->SetHandler([&] {
      gateWasOpen = gate_.IsOpen();
      if (++ticks == 10) box.close();
    });
    timer->SetEnabled(true);
  });
  EXPECT_EQ(answer, Answer::No);
  EXPECT_GE(ticks, 10);
  EXPECT_TRUE(gateWasOpen);
}

TEST_F(QtDialogsTest, StandsOverTheBoxThatIsThereAlready) {
  QWidget window;
  window.show();
  dialogs_.SetParent(&window);
  Answer inner = Answer::Cancel;
  const Answer outer = AnswerWith({"outer", "", Buttons::RetryCancel}, [&](QMessageBox& under) {
    inner = AnswerWith({"inner", "", Buttons::YesNo}, [&](QMessageBox& over) {
      EXPECT_EQ(over.text(), "inner");
      EXPECT_EQ(over.parentWidget(), &under);
      ButtonOf(over, "&Ja")->click();
    });
    ButtonOf(under, "&Wiederholen")->click();
  });
  EXPECT_EQ(inner, Answer::Yes);
  EXPECT_EQ(outer, Answer::Retry);
}

TEST_F(QtDialogsTest, SurvivesTheEndOfTheWindowBelow) {
  auto window = std::make_unique<QWidget>();
  window->show();
  dialogs_.SetParent(window.get());
  EXPECT_EQ(AnswerWith({"T", "", Buttons::YesNo}, [&](QMessageBox&) { window.reset(); }), Answer::No);
  EXPECT_EQ(AnswerWith({"T", "", Buttons::Ok}, [](QMessageBox& box) { box.close(); }), Answer::Ok);
}

TEST_F(QtDialogsTest, AnswersStandingAndLaterBoxesAtTheEnd) {
  EXPECT_EQ(AnswerWith({"T", "", Buttons::RetryCancel}, [&](QMessageBox&) { dialogs_.SetEnding(); }), Answer::Cancel);
  EXPECT_EQ(dialogs_.Message({"T", "", Buttons::YesNo}), Answer::No);
  EXPECT_EQ(dialogs_.Message({"T", "", Buttons::Ok}), Answer::Ok);
  EXPECT_EQ(dialogs_.Input("P", "T"), std::nullopt);
  EXPECT_EQ(dialogs_.SaveFile({}), std::nullopt);
  EXPECT_EQ(dialogs_.OpenFile({}), std::nullopt);
}

TEST_F(QtDialogsTest, AsksForALineOfText) {
  WhenShown<QInputDialog>([](QInputDialog& box) {
    EXPECT_EQ(box.windowTitle(), "Title");
    EXPECT_EQ(box.textValue(), "preset");
    EXPECT_EQ(box.okButtonText(), "In Ordnung");
    EXPECT_EQ(box.cancelButtonText(), "Abbrechen");
    for (const QLabel* label : box.findChildren<QLabel*>()) EXPECT_EQ(label->textFormat(), Qt::PlainText);
    QLineEdit* line = box.findChild<QLineEdit*>();
    line->selectAll();
    QTest::keyClicks(line, "42 bar");
    QTest::keyClick(line, Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.Input("<prompt>", "Title", "preset"), "42 bar");
}

TEST_F(QtDialogsTest, TellsAnEmptyLineFromCancel) {
  WhenShown<QInputDialog>([](QInputDialog& box) { box.accept(); });
  EXPECT_EQ(dialogs_.Input("prompt", ""), "");
  WhenShown<QInputDialog>([](QInputDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(dialogs_.Input("prompt", "", "preset"), std::nullopt);
}

TEST_F(QtDialogsTest, TakesTheNameOfAnExistingFileWithoutAQuestion) {
  const MemoryFolder folder;
  folder.Write("log001.mdb", "x");
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.windowTitle(), "Record To");
    EXPECT_EQ(box.directory().absolutePath().toStdString(), folder.Path());
    EXPECT_EQ(box.nameFilters(), QStringList("Data files (*.mdb)"));
    EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_TRUE(box.testOption(QFileDialog::DontUseNativeDialog));
    box.findChild<QLineEdit*>("fileNameEdit")->setText("log001.mdb");
    QTest::keyClick(box.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.SaveFile({"Record To", "Data files (*.mdb)|*.mdb", folder.Path()}), folder.Path("log001.mdb"));
}

TEST_F(QtDialogsTest, TakesTheNameOfANewFileAsItWasTyped) {
  const MemoryFolder folder;
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    box.findChild<QLineEdit*>("fileNameEdit")->setText("new");
    QTest::keyClick(box.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.SaveFile({"", "Data files (*.mdb)|*.mdb", folder.Path()}), folder.Path("new"));
}

TEST_F(QtDialogsTest, GivesANameTheEndingOfTheFilterThatWasChosen) {
  const MemoryFolder folder;
  const auto save = [&](int filter, const char* name) {
    WhenShown<QFileDialog>([=](QFileDialog& box) {
      box.selectNameFilter(box.nameFilters().at(filter));
      box.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromLatin1(name));
      QTest::keyClick(box.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    return dialogs_.SaveFile({"", "JPEG Files (*.jpg) |*.jpg;*.jpeg|Bitmaps|*.bmp|All|*.*", folder.Path()});
  };
  EXPECT_EQ(save(0, "page"), folder.Path("page.jpg"));
  EXPECT_EQ(save(1, "page"), folder.Path("page.bmp"));
  EXPECT_EQ(save(1, "Well 7.5"), folder.Path("Well 7.5.bmp"));
  EXPECT_EQ(save(1, "page.JPEG"), folder.Path("page.JPEG")) << "an ending of another filter";
  EXPECT_EQ(save(2, "page"), folder.Path("page"));
}

TEST_F(QtDialogsTest, OpensOnlyAFileThatIsThere) {
  const MemoryFolder folder;
  folder.Write("logo.png", "x");
  WhenShown<QFileDialog>([&](QFileDialog& box) {
    EXPECT_EQ(box.windowTitle(), "Choose");
    EXPECT_EQ(box.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(box.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(box.nameFilters(), QStringList{"Pictures (*.png)"});
    EXPECT_EQ(box.directory().path().toStdString(), folder.Path());
    box.findChild<QLineEdit*>("fileNameEdit")->setText("logo.png");
    QTest::keyClick(box.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
  });
  EXPECT_EQ(dialogs_.OpenFile({"Choose", "Pictures|*.png", folder.Path()}), folder.Path("logo.png"));
  WhenShown<QFileDialog>([](QFileDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(dialogs_.OpenFile({"Choose", "Pictures|*.png", folder.Path()}), std::nullopt);
}

TEST_F(QtDialogsTest, BeginsInTheHomeFolderWhereTheOneOfTheLastTimeIsGone) {
  const MemoryFolder folder;
  folder.Write("file", "x");
  const auto begins = [&](const std::string& directory) {
    std::string begun;
    const auto note = [&begun](QFileDialog& box) {
      begun = box.directory().absolutePath().toStdString();
      QTest::keyClick(&box, Qt::Key_Escape);
    };
    WhenShown<QFileDialog>(note);
    dialogs_.SaveFile({"", "Data files (*.mdb)|*.mdb", directory});
    return begun;
  };
  const std::string home = QDir::homePath().toStdString();
  EXPECT_EQ(begins(folder.Path("unplugged")), home);
  EXPECT_EQ(begins(folder.Path("file")), home);
  EXPECT_EQ(begins(""), home);
  EXPECT_EQ(begins(folder.Path()), folder.Path());
}

TEST_F(QtDialogsTest, GivesNoFileOnCancel) {
  const MemoryFolder folder;
  WhenShown<QFileDialog>([](QFileDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(dialogs_.SaveFile({"", "Data files (*.mdb)|*.mdb", folder.Path()}), std::nullopt);
}

TEST(QtDialogs, ABoxThatStandsGetsAnotherTextByItsSubjectAndNoOtherBoxDoes) {
  Gate gate;
  const German german;
  QtDialogs dialogs(gate, german);
  QString withSubject, without;
  WhenShown<QMessageBox>([&](QMessageBox& box) {
    dialogs.Retell("link", "twice");
    withSubject = box.text();
    dialogs.Retell("other", "thrice");
    EXPECT_EQ(box.text(), withSubject);
    box.reject();
  });
  dialogs.Message({.text = "once", .subject = "link"});
  WhenShown<QMessageBox>([&](QMessageBox& box) {
    dialogs.Retell("link", "twice");
    without = box.text();
    box.reject();
  });
  dialogs.Message({.text = "once"});
  EXPECT_EQ(withSubject, "twice");
  EXPECT_EQ(without, "once");
}

TEST(FileFilter, BringsPairsIntoTheToolkitsForm) {
  EXPECT_EQ(FileFilter("Data files (*.mdb)|*.mdb"), "Data files (*.mdb)");
  EXPECT_EQ(FileFilter("Pictures|*.bmp;*.jpg|All files (*.*)|*.*"), "Pictures (*.bmp *.jpg);;All files (*)");
  EXPECT_EQ(FileFilter("Surveys (old) here|*.svy"), "Surveys (old) here (*.svy)");
  EXPECT_EQ(FileFilter(""), "");
  EXPECT_EQ(FileFilter("no pattern"), "");
}

}  // namespace
}  // namespace velk
