#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <set>
#include <vector>

#include "graphs/history_fixture.h"
#include "graphs/windows/graph_form_new.h"
#include "graphs/windows/graph_windows_mdi.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk::test {

namespace {

constexpr QRgb kRed = 0xFF0000, kGreen = 0x00FF00, kBlack = 0;

/// Whether a picture has a colour at a value of a scale from 0 to 100, give or take a pixel.
bool HasAt(const QImage& plot, double value, int y, QRgb colour) {
  const int x = static_cast<int>((966 + value / 100 * (plot.width() * 15.0 - 966)) / 15);
  for (int beside = -1; beside <= 1; ++beside)
    if ((plot.pixel(x + beside, y) & 0xFFFFFF) == colour) return true;
  return false;
}

/// The rectangle in which two pictures of one size differ.
QRect ChangedBetween(const QImage& a, const QImage& b) {
  QRect changed;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) changed |= QRect(x, y, 1, 1);
  return changed;
}

/// The window of a recorded job, ten minutes in, as the sample's road has driven it.
struct LookedBack : RecordedJob {
  explicit LookedBack(int curveCount = 1) : RecordedJob(curveCount) {
    area.resize(1300, 760);
    area.show();
    windows.CreateGraphWindows();
    Form().EnableToolbar();
  }

  GraphFormNew& Form() { return *dynamic_cast<GraphFormNew*>(session.GraphForms[3]); }
  template <class Widget>
  Widget* Find(const char* name) {
    return Form().findChild<Widget*>(QLatin1String(name));
  }
  QScrollBar& Bar() { return *Find<QScrollBar>("VScroll1"); }
  QAction& Key(const char* key) { return *Find<QAction>(key); }

  /// Draws seconds `first` to `last` as a sample does, and records them: the seconds since the start, of 100.
  void Sample(int first, int last) {
    for (int second = first; second <= last; ++second) {
      const double value = second % 100;
      session.SampleTime = JobStart() + second * kSecond;
      if (session.SampleTime >= session.Times.GraphEndTime) {
        const double blockEnd = session.Times.GraphEndTime + 120 * kSecond;
        Form().Picture2_Update(session.Times.GraphEndTime, blockEnd);
        Form().UpdateScroll(blockEnd);
      }
      if (session.FirstPoint) session.Times.LastPlotTime = session.SampleTime;
      session.FirstPoint = false;
      for (int i = 1; i <= session.NumberOfParameters; ++i) {
        session.CurrentValue[i] = static_cast<float>(value);
        Form().PlotValue(session.Times.LastPlotTime, session.SampleTime, session.PreviousValue[i],
                         session.CurrentValue[i], 0, 100, session.CurrentParameters[i].color, false);
        session.PreviousValue[i] = session.CurrentValue[i];
      }
      session.Times.GraphPageTime = Form().TimeOrigin();
      if (session.SampleTime >= session.Times.GraphEndTime) session.Times.GraphEndTime += 120 * kSecond;
      session.Times.LastPlotTime = session.SampleTime;
    }
    Record(first, last);
  }

  QImage Plot() { return Find<QWidget>("Pic2")->grab().toImage(); }
  QImage Axis() { return Find<QWidget>("Picture3")->grab().toImage(); }
  int CountOf(QRgb colour) {
    const QImage picture = Plot();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) count += (picture.pixel(x, y) & 0xFFFFFF) == colour;
    return count;
  }
  void MoveMouse(int y) {
    auto* plot = Find<QWidget>("Pic2");
    QMouseEvent move(QEvent::MouseMove, QPointF(300, y), plot->mapToGlobal(QPointF(300, y)), Qt::NoButton, {}, {});
    QApplication::sendEvent(plot, &move);
  }
  std::string Caption() { return Form().windowTitle().toStdString(); }
  void TypeComment(const char* comment, Qt::Key end = Qt::Key_Return) {
    Find<QLineEdit>("Text1")->setText(QString::fromUtf8(comment));
    QTest::keyClick(Find<QLineEdit>("Text1"), end);
  }

  QMdiArea area;
  GraphWindowsMdi windows{session, platform, EnglishWindows(), area, {}, &open};
};

}  // namespace

// --- The bar ---

