#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

#include "graphs/curve_entry.h"
#include "graphs/windows/graph_form_new.h"
#include "i18n/windows/window_host.h"

namespace velk {

/// What calibrates a parameter in its instrument; empty where nothing does.
using CalibrationOf = std::function<std::function<void()>(int parameter)>;

/// Edits the curves of one graph window where they stand: by clicks on its header band and on its labels. It lives as
/// long as the window, whose child it is.
class CurveEditor : public QObject {
  Q_OBJECT

 public:
  /// All outlive the window. `changed` is called behind each edit, once it has reached the configuration;
  /// `calibrationOf` gives what calibrates a parameter where it stands, or nothing.
  CurveEditor(GraphFormNew& form, WindowHost& host, Session& session, std::function<void()> changed,
              CalibrationOf calibrationOf);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Tells what a click would change where the mouse rests; nothing, and false, where that is nothing.
  bool Picture1_MouseMove(const QPoint& point, const QPoint& onScreen);
  void Picture1_Click(const QPoint& point);
  void Label_Click(const LabelRows::Place& label);
  /// The properties of a curve, but not while data come in.
  void Label_MouseDown(const LabelRows::Place& label);
  void Edit(const char* procedure, int slot, CurveQuestion ask);
  /// Runs `ask` with the number of the curve's parameter, and shows what it has changed; false leaves all as it is.
  void Change(const char* procedure, int slot, const std::function<bool(int parameter)>& ask);

  GraphFormNew& form_;
  WindowHost& host_;
  Session& session_;
  const std::function<void()> changed_;
  const CalibrationOf calibrationOf_;
};

}  // namespace velk
