#include "i18n/windows/window_host.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <functional>

#include "platform/windows/qt_dialogs.h"
#include "support/host.h"

namespace velk {
namespace {

/// A dialog whose answer is its text; `act` runs once it stands.
class Question : public QDialog {
 public:
  Question(WindowHost& host, int value, std::function<void(Question&)> act = {})
      : QDialog(host.Parent()), answer(value) {
    if (act) QTimer::singleShot(0, this, [this, act] { act(*this); });
  }
  int Answer() const { return answer; }

  int answer;
};

/// A dialog that answers nothing.
class Notice : public QDialog {
 public:
  Notice(WindowHost& host, std::function<void(Notice&)> act) : QDialog(host.Parent()) {
    QTimer::singleShot(0, this, [this, act] { act(*this); });
  }
};

class Beside : public QWidget {
 public:
  explicit Beside(WindowHost&) { ++made; }
  ~Beside() override { gone += name; }

  std::string name = "beside ";
  inline static int made = 0;
  inline static std::string gone;
};

class Another : public Beside {
 public:
  explicit Another(WindowHost& host) : Beside(host) { name = "another "; }
};

class WindowHostTest : public testing::Test {
 protected:
  WindowHostTest() {
    host.SetParent(&parent);
    Beside::made = 0;
    Beside::gone.clear();
  }

  QWidget parent;
  Gate gate;
  QtDialogs dialogs{gate, test::English()};
  WindowHost host{dialogs, test::EnglishWindows()};
};

TEST_F(WindowHostTest, GivesWhatAnAcceptedDialogAnswers) {
  const auto answer = host.Ask<Question>(7, [](Question& window) {
    window.answer = 8;
    window.accept();
  });
  EXPECT_EQ(answer, 8);
  EXPECT_TRUE(parent.findChildren<QDialog*>().isEmpty()) << "it goes";
}

TEST_F(WindowHostTest, GivesNothingWhereADialogIsLeftOtherwise) {
  EXPECT_EQ(host.Ask<Question>(7, [](Question& window) { window.reject(); }), std::nullopt);
}

TEST_F(WindowHostTest, TakesTheClosingOfADialogForItsAnswer) {
  EXPECT_EQ(host.Show<Question>(7, [](Question& window) { window.close(); }), 7);
  bool shown = false;
  host.Show<Notice>([&](Notice& window) {
    shown = window.isVisible();
    window.close();
  });
  EXPECT_TRUE(shown);
}

TEST_F(WindowHostTest, LetsSamplesGoOnWhileADialogStands) {
  const GateState sample(gate, GateState::Shut);
  bool open = false;
  int standing = 0;
  host.Ask<Question>(0, [&](Question& window) {
    open = gate.IsOpen();
    standing = dialogs.Standing();
    EXPECT_EQ(window.windowModality(), Qt::WindowModal);
    window.reject();
  });
  EXPECT_TRUE(open);
  EXPECT_EQ(standing, 1);
  EXPECT_FALSE(gate.IsOpen());
}

TEST_F(WindowHostTest, StandsADialogOverTheTopmostOne) {
  host.Ask<Question>(1, [&](Question& below) {
    EXPECT_EQ(below.parent(), &parent);
    host.Ask<Question>(2, [&](Question& above) {
      EXPECT_EQ(above.parent(), &below);
      above.reject();
    });
    EXPECT_TRUE(below.isVisible());
    below.reject();
  });
  EXPECT_EQ(host.Parent(), &parent);
}

TEST_F(WindowHostTest, GivesNothingWhereTheParentTakesTheDialogAlong) {
  auto* shortLived = new QWidget;
  host.SetParent(shortLived);
  EXPECT_EQ(host.Ask<Question>(1, [&](Question&) { delete shortLived; }), std::nullopt);
  host.SetParent(shortLived = new QWidget);
  EXPECT_EQ(host.Show<Question>(1, [&](Question&) { delete shortLived; }), std::nullopt);
  EXPECT_EQ(host.Parent(), nullptr);
}

TEST_F(WindowHostTest, AnswersNothingAtTheEndOfTheProgram) {
  EXPECT_EQ(host.Show<Question>(1, [&](Question&) { dialogs.SetEnding(); }), std::nullopt);
  int opened = 0;
  const auto count = [&](auto&) { ++opened; };
  EXPECT_EQ(host.Ask<Question>(1, count), std::nullopt);
  EXPECT_EQ(host.Show<Question>(1, count), std::nullopt);
  host.Show<Notice>(count);
  QApplication::processEvents();
  EXPECT_EQ(opened, 0);
}

TEST_F(WindowHostTest, OpensOneWindowOfAKindAndBringsItToTheFront) {
  EXPECT_EQ(host.Opened<Beside>(), nullptr);
  Beside& first = host.Open<Beside>();
  EXPECT_TRUE(first.isVisible());
  first.showMinimized();
  EXPECT_EQ(&host.Open<Beside>(), &first);
  EXPECT_FALSE(first.isMinimized());
  first.close();
  EXPECT_EQ(&host.Open<Beside>(), &first);
  EXPECT_TRUE(first.isVisible());
  EXPECT_EQ(host.Opened<Beside>(), &first);
  EXPECT_EQ(Beside::made, 1);
}

TEST_F(WindowHostTest, OpensAWindowAnewThatWasDeleted) {
  delete &host.Open<Beside>();
  EXPECT_EQ(host.Opened<Beside>(), nullptr);
  host.Open<Beside>();
  EXPECT_EQ(Beside::made, 2);
}

TEST_F(WindowHostTest, TakesItsOpenWindowsAlongTheLastFirst) {
  {
    WindowHost shortLived(dialogs, test::EnglishWindows());
    shortLived.Open<Beside>();
    shortLived.Open<Another>();
  }
  EXPECT_EQ(Beside::gone, "another beside ");
}

}  // namespace
}  // namespace velk