TEST(GraphHistory, HasABarFromTheFifthMinuteOnThatGoesWithThePresent) {
  LookedBack job;
  job.Sample(0, 119);
  EXPECT_FALSE(job.Bar().isEnabled());
  job.Sample(120, 240);  // blocks are drawn up to 09:36
  EXPECT_TRUE(job.Bar().isEnabled());
  EXPECT_EQ(job.Bar().maximum(), 1);
  EXPECT_EQ(job.Bar().value(), 1);
  job.Sample(241, 360);
  EXPECT_EQ(job.Bar().value(), 3);
}

TEST(GraphHistory, DrawsThePageThatTheBarAsksFor) {
  LookedBack job;
  job.Sample(0, 600);
  job.Bar().setValue(2);
  // The page of 09:32 is 240 s long. Its first row has the value 20: x = 966 + 0.2 x plot, y = 0.
  const QImage plot = job.Plot();
  EXPECT_TRUE(HasAt(plot, 20, 0, kRed));
  EXPECT_TRUE(HasAt(plot, 80, 60, kRed));  // 60 s further down
  // The frame of a page begins 35 twips down: no column above.
  EXPECT_TRUE(HasAt(plot, 90, 200, 0xC0C0C0));
  EXPECT_FALSE(HasAt(plot, 90, 0, 0xC0C0C0));
}

/// The rows of a job come ahead of the pages that a mouse asks for. The first row of a page stands at y 0: 20 on that
/// of the second minute, 60 and 80 on those of the first and the third.
TEST(GraphHistory, DrawsOfABarThatIsDraggedOnlyWhereItStandsAsOftenAsTheScreenFollows) {
  LookedBack job;
  job.Sample(0, 600);
  job.Bar().setSliderDown(true);
  job.Bar().setSliderPosition(2);
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRed));
  job.clock.Advance(10);
  job.Bar().setSliderPosition(3);
  job.clock.Advance(20);
  job.Bar().setSliderPosition(1);
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRed)) << "30 ms behind the page before";
  job.clock.Advance(4);
  EXPECT_TRUE(HasAt(job.Plot(), 60, 0, kRed));
  job.Bar().setSliderPosition(3);
  job.Bar().setSliderDown(false);
  job.clock.Advance(34);
  EXPECT_TRUE(HasAt(job.Plot(), 80, 0, kRed)) << "the place where it was let go";
}

TEST(GraphHistory, WaitsTwiceAsLongAsAPageHasTakenWhileTheBarIsDragged) {
  LookedBack job;
  job.Sample(0, 600);
  job.clock.onYield = [&job] {
    job.clock.onYield = nullptr;
    job.clock.Advance(50);  // events run behind a page that ends at the last row
  };
  job.Bar().setSliderDown(true);
  job.Bar().setSliderPosition(2);
  EXPECT_FALSE(job.clock.onYield);
  job.Bar().setSliderPosition(1);
  job.clock.Advance(99);
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRed));
  job.clock.Advance(1);
  EXPECT_TRUE(HasAt(job.Plot(), 60, 0, kRed));
}

TEST(GraphHistory, StaysWhereItIsWhileTheBarOnlyGrows) {
  LookedBack job;
  job.Sample(0, 600);
  job.Bar().setValue(1);
  const QImage page = job.Plot();
  const QImage axis = job.Axis();
  job.Sample(601, 900);  // more than a half-page scroll
  EXPECT_EQ(job.Bar().value(), 1);
  EXPECT_EQ(job.Plot(), page);
  EXPECT_EQ(job.Axis(), axis);
}

TEST(GraphHistory, ReturnsToThePresentWithAllThatWasDrawnMeanwhile) {
  LookedBack seen, looked;
  for (LookedBack* job : {&seen, &looked}) job->Sample(0, 600);
  looked.Bar().setValue(1);
  for (LookedBack* job : {&seen, &looked}) job->Sample(601, 900);
  looked.Bar().setValue(looked.Bar().maximum());
  EXPECT_EQ(looked.Plot(), seen.Plot());
  EXPECT_EQ(looked.Axis(), seen.Axis());
  for (LookedBack* job : {&seen, &looked}) job->Sample(901, 1000);
  EXPECT_EQ(looked.Plot(), seen.Plot());
  EXPECT_EQ(looked.Bar().value(), looked.Bar().maximum());
}

