#pragma once

#include <QAction>
#include <QToolBar>
#include <functional>
#include <string_view>

namespace velk {

/// Toolbar1 of a graph window, with the keys "AddComment", "Print", "Copy", "Paste", "Remove" and "ReadValue". A key is
/// seen once it has work; in a narrow window the captions get narrower letters. All but Print are off until the job
/// runs (Release); what else holds one back, SetEnabled tells.
class GraphToolbar : public QToolBar {
  Q_OBJECT

 public:
  /// Higher it would cover the chart: its place is what a window's frame leaves of the room above Picture1.
  static constexpr int kMostHeight = 40;

  explicit GraphToolbar(QWidget* parent);

  /// Gives a key its work. Raises std::logic_error for a key that isn't there.
  void Bind(std::string_view key, std::function<void()> work);
  /// The job runs: keys that nothing else holds back are on.
  void Release();
  void SetEnabled(std::string_view key, bool enabled);
  /// Shows a key as pressed, for one that stays on until it is pressed again.
  void SetPressed(std::string_view key, bool pressed);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QAction& Key(std::string_view key) const;
  void FitCaptions();
  void Update();

  bool released_ = false;
};

}  // namespace velk
