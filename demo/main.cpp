// Starts a simulated unit and the real main window, connects, records, and draws live. With --seconds it stops by
// itself and prints where the log and the picture are; --record-only LOG records without an end, with a comment every
// 20 rows, for scripts/kill_test. With --survey N the unit tells of a trip into a well, which is surveyed live. --play
// LOG plays a log to its end instead.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <memory>

#include "base/text_qt.h"
#include "demo/demo_job.h"
#include "demo/play_log.h"
#include "demo/simulator.h"
#include "demo/survey_job.h"
#include "demo/unattended.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/database/command.h"
#include "platform/database/connection.h"
#include "platform/loop/system_clock.h"
#include "platform/windows/qt_dialogs.h"
#include "shell/application.h"

namespace velk::demo {

namespace {

struct Options {
  int seconds = 0;  ///< 0: until the window is closed
  QString log;
  QString picture;
  QString play;  ///< a log that is played back instead
  bool recordOnly = false;
  int survey = 0;  ///< interval of a live survey; 0: none
  QString language;
  QStringList simulator;  ///< further options of the simulated unit
};

Options ReadOptions(const QApplication& qt) {
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOptions(
      {{"seconds", "Stops after so many seconds.", "N"},
       {"log", "The log to record to.", "path"},
       {"language", "English or Russian.", "language", "English"},
       {"picture", "Where the picture of the window goes.", "path"},
       {"simulator", "Further options of the simulated unit, divided by blanks.", "options"},
       {"play", "Plays a log back, 1000 rows a second, and prints the last row.", "log"},
       {"survey", "Surveys a trip into a well every so many feet.", "N"},
       {"record-only", "Records every line of a flood to this log, printing each row and comment.", "log"}});
  parser.process(qt);
  Options options;
  options.seconds = parser.value("seconds").toInt();
  options.recordOnly = parser.isSet("record-only");
  options.survey = parser.value("survey").toInt();
  options.simulator = parser.value("simulator").split(' ', Qt::SkipEmptyParts);
  options.log = options.recordOnly ? parser.value("record-only") : parser.value("log");
  options.play = parser.value("play");
  options.picture = parser.value("picture");
  options.language = parser.value("language");
  if (!options.play.isEmpty()) return options;
  const QDir folder(QDir::tempPath() + QStringLiteral("/velk-demo-%1").arg(QCoreApplication::applicationPid()));
  if (options.log.isEmpty() || (options.seconds > 0 && options.picture.isEmpty())) folder.mkpath(".");
  if (options.log.isEmpty()) options.log = folder.filePath("demo.mdb");
  if (options.picture.isEmpty()) options.picture = folder.filePath("velk.png");
  return options;
}

long long RowsOf(const std::string& log) {
  const auto connection = Connection::Open(log, OpenMode::ReadOnly);
  Command count(*connection, "SELECT COUNT(*) FROM logData");
  return count.Next() ? count.Integer(0) : 0;
}

/// The job from Connect to Stop, as the operator's clicks would run it.
class DemoJob {
 public:
  DemoJob(Application& application, const Options& options) : application_(application), options_(options) {}

  void Begin() {
    Session& session = application_.State();
    application_.Window().Button("Acquire")->trigger();
    if (!StatusIs(session, text::StatusReadyToAcquire)) return;
    session.CurrentFile = FromQt(options_.log);
    session.RecordToDB = true;
    application_.Window().SetButtonImage("RecordToDB", image::RecordOn);
    application_.Window().Button("Pause")->trigger();
    if (options_.recordOnly) PrintRows();
    if (options_.survey > 0) SurveyBehindFirstRow();
  }

  int End() {
    if (options_.survey > 0) ShowSurvey(application_, FromQt(options_.picture + ".well.png"));
    application_.Window().grab().save(options_.picture);
    application_.Window().Button("Stop")->trigger();
    const long long rows = RowsOf(FromQt(options_.log));
    std::printf("log:     %s\nrows:    %lld\npicture: %s\n", qPrintable(options_.log), rows,
                qPrintable(options_.picture));
    return rows > 0 ? 0 : 1;
  }

 private:
  void SurveyBehindFirstRow() {
    QObject::connect(&surveyTimer_, &QTimer::timeout, [this] {
      if (application_.RowsRecorded() == 0) return;
      surveyTimer_.stop();
      BeginSurvey(application_, options_.survey);
    });
    surveyTimer_.start(1);
  }

  void PrintRows() {
    QObject::connect(&rowTimer_, &QTimer::timeout, [this] {
      const long long rows = application_.RowsRecorded();
      if (rows == printed_) return;
      printed_ = rows;
      std::printf("row %lld\n", rows);
      if (rows / kRowsPerComment > comments_) WriteComment();
      std::fflush(stdout);
    });
    rowTimer_.start(1);
  }

  void WriteComment() {
    application_.Log().AddSummaryRow("comment " + std::to_string(++comments_));
    std::printf("comment %lld\n", comments_);
  }

  static constexpr long long kRowsPerComment = 20;

  Application& application_;
  Options options_;
  QTimer rowTimer_, surveyTimer_;
  long long printed_ = 0;
  long long comments_ = 0;
};

QStringList SimulatorOptions(const Options& options) {
  QStringList list{"--unit", "kesta5"};
  if (options.recordOnly)
    list << "--flood"
         << "--baud"
         << "0";
  if (options.survey > 0)
    list << "--trip"
         << "1000";
  return list + options.simulator;
}

int Run(const QApplication& qt) {
  const Options options = ReadOptions(qt);
  if (!options.play.isEmpty()) return PlayLog(FromQt(options.play), FromQt(options.language));
  const QTemporaryDir configuration;
  Simulator simulator;
  const std::string device = simulator.Start(SimulatorOptions(options));

  Translation translation;
  Gate gate;
  SystemClock clock(gate);
  std::unique_ptr<Dialogs> dialogs;
  QtDialogs* boxes = nullptr;
  if (options.seconds > 0 || options.recordOnly) {
    dialogs = std::make_unique<UnattendedDialogs>(gate, translation.Translator);
  } else {
    auto shown = std::make_unique<QtDialogs>(gate, translation.Translator);
    boxes = shown.get();
    dialogs = std::move(shown);
  }
  SettingsStore settings(FromQt(configuration.path()));
  SetUpStore(settings, device, options.recordOnly || options.survey > 0);
  settings.Save("VELK2", "General", "Current_language", FromQt(options.language));
  if (options.survey > 0) SetUpTrip(settings);
  UnattendedQuestions questions;
  Application application(
      {{clock, gate, *dialogs, settings, translation.Translator}, translation, MakeSerialPort, &questions});
  if (boxes) boxes->SetParent(&application.Window());
  DemoJob job(application, options);
  application.MDIForm_Load();
  QTimer::singleShot(0, [&] { job.Begin(); });
  if (options.seconds > 0) QTimer::singleShot(options.seconds * 1000, [&] { QApplication::exit(job.End()); });
  return QApplication::exec();
}

}  // namespace

}  // namespace velk::demo

int main(int argc, char** argv) {
  const QApplication qt(argc, argv);
  try {
    return velk::demo::Run(qt);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "velk_demo: %s\n", error.what());
    return 1;
  }
}
