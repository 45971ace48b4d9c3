#include "graphs/looked_back.h"

namespace velk::test {

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

TEST(GraphReadValue, FollowsTheLogWhenItsWindowComesToTheFront) {
  LookedBack job;
  auto* const window = qobject_cast<QMdiSubWindow*>(job.Form().parentWidget());
  const auto bringToFront = [&] {
    job.area.setActiveSubWindow(nullptr);
    job.area.setActiveSubWindow(window);
  };
  job.log.Finalise();
  EXPECT_TRUE(job.Key("ReadValue").isEnabled());
  bringToFront();
  EXPECT_FALSE(job.Key("ReadValue").isEnabled());
}

// --- Comments ---

TEST(GraphComment, IsEnteredWithF7AndStandsInTheReportAndOnTheChart) {
  LookedBack job;
  job.Sample(0, 100);
  int refreshed = 0;
  job.open.onReportChanged = [&] { ++refreshed; };
  const int before = job.CountOf(kBlackDot);
  QTest::keyClick(&job.Form(), Qt::Key_F7);
  EXPECT_TRUE(job.Find<QLineEdit>("Text1")->isVisible());
  EXPECT_EQ(job.Find<QLineEdit>("Text1")->text(), "");
  job.TypeComment("Насос 2 включён");
  EXPECT_FALSE(job.Find<QLineEdit>("Text1")->isVisible());
  EXPECT_EQ(job.open.Comments({}).at(0).text, "Насос 2 включён");
  EXPECT_GT(job.CountOf(kBlackDot), before + 20);
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