TEST(GraphHistory, ReturnsToThePresentOfAnotherSize) {
  LookedBack seen, looked;
  for (LookedBack* job : {&seen, &looked}) job->Sample(0, 600);
  looked.Bar().setValue(1);
  for (LookedBack* job : {&seen, &looked}) {
    job->Form().parentWidget()->resize(900, 420);
    job->Sample(601, 650);
  }
  looked.Bar().setValue(looked.Bar().maximum());
  EXPECT_GT(looked.CountOf(kRed), 300);
  EXPECT_EQ(looked.Plot().size(), seen.Plot().size());
}

TEST(GraphHistory, IsWalkedByKeyboardToo) {
  LookedBack job;
  job.Sample(0, 900);
  const int end = job.Bar().maximum();
  const QImage live = job.Plot();
  ASSERT_GT(end, 5);
  EXPECT_EQ(job.Bar().focusPolicy(), Qt::StrongFocus);
  QTest::keyClick(&job.Bar(), Qt::Key_PageUp);
  EXPECT_EQ(job.Bar().value(), end - 4);
  QTest::keyClick(&job.Bar(), Qt::Key_Up);
  EXPECT_EQ(job.Bar().value(), end - 5);
  EXPECT_NE(job.Plot(), live);
  QTest::keyClick(&job.Bar(), Qt::Key_End);
  EXPECT_EQ(job.Plot(), live);
}

TEST(GraphHistory, IsDeafWhereNoLogIsOpen) {
  LookedBack job;
  job.Sample(0, 600);
  const QImage live = job.Plot();
  job.log.Finalise();
  job.Bar().setValue(1);
  EXPECT_EQ(job.Plot(), live);
}

TEST(GraphHistory, ComesBackAlsoOnceTheLogIsClosed) {
  LookedBack job;
  job.Sample(0, 600);
  const QImage live = job.Plot();
  job.Bar().setValue(1);
  EXPECT_NE(job.Plot(), live);
  job.log.Finalise();
  job.Bar().setValue(job.Bar().maximum());
  EXPECT_EQ(job.Plot(), live);
}

TEST(GraphHistory, ShowsEachWindowAtAPlaceOfItsOwn) {
  LookedBack job(2);
  job.session.CurrentParameters[2].FormIndex = 5;
  BuildGraphMap(job.session, 2);
  job.windows.CreateGraphWindows();
  auto* second = dynamic_cast<GraphFormNew*>(job.session.GraphForms[5]);
  job.Record(0, 600);
  for (GraphFormNew* form : {&job.Form(), second}) form->UpdateScroll(JobStart() + 600 * kSecond);
  job.Bar().setValue(1);
  second->findChild<QScrollBar*>("VScroll1")->setValue(3);
  EXPECT_EQ(job.Bar().value(), 1);
  EXPECT_NE(job.Axis(), second->findChild<QWidget*>("Picture3")->grab().toImage());
}

TEST(GraphHistory, ShowsAsManyPlacesAsThereAreWindowsAndReturnsEachToItsPresent) {
  LookedBack job(kMaxParameters);
  for (int i = 1; i <= kMaxParameters; ++i) job.session.CurrentParameters[i].FormIndex = static_cast<std::int16_t>(i);
  BuildGraphMap(job.session, kMaxParameters);
  job.windows.CreateGraphWindows();
  constexpr int kMinutes = kMaxParameters + 5;
  job.Record(0, kMinutes * 60);
  const auto bar = [&](int graph) { return job.windows.Form(graph)->findChild<QScrollBar*>("VScroll1"); };
  const auto axis = [&](int graph) {
    return job.windows.Form(graph)->findChild<QWidget*>("Picture3")->grab().toImage();
  };
  std::vector<QImage> live(1);
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    job.windows.Form(graph)->UpdateScroll(JobStart() + kMinutes * 60 * kSecond);
    live.push_back(axis(graph));
  }
  std::set<QByteArray> pages;
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    bar(graph)->setValue(graph - 1);
    const QImage page = axis(graph);
    pages.insert(QByteArray(reinterpret_cast<const char*>(page.constBits()), static_cast<int>(page.sizeInBytes())));
  }
  EXPECT_EQ(pages.size(), 64u) << "each has other times beside it";
  for (int graph = 1; graph <= kMaxParameters; ++graph) {
    EXPECT_EQ(bar(graph)->value(), graph - 1);
    bar(graph)->setValue(bar(graph)->maximum());
    EXPECT_EQ(axis(graph), live[static_cast<std::size_t>(graph)]) << graph;
  }
}

