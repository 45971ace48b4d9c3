#include "demo/survey_job.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <cstdio>

#include "base/text_qt.h"
#include "wells/windows/frm_3d_well.h"
#include "wells/windows/report_form.h"

namespace velk::demo {

namespace {

struct TripChannel {
  const char* name;
  const char* units;
  const char* max;
};

constexpr TripChannel kTripChannels[] = {{"Depth", "ft", "2000"},
                                         {"Speed", "ft/min", "20000"},
                                         {"Inclination", "deg", "100"},
                                         {"Azimuth", "deg", "360"},
                                         {"RPM", "1/min", "100"}};

/// The window matches the fields by their names.
void TakeWhatIsMatched(int interval) {
  QWidget* window = QApplication::activeModalWidget();
  if (window == nullptr || window->objectName() != QLatin1String("frmImportSurvey")) return;
  window->findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(QString::number(interval));
  window->findChild<QAbstractButton*>(QStringLiteral("optSpeed_2"))->click();
  window->findChild<QAbstractButton*>(QStringLiteral("cmdOK"))->click();
}

template <class Window>
Window* Shown() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* window = qobject_cast<Window*>(widget); window && window->isVisible()) return window;
  return nullptr;
}

}  // namespace

void SetUpTrip(SettingsStore& settings) {
  int number = 0;
  for (const TripChannel& channel : kTripChannels) {
    const std::string section = "Parameter" + std::to_string(++number);
    settings.Save("VELK2", section, "name", channel.name);
    settings.Save("VELK2", section, "units", channel.units);
    settings.Save("VELK2", section, "max", channel.max);
  }
}

void BeginSurvey(Application& application, int interval) {
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [interval] { TakeWhatIsMatched(interval); });
  look.start(10);
  application.Window().MenuItem("mnuToolsLiveSurvey")->trigger();
  std::printf("survey behind row %lld\n", application.RowsRecorded());
  std::fflush(stdout);
}

void ShowSurvey(Application& application, const std::string& picture) {
  for (const char* item : {"mnuToolsWellProfileTable", "mnuTools3DWell"})
    application.Window().MenuItem(item)->trigger();
  const auto* table = Shown<ReportForm>();
  auto* view = Shown<frm3DWell>();
  if (table == nullptr || view == nullptr) return;
  view->grab().save(ToQt(picture));
  const QAbstractItemModel& model = *table->findChild<QTableView*>(QStringLiteral("Grid1"))->model();
  int stations = 0;
  while (stations < model.rowCount() && !model.index(stations, 0).data().toString().isEmpty()) ++stations;
  const QString depth = stations > 0 ? model.index(stations - 1, 0).data().toString() : QString();
  std::printf("path of %d stations down to %s\n", stations, qPrintable(depth));
}

}  // namespace velk::demo
