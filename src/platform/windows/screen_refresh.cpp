#include "platform/windows/screen_refresh.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace velk {

namespace {

constexpr int kRefreshMs = 34;

}  // namespace

struct ScreenRefresh::Round {
  explicit Round(Clock& ticking) : clock(ticking), timer(ticking.MakeQuickTimer()) {}

  void Begin() {
    waits = true;
    timer->SetInterval(static_cast<int>(std::max<std::int64_t>(0, next - clock.Ticks())));
    timer->SetEnabled(true);
  }

  void Show() {
    next = clock.Ticks() + kRefreshMs;
    timer->SetEnabled(false);
    try {
      ShowParts();
    } catch (...) {
      Begin();  // for what has not been shown
      throw;
    }
  }

  void ShowParts() {
    if (ahead) ahead();
    waits = false;
    WindowStrips strips;
    for (Part* const part : parts)
      if (std::exchange(part->asked_, false)) part->show_(strips);
  }

  Clock& clock;
  std::unique_ptr<Timer> timer;
  std::int64_t next = 0;  ///< the ticks from which on the screen may follow again
  std::function<void()> ahead;
  bool waits = false;
  std::vector<Part*> parts;
};

ScreenRefresh::ScreenRefresh(Clock& clock) : round_(std::make_shared<Round>(clock)) {
  round_->timer->SetHandler([round = round_.get()] { round->Show(); });
}

/// Parts that outlive it keep the round, and whoever looked ahead of it may be gone.
ScreenRefresh::~ScreenRefresh() {
  round_->ahead = nullptr;
}

void ScreenRefresh::Ahead(std::function<void()> look) {
  round_->ahead = std::move(look);
}

ScreenRefresh::Part::Part(const ScreenRefresh& refresh, Show show) : round_(refresh.round_), show_(std::move(show)) {
  round_->parts.push_back(this);
}

ScreenRefresh::Part::~Part() {
  std::erase(round_->parts, this);
}

void ScreenRefresh::Part::Wait() {
  asked_ = true;
  if (!round_->waits) round_->Begin();
}

void ScreenRefresh::Part::ShowDue() {
  if (round_->waits && round_->clock.Ticks() >= round_->next) round_->Show();
}

void ScreenRefresh::Part::Stop() {
  stopped_ = true;
  asked_ = false;
}

}  // namespace velk