TEST(GraphHistory, LetsEventsRunBehindAPageWhoseLastRowStandsAtItsEnd) {
  LookedBack job;
  job.Sample(0, 600);
  const int before = job.clock.yields;
  int depth = 0, deepest = 0;
  job.clock.onYield = [&] {
    deepest = std::max(deepest, ++depth);
    if (job.Bar().value() < 4) job.Bar().setValue(job.Bar().value() + 1);
    --depth;
  };
  job.Bar().setValue(1);
  job.clock.onYield = nullptr;
  EXPECT_EQ(job.Bar().value(), 2);
  EXPECT_GT(job.clock.yields, before);
  EXPECT_EQ(deepest, 1) << "a page that is drawn behind another lets no more events run";
}

TEST(GraphHistory, TellsWhatHindersAPage) {
  LookedBack job;
  job.Sample(0, 600);
  Connection::Open(job.path, OpenMode::ReadWrite)->Execute("ALTER TABLE logData RENAME TO gone");
  job.dialogs.Expect(" - PlotOldData", Answer::Cancel);
  job.Bar().setValue(1);
}

TEST(GraphHistory, LeavesOutACurveThatCannotBeDrawnAndDrawsTheOthers) {
  LookedBack job(2);
  job.session.CurrentParameters[2].color = 0x00FF00;
  job.Sample(0, 600);
  job.session.CurrentParameters[1].min = job.session.CurrentParameters[1].max = 7;
  job.dialogs.Expect("Division by zero - PlotValue2", Answer::Cancel);
  job.Bar().setValue(1);
  EXPECT_EQ(job.CountOf(kRed), 0);
  EXPECT_GT(job.CountOf(kGreen), 200);
}

TEST(GraphHistory, DrawsACurveThatCouldNotBeDrawnOnRetry) {
  LookedBack well, mended;
  for (LookedBack* job : {&well, &mended}) job->Sample(0, 600);
  Parameter& curve = mended.session.CurrentParameters[1];
  curve.min = curve.max = 7;
  mended.dialogs.Expect("Division by zero - PlotValue2", Answer::Retry, [&] {
    curve.min = 0;
    curve.max = 100;
  });
  for (LookedBack* job : {&well, &mended}) job->Bar().setValue(1);
  EXPECT_EQ(mended.Plot(), well.Plot());
}

TEST(GraphHistory, StaysAliveWhereItsWindowIsClosedBehindAPage) {
  LookedBack job;
  job.Sample(0, 600);
  const QPointer<GraphFormNew> form(&job.Form());
  job.clock.onYield = [&] {
    if (!form->parentWidget()->isVisible()) return;
    form->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(form.isNull()) << "its page is on the stack";
  };
  job.Bar().setValue(2);  // the page from 09:32 to 09:36, where a row stands
  job.clock.onYield = nullptr;
  EXPECT_EQ(job.session.GraphForms[3], nullptr);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(form.isNull());
}

TEST(GraphHistory, HasPagesOfTheLengthThatItsNewWindowsHave) {
  LookedBack job;
  job.session.MaximumTime = 7200;  // as another template has it
  job.windows.CreateGraphWindows();
  EXPECT_EQ(job.session.Times.BlockPairsPerPage, 2);
}

// --- Repainting ---

TEST(GraphRepaint, BringsTheCurvesBackFromTheLogAtAResize) {
  LookedBack job;
  job.Sample(0, 200);
  job.Comment(100, "Pump on");
  job.Form().parentWidget()->resize(900, 420);
  const QImage plot = job.Plot();
  // The page begins at 09:31: 20 rows down stand 80 s with the value 80, 90 rows down 150 s with 50.
  EXPECT_DOUBLE_EQ(job.Form().TimeOrigin(), JobStart() + 60 * kSecond);
  EXPECT_TRUE(HasAt(plot, 80, 20, kRed));
  EXPECT_TRUE(HasAt(plot, 50, 90, kRed));
  int dark = 0;  // the comment stands 40 s down the page, at the right edge
  for (int y = 33; y < 48; ++y)
    for (int x = plot.width() - 60; x < plot.width(); ++x) dark += qGray(plot.pixel(x, y)) < 128;
  EXPECT_GT(dark, 20);
}

