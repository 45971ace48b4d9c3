#pragma once

#include <functional>
#include <memory>

#include "platform/loop/clock.h"
#include "platform/windows/window_strips.h"

namespace velk {

/// When the screen follows what has changed: as soon as the event is over that changed it, or within it where the event
/// asks for that (Part::ShowDue), but 34 ms behind the time before at the earliest, so at most 30 times a second; then
/// all that has changed by then at once. A job of a few samples a second so wakes the machine once a sample. One timer
/// for all, since each would wake it by itself. Behind an error the screen follows in its turn.
class ScreenRefresh {
 private:
  struct Round;

 public:
  explicit ScreenRefresh(Clock& clock);
  ~ScreenRefresh();
  ScreenRefresh(const ScreenRefresh&) = delete;
  ScreenRefresh& operator=(const ScreenRefresh&) = delete;

  /// Called ahead of each time, as long as this lives: what changes a part by then is shown along with the others,
  /// since to wake up and paint for it alone costs more than its work.
  void Ahead(std::function<void()> look);

  /// Something on the screen. It may outlive the ScreenRefresh, as a window does that is deleted later, but not the
  /// clock.
  class Part {
   public:
    /// Brings what has changed to the screen: as strips, or by QWidget::update. Runs no events.
    using Show = std::function<void(WindowStrips&)>;
    Part(const ScreenRefresh& refresh, Show show);
    ~Part();
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;

    /// It has changed.
    void Ask() {
      if (!asked_ && !stopped_) Wait();
    }
    /// Shows what has changed of all parts, if the screen may follow by now. Events that run next paint what is left to
    /// the toolkit.
    void ShowDue();
    /// It is on its way out: nothing of it is shown any more.
    void Stop();

   private:
    friend struct Round;
    void Wait();

    std::shared_ptr<Round> round_;
    Show show_;
    bool asked_ = false;
    bool stopped_ = false;
  };

 private:
  std::shared_ptr<Round> round_;
};

}  // namespace velk
