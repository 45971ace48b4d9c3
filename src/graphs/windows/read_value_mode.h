#pragma once

#include <QEvent>
#include <QObject>
#include <functional>
#include <optional>
#include <string>

#include "graphs/chart_measures.h"
#include "graphs/windows/graph_history.h"

namespace velk {

/// Read Value of a graph window: while it is on, the caption shows the logged value of one curve at the time under the
/// mouse.
class ReadValueMode : public QObject {
  Q_OBJECT

 public:
  /// `caption` shows a text as the window's caption, or gives it its own back.
  using Caption = std::function<void(const std::optional<std::string>& text)>;

  ReadValueMode(const Session& session, const Platform& platform, const ParameterCurves& curves,
                const GraphHistory& history, ChartView& view, GraphHistory::Run run, Caption caption);

  bool IsOn() const { return parameter_ != 0; }
  /// Begins it, asking which curve where there are several; ends it where it is on.
  void Press();
  void End();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int ChooseCurve() const;
  /// Where the curve stands in the window by now; 0: it has left it.
  int Slot() const;
  std::string TextAt(double y) const;

  const Session& session_;
  Platform platform_;
  const ParameterCurves& curves_;
  const GraphHistory& history_;
  ChartView& view_;
  const ChartMeasures measures_;
  GraphHistory::Run run_;
  Caption caption_;
  int parameter_ = 0;  ///< of the curve; 0: off
};

}  // namespace velk
