#pragma once

#include <QAction>
#include <QScrollBar>
#include <QTest>

#include "base/errors.h"
#include "graphs/history_fixture.h"
#include "graphs/label_reading.h"
#include "graphs/looked_back.h"
#include "graphs/windows/frm_ext_graph_form.h"
#include "support/host.h"
#include "support/window_driving.h"

namespace velk::test {

/// The chart of a table that another program fills, beside a job. The clock stands at JobStart, 09:30:00.
struct FollowedTable : RecordedJob {
  explicit FollowedTable(int curves = 1) {
    std::string columns = "Day DATE, Clock DATE";
    for (int i = 1; i <= curves; ++i) columns += ", V" + std::to_string(i) + " DOUBLE";
    Connection::Open(database, OpenMode::CreateNew)->Execute("CREATE TABLE Readings (" + columns + ")");
    live = {true, database, "Readings", "Day", "Clock", {}};
    for (int i = 1; i <= curves; ++i) {
      LiveField field;
      field.Name = "V" + std::to_string(i);
      field.DisplayName = "Value " + std::to_string(i);
      field.Unit = "bar";
      field.Colour = i == 1 ? 0x0000FF : 0x00FF00;
      live.Fields.push_back(field);
    }
  }

  /// A row so many seconds behind the start, with the same value for each field.
  void Add(int second, double value) { Add(second, second, value); }
  /// Rows of each second from one to another: the seconds since the start, of 100.
  void Add(int first, int last, std::optional<double> value) {
    const auto writer = Connection::Open(database, OpenMode::ReadWrite);
    Transaction all(*writer);
    std::string sql = "INSERT INTO Readings VALUES (?, ?";
    for (std::size_t i = 0; i < live.Fields.size(); ++i) sql += ", ?3";
    Command insert(*writer, sql + ")");
    for (int second = first; second <= last; ++second) {
      const double time = JobStart() + second * kSecond;
      insert.Bind(1, DatePart(time)).Bind(2, TimePart(time)).Bind(3, value.value_or(second % 100)).Execute();
    }
    all.Commit();
  }
  void Fill(int first, int last) { Add(first, last, std::nullopt); }

  frmExtGraphForm& Open() {
    form = &host.Open<frmExtGraphForm>(
        ExternalAccess{session, platform, open, tools, [this](const LiveImport& edited) { kept.push_back(edited); },
                       [this](const LiveImport& table) {
                         if (printFails) throw RuntimeError(ErrorNumber::DiskFull);
                         printed.push_back(table);
                       }},
        live);
    form->resize(1100, 420);
    form->StartReading();
    return *form;
  }
  /// The next look at the table, to its end.
  void Poll() {
    clock.Advance(7000);
    clock.Advance(100);
  }
  /// Time for a page of the past to be read.
  void Settle() { clock.Advance(200); }

  template <class Widget>
  Widget& Find(const char* name) {
    return *form->findChild<Widget*>(QLatin1String(name));
  }
  QScrollBar& Bar() { return Find<QScrollBar>("VScroll1"); }
  QImage Plot() { return Find<QWidget>("Pic2").grab().toImage(); }
  std::string State() { return Find<QLabel>("lblState").text().toStdString(); }
  std::string Label(const char* name) {
    clock.Advance(40);
    return LabelText(*form, name);
  }
  int CountOf(QRgb colour) {
    const QImage plot = Plot();
    int count = 0;
    for (int y = 0; y < plot.height(); ++y)
      for (int x = 0; x < plot.width(); ++x) count += (plot.pixel(x, y) & 0xFFFFFF) == colour;
    return count;
  }

  std::string database = folder.File("rig 7.mdb");
  LiveImport live;
  JetTools tools;
  std::vector<LiveImport> kept, printed;
  bool printFails = false;
  WindowHost host{dialogs, EnglishWindows()};
  frmExtGraphForm* form = nullptr;
};

}  // namespace velk::test
