#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

#include "graphs/curve_entry.h"
#include "graphs/header_zones.h"
#include "graphs/windows/chart_view.h"
#include "i18n/windows/window_host.h"

namespace velk {

/// The curves that an editor works on. Each goes by an identity of its own while a question about it stands; events run
/// meanwhile, and what is asked may have gone when the answer comes. All but `show` are called then too.
struct EditedCurves {
  std::function<int(int slot)> idOf;  ///< 0 where the slot is empty
  std::function<Parameter(int id)> definition;
  std::function<void(int id, const Parameter& edited)> store;
  /// Asks by a window of its own, on the right button; whether something was entered.
  std::function<bool(int id)> editProperties;
  /// The chart is shown anew.
  std::function<void()> show;
};

/// Edits the curves of one chart where they stand: by clicks on its header band and on its labels. It lives as long as
/// the window of the chart, whose child it is.
class CurveEditor : public QObject {
  Q_OBJECT

 public:
  /// All outlive the window.
  CurveEditor(QWidget& window, ChartView& view, WindowHost& host, EditedCurves curves);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Tells what a click would change where the mouse rests; nothing, and false, where that is nothing.
  bool Picture1_MouseMove(const QPoint& point, const QPoint& onScreen);
  /// A part of the chart that a mouse button acts on; none where `row` is 0.
  struct Part {
    HeaderZone zone = HeaderZone::None;  ///< on the header band
    int column = 0;                      ///< else of a label: 1 its name, 2 its value, 3 its units
    int row = 0;                         ///< of the curve, from 1
    bool operator==(const Part&) const = default;
  };
  Part PartAt(bool isHeader, const QPoint& point) const;
  void Click(const Part& part, Qt::MouseButton button);
  void Picture1_Click(const Part& part);
  void Label_Click(const Part& label);
  void Label_MouseDown(const Part& label);
  void Edit(const char* procedure, int slot, CurveQuestion ask);
  /// Runs `ask` with the identity of the curve, and shows what it has changed; false leaves all as it is.
  void Change(const char* procedure, int slot, const std::function<bool(int id)>& ask);

  ChartView& view_;
  WindowHost& host_;
  const EditedCurves curves_;
  Part pressed_;  ///< where the button went down that is held
};

}  // namespace velk
