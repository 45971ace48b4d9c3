#include "graphs/looked_back.h"

namespace velk::test {

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
  EXPECT_TRUE(HasAt(plot, 20, 0, kRedDot));
  EXPECT_TRUE(HasAt(plot, 80, 60, kRedDot));  // 60 s further down
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
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRedDot));
  job.clock.Advance(10);
  job.Bar().setSliderPosition(3);
  job.clock.Advance(20);
  job.Bar().setSliderPosition(1);
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRedDot)) << "30 ms behind the page before";
  job.clock.Advance(4);
  EXPECT_TRUE(HasAt(job.Plot(), 60, 0, kRedDot));
  job.Bar().setSliderPosition(3);
  job.Bar().setSliderDown(false);
  job.clock.Advance(34);
  EXPECT_TRUE(HasAt(job.Plot(), 80, 0, kRedDot)) << "the place where it was let go";
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
  EXPECT_TRUE(HasAt(job.Plot(), 20, 0, kRedDot));
  job.clock.Advance(1);
  EXPECT_TRUE(HasAt(job.Plot(), 60, 0, kRedDot));
}

/// Twenty rows a second for ten minutes: a page of four has 4,800, of which 2,048 are drawn at once. The value rises
/// from 0 to 100 with each 200 s.
struct FastJob : LookedBack {
  FastJob() {
    Sample(0, 0);
    Transaction all(*log.Writing());
    for (int row = 1; row <= 600 * 20; ++row) Append(row / 20.0, {row / 40 % 100 * 1.0});
    all.Commit();
    session.SampleTime = JobStart() + 600 * kSecond;
    Form().UpdateScroll(session.SampleTime);
  }
  /// How many dots of the page have a curve in their row.
  int Drawn() {
    const QImage picture = Plot();
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
      bool isDrawn = false;
      for (int x = 0; x < picture.width() && !isDrawn; ++x) isDrawn = (picture.pixel(x, y) & 0xFFFFFF) == kRedDot;
      rows += isDrawn;
    }
    return rows;
  }
};

TEST(GraphHistory, DrawsAPageOfAFastJobWhileSamplesAreTaken) {
  FastJob job;
  job.Bar().setValue(1);
  // 2,048 of 4,800 segments on 240 dots.
  EXPECT_NEAR(job.Drawn(), 102, 2);
  job.clock.Advance(1);
  EXPECT_NEAR(job.Drawn(), 204, 3);
  job.clock.Advance(1);
  EXPECT_NEAR(job.Drawn(), 240, 3);
}

TEST(GraphHistory, EndsAPageOfAFastJobWithItsComments) {
  FastJob job;
  job.Comment(90, "pump 2 on");
  job.Bar().setValue(1);
  const QImage before = job.Plot();
  job.clock.Advance(1);
  job.clock.Advance(1);
  const QImage whole = job.Plot();
  job.Bar().setValue(0);
  job.Bar().setValue(1);
  job.clock.Advance(1);
  job.clock.Advance(1);
  EXPECT_NE(before, whole);
  EXPECT_EQ(job.Plot(), whole);
}

TEST(GraphHistory, BeginsAnewWhereAnotherPageIsAskedForAheadOfTheEndOfOne) {
  FastJob job, straight;
  job.Bar().setValue(1);
  job.Bar().setValue(3);
  straight.Bar().setValue(3);
  for (FastJob* each : {&job, &straight})
    for (int i = 0; i < 5; ++i) each->clock.Advance(1);
  EXPECT_EQ(job.Plot(), straight.Plot());
}

TEST(GraphHistory, EndsThePageBeforeABarThatIsDraggedAsksForAnother) {
  FastJob job, straight;
  job.Bar().setSliderDown(true);
  job.Bar().setSliderPosition(1);
  job.Bar().setSliderPosition(3);
  job.clock.Advance(1);
  job.clock.Advance(1);
  EXPECT_NEAR(job.Drawn(), 240, 3);
  for (int i = 0; i < 80; ++i) job.clock.Advance(1);
  straight.Bar().setValue(3);
  for (int i = 0; i < 5; ++i) straight.clock.Advance(1);
  EXPECT_EQ(job.Plot(), straight.Plot());
}

TEST(GraphHistory, LeavesAPageForThePresent) {
  FastJob job, stayed;
  job.Bar().setValue(1);
  job.Bar().setValue(job.Bar().maximum());
  for (FastJob* each : {&job, &stayed})
    for (int i = 0; i < 5; ++i) each->clock.Advance(1);
  EXPECT_EQ(job.Plot(), stayed.Plot());
}

TEST(GraphHistory, LeavesAPageWhoseLogIsClosed) {
  FastJob job;
  job.Bar().setValue(1);
  job.session.LogFileInUse.clear();
  job.log.Finalise();
  const int drawn = job.Drawn();
  for (int i = 0; i < 5; ++i) job.clock.Advance(1);
  EXPECT_EQ(job.Drawn(), drawn);
}

TEST(GraphHistory, TellsOnceWhatHindersTheRestOfAPage) {
  FastJob job;
  job.Bar().setValue(1);
  Connection::Open(job.path, OpenMode::ReadWrite)->Execute("ALTER TABLE logData RENAME TO gone");
  job.dialogs.Expect(" - PlotOldData", Answer::Cancel);
  for (int i = 0; i < 5; ++i) job.clock.Advance(1);
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
  EXPECT_GT(looked.CountOf(kRedDot), 300);
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
  EXPECT_EQ(job.CountOf(kRedDot), 0);
  EXPECT_GT(job.CountOf(kGreenDot), 200);
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
  EXPECT_TRUE(HasAt(plot, 80, 20, kRedDot));
  EXPECT_TRUE(HasAt(plot, 50, 90, kRedDot));
  int dark = 0;  // the comment stands 40 s down the page, at the right edge
  for (int y = 33; y < 48; ++y)
    for (int x = plot.width() - 60; x < plot.width(); ++x) dark += qGray(plot.pixel(x, y)) < 128;
  EXPECT_GT(dark, 20);
}

TEST(GraphRepaint, DrawsTheCurvesOnTheirPresentScaleAtAResize) {
  LookedBack job;
  job.Sample(0, 200);
  job.session.CurrentParameters[1].max = 200;
  job.Form().RefreshForm();
  job.Form().parentWidget()->resize(900, 420);
  const QImage plot = job.Plot();
  EXPECT_TRUE(HasAt(plot, 40, 20, kRedDot)) << "80 of 200";
  EXPECT_FALSE(HasAt(plot, 80, 20, kRedDot)) << "80 of 100";
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
  EXPECT_EQ(job.CountOf(kGreenDot), 0) << "the curve that has left";
  EXPECT_GT(job.CountOf(kRedDot), 0);
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
  EXPECT_TRUE(HasAt(job.Plot(), 80, 60, kRedDot));
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
  EXPECT_GT(job.CountOf(kRedDot), 200);
}

}  // namespace velk::test