/// As a page of this window is that is drawn with these curves from the start.
TEST(GraphRepaint, DrawsThePageOfHistoryWithTheCurvesThatTheWindowIsGiven) {
  LookedBack job(2);
  job.Sample(0, 600);
  job.Bar().setValue(2);
  job.session.CurrentParameters[2].FormIndex = 2;
  BuildGraphMap(job.session, job.session.TotalParameters);
  job.Form().LoadAgain();
  const QImage plot = job.Plot(), axis = job.Axis();
  EXPECT_EQ(job.CountOf(kGreen), 0) << "the curve that has left";
  EXPECT_GT(job.CountOf(kRed), 0);
  job.Bar().setValue(1);
  job.Bar().setValue(2);
  EXPECT_EQ(job.Plot(), plot);
  EXPECT_EQ(job.Axis(), axis);
}

TEST(GraphRepaint, DrawsThePageOfHistoryAgain) {
  LookedBack job;
  job.Sample(0, 600);
  job.Bar().setValue(2);
  job.Form().parentWidget()->resize(900, 420);
  EXPECT_TRUE(HasAt(job.Plot(), 80, 60, kRed));
  EXPECT_EQ(job.Bar().value(), 2);
}

TEST(GraphRepaint, HappensInPlaybackToo) {
  LookedBack job;
  job.Sample(0, 200);
  job.log.Finalise();
  job.session.AcquireStarted = job.session.AcquisitionMode = job.session.RecordToDB = false;
  job.session.CurrentParameters[1].Gain = 1;
  job.session.CurrentStatus = text::StatusPlayingBack;
  job.Form().parentWidget()->resize(900, 420);
  EXPECT_GT(job.CountOf(kRed), 200);
}

// --- Read Value ---

TEST(GraphReadValue, CaptionsTheValueUnderTheMouseLiveAndInHistory) {
  LookedBack job;
  job.Sample(0, 600);
  job.Key("ReadValue").trigger();
  const double second = 40 + (job.Form().TimeOrigin() - JobStart()) / kSecond;
  job.MoveMouse(40);
  EXPECT_EQ(job.Caption(), "Pressure 1 at " + FormatDate(JobStart() + std::floor(second) * kSecond, "hh:mm:ss") +
                               " : " + std::to_string(static_cast<int>(second) % 100) + ".000");
  job.Bar().setValue(2);
  job.MoveMouse(65);  // 09:33:05, 185 s behind the start
  EXPECT_EQ(job.Caption(), "Pressure 1 at 09:33:05 : 85.000");
}

TEST(GraphReadValue, ClearsTheCaptionWhereThereIsNothingToRead) {
  LookedBack job;
  job.Sample(0, 100);
  job.Key("ReadValue").trigger();
  job.MoveMouse(150);  // behind the last sample
  EXPECT_EQ(job.Caption(), "");
  job.MoveMouse(50);
  EXPECT_EQ(job.Caption(), "Pressure 1 at 09:30:50 : 50.000");
}

TEST(GraphReadValue, EndsWithASecondPressOrEscAndGivesTheCaptionBack) {
  LookedBack job;
  job.Sample(0, 100);
  for (const bool byKey : {false, true}) {
    job.Key("ReadValue").trigger();
    EXPECT_TRUE(job.Key("ReadValue").isChecked());
    job.MoveMouse(150);
    if (byKey)
      QTest::keyClick(&job.Form(), Qt::Key_Escape);
    else
      job.Key("ReadValue").trigger();
    EXPECT_FALSE(job.Key("ReadValue").isChecked());
    EXPECT_EQ(job.Caption(), "Pressure 1");
    job.MoveMouse(50);
    EXPECT_EQ(job.Caption(), "Pressure 1");
  }
}

TEST(GraphReadValue, ReadsOnTheCurveThatWasChosenWhereverItStands) {
  LookedBack job(3);
  job.Sample(0, 100);
  job.dialogs.ExpectChoice("Read Value from Graph", "Pressure 2");
  job.Key("ReadValue").trigger();
  // The first curve leaves the window.
  job.session.CurrentParameters[1].FormIndex = 1;
  BuildGraphMap(job.session, job.session.TotalParameters);
  job.MoveMouse(50);
  EXPECT_EQ(job.Caption(), "Pressure 2 at 09:30:50 : 50.000");
  job.session.CurrentParameters[2].FormIndex = 2;
  BuildGraphMap(job.session, job.session.TotalParameters);
  job.MoveMouse(51);
  EXPECT_EQ(job.Caption(), "") << "it has left the window";
}

