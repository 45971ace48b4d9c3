#pragma once

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

inline constexpr QRgb kRedDot = 0xFF0000, kGreenDot = 0x00FF00, kBlackDot = 0;

/// Whether a picture has a colour at a value of a scale from 0 to 100, give or take a pixel.
inline bool HasAt(const QImage& plot, double value, int y, QRgb colour) {
  const int x = static_cast<int>((966 + value / 100 * (plot.width() * 15.0 - 966)) / 15);
  for (int beside = -1; beside <= 1; ++beside)
    if ((plot.pixel(x + beside, y) & 0xFFFFFF) == colour) return true;
  return false;
}

/// The rectangle in which two pictures of one size differ.
inline QRect ChangedBetween(const QImage& a, const QImage& b) {
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
  ScreenRefresh refresh{platform.clock};
  GraphWindowsMdi windows{session, platform, EnglishWindows(), area, refresh, {}, &open};
};

}  // namespace velk::test