TEST(GraphReadValue, AsksWhichCurveWhereThereAreSeveral) {
  LookedBack job(3);
  job.Sample(0, 100);
  job.dialogs.ExpectChoice("Read Value from Graph", std::nullopt);
  job.Key("ReadValue").trigger();
  EXPECT_FALSE(job.Key("ReadValue").isChecked());
  job.dialogs.ExpectChoice("Read Value from Graph", "Pressure 3");
  job.Key("ReadValue").trigger();
  EXPECT_EQ(job.dialogs.listsAsked.back().prompt, "Select the Parameter to Read");
  EXPECT_EQ(job.dialogs.listsAsked.back().entries, (Calls{"Pressure 1", "Pressure 2", "Pressure 3"}));
  job.MoveMouse(50);
  EXPECT_EQ(job.Caption(), "Pressure 3 at 09:30:50 : 50.000");
}

TEST(GraphReadValue, TellsCurvesOfOneNameApart) {
  LookedBack job(2);
  for (int i = 1; i <= 2; ++i) job.session.CurrentParameters[i].name = "Pressure";
  job.Append(0, {10, 20});
  job.session.SampleTime = job.session.Times.LastPlotTime = JobStart() + 5 * kSecond;
  job.Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  job.dialogs.ExpectChoice("Read Value from Graph", "2: Pressure");
  job.Key("ReadValue").trigger();
  EXPECT_EQ(job.dialogs.listsAsked.back().entries, (Calls{"1: Pressure", "2: Pressure"}));
  job.MoveMouse(0);
  EXPECT_EQ(job.Caption(), "Pressure at 09:30:00 : 20.000");
}

TEST(GraphReadValue, IsOfferedOnlyWhileALogIsOpen) {
  LookedBack job;
  EXPECT_TRUE(job.Key("ReadValue").isEnabled());
  job.log.Finalise();
  job.Form().EnableToolbar();
  EXPECT_FALSE(job.Key("ReadValue").isEnabled());
  EXPECT_TRUE(job.Key("AddComment").isEnabled());
}

// --- Comments ---

TEST(GraphComment, IsEnteredWithF7AndStandsInTheReportAndOnTheChart) {
  LookedBack job;
  job.Sample(0, 100);
  int refreshed = 0;
  job.open.onReportChanged = [&] { ++refreshed; };
  const int before = job.CountOf(kBlack);
  QTest::keyClick(&job.Form(), Qt::Key_F7);
  EXPECT_TRUE(job.Find<QLineEdit>("Text1")->isVisible());
  EXPECT_EQ(job.Find<QLineEdit>("Text1")->text(), "");
  job.TypeComment("Насос 2 включён");
  EXPECT_FALSE(job.Find<QLineEdit>("Text1")->isVisible());
  EXPECT_EQ(job.open.Comments({}).at(0).text, "Насос 2 включён");
  EXPECT_GT(job.CountOf(kBlack), before + 20);
  EXPECT_EQ(refreshed, 1);
}

TEST(GraphComment, IsLeftWithEscAndLeavesNothing) {
  LookedBack job;
  job.Sample(0, 100);
  const QImage before = job.Plot();
  int refreshed = 0;
  job.open.onReportChanged = [&] { ++refreshed; };
  job.Key("AddComment").trigger();
  job.TypeComment("never mind", Qt::Key_Escape);
  EXPECT_TRUE(job.open.Comments({}).empty());
  EXPECT_EQ(job.Plot(), before);
  EXPECT_EQ(refreshed, 1);
  job.Key("AddComment").trigger();
  EXPECT_EQ(job.Find<QLineEdit>("Text1")->text(), "");
  job.TypeComment("");
  EXPECT_TRUE(job.open.Comments({}).empty());
}

TEST(GraphComment, KeepsItsWindowAliveWhereThatIsClosedBehindIt) {
  LookedBack job;
  job.Sample(0, 100);
  const QPointer<GraphFormNew> form(&job.Form());
  job.Key("AddComment").trigger();
  job.clock.onYield = [&] {
    form->parentWidget()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(form.isNull()) << "its box is on the stack";
  };
  job.TypeComment("Pump on");
  job.clock.onYield = nullptr;
  EXPECT_EQ(job.open.Comments({}).size(), 1U);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(form.isNull());
}

TEST(GraphComment, NeedsAFile) {
  LookedBack job;
  job.log.Finalise();
  job.dialogs.Expect("Must supply a file name", Answer::Ok);
  QTest::keyClick(&job.Form(), Qt::Key_F7);
  EXPECT_FALSE(job.Find<QLineEdit>("Text1")->isVisible());
  EXPECT_EQ(job.dialogs.shown.back().helpTopic, 572);
}

TEST(GraphComment, NamesTheProcedureOfTheKeyWhereItFails) {
  LookedBack job;
  job.log.Finalise();
  job.dialogs.Expect("Must supply a file name", Answer::Ok, [] { throw RuntimeError(ErrorNumber::Overflow); });
  job.dialogs.Expect(" - Form_KeyUp", Answer::Cancel);
  QTest::keyClick(&job.Form(), Qt::Key_F7);
}

TEST(GraphComment, TellsInPlaybackThatItTakesTheTimeOfTheClock) {
  LookedBack job;
  job.Key("AddComment").trigger();
  EXPECT_EQ(job.Find<QLabel>("CommentHint")->text(), "Comment: Enter stores it, Esc leaves without it");
  job.TypeComment("", Qt::Key_Escape);
  job.log.Finalise();
  job.session.AcquisitionMode = false;
  job.session.CurrentStatus = text::StatusPlayingBack;
  job.Key("AddComment").trigger();
  EXPECT_NE(job.Find<QLabel>("CommentHint")->text().indexOf("the present time of the clock"), -1);
  job.TypeComment("seen again");
  EXPECT_EQ(job.open.Comments({}).at(0).time, job.clock.Now());
}

TEST(GraphComment, TellsWhereItCannotBeStored) {
  LookedBack job;
  job.Key("AddComment").trigger();
  job.log.Finalise();
  job.dialogs.Expect(" - AddTheComment", Answer::Cancel);
  job.TypeComment("too late");
  EXPECT_EQ(job.dialogs.shown.back().title, "Summary report ... error");
}

TEST(GraphComment, GoesToTheLivePageWhileHistoryIsInView) {
  LookedBack job;
  job.Sample(0, 600);
  const QImage live = job.Plot();
  job.Bar().setValue(1);
  const QImage page = job.Plot();
  job.Key("AddComment").trigger();
  job.TypeComment("Pump on");
  EXPECT_EQ(job.Plot(), page);
  job.Bar().setValue(job.Bar().maximum());
  EXPECT_NE(job.Plot(), live);
}

TEST(GraphComment, OfTheFileStandsInEachBlockThatIsDrawn) {
  LookedBack with, without;
  with.Comment(60, "Pump on");
  with.Comment(300, "Pump off");  // of a later block
  for (LookedBack* job : {&with, &without}) job->Form().Picture2_Update(JobStart(), JobStart() + 120 * kSecond);
  const QRect changed = ChangedBetween(with.Plot(), without.Plot());
  EXPECT_FALSE(changed.isEmpty());
  EXPECT_TRUE(QRect(with.Plot().width() - 120, 48, 120, 24).contains(changed))
      << changed.left() << " " << changed.top();
}

TEST(GraphComment, OfABlockStandsAtItsPlaceOnAPageThatBeginsAtAnotherTime) {
  LookedBack with, without;
  with.Comment(180, "Pump off");
  for (LookedBack* job : {&with, &without})
    for (const int begin : {0, 120})
      job->Form().Picture2_Update(JobStart() + begin * kSecond, JobStart() + (begin + 120) * kSecond);
  // The second block moves the page up by half: 09:31 stands at its top, the comment two minutes below.
  EXPECT_DOUBLE_EQ(with.Form().TimeOrigin(), JobStart() + 60 * kSecond);
  const QRect changed = ChangedBetween(with.Plot(), without.Plot());
  EXPECT_FALSE(changed.isEmpty());
  EXPECT_TRUE(QRect(with.Plot().width() - 120, 108, 120, 24).contains(changed))
      << changed.top() << " " << changed.bottom();
}

TEST(GraphComment, OfTheFileStandsOnThePagesOfHistory) {
  LookedBack job;
  job.Sample(0, 600);
  job.Bar().setValue(1);
  const QImage without = job.Plot();
  job.Bar().setValue(job.Bar().maximum());
  job.Comment(120, "Pump on");
  job.Bar().setValue(1);
  const QImage with = job.Plot();
  // 60 s down the page, at the right edge, and nothing else has changed.
  const QRect changed = ChangedBetween(with, without);
  EXPECT_FALSE(changed.isEmpty());
  EXPECT_TRUE(QRect(with.width() - 120, 48, 120, 24).contains(changed)) << changed.left() << " " << changed.top();
}

}  // namespace velk::test
