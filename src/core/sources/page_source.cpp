#include "core/sources/page_source.h"

#include <optional>
#include <utility>

#include "base/scope.h"
#include "instruments/link/networked_unit.h"
#include "instruments/table/protocols.h"
#include "model/status.h"
#include "model/texts.h"

namespace velk {

namespace {

constexpr int kPageMs = 500;
/// Behind a page that could not be fetched the operator is left alone for so long.
constexpr std::int64_t kRestAfterCancelMs = 10'000;

}  // namespace

PageSource::PageSource(const Session& session, const Platform& platform, MainTimers& timers, SampleRoad& road,
                       std::unique_ptr<PageFetch> pages)
    : session_(session),
      platform_(platform),
      timer4_(*timers.Timer4),
      timer5_(*timers.Timer5),
      road_(road),
      pages_(std::move(pages)),
      table_{timer4_,
             {platform.dialogs, "Timer4_Timer"},
             [](const Session& unit, std::string_view page, double) { return LineOfTablePage(unit, page); }},
      values_{timer5_, {platform.dialogs, "Timer5_Timer"}, LineOfValuesPage} {
  timer4_.SetInterval(kPageMs);
  timer4_.SetHandler([this] { Tick(table_); });
  timer5_.SetInterval(kPageMs);
  timer5_.SetHandler([this] { Tick(values_); });
}

void PageSource::FollowProtocol() {
  if (shutDown_) return;
  timer4_.SetEnabled(ProtocolOf(session_).pageTimer == PageTimer::Timer4);
  timer5_.SetEnabled(ProtocolOf(session_).pageTimer == PageTimer::Timer5);
}

void PageSource::ShutDown() {
  shutDown_ = true;
  timer4_.SetEnabled(false);
  timer5_.SetEnabled(false);
  pages_->Cancel();
}

void PageSource::Check() {
  RunProcedure({platform_.dialogs, "mnuAcquireConnect_Click"},
               [&](const Statements& run) { run([&] { FetchForCheck(); }); });
}

/// A page of its own, away from one that a timer is fetching. A Retry in the box of a timer's page takes the fetch
/// over: then it is begun again.
void PageSource::FetchForCheck() {
  std::optional<FetchedPage> fetched;
  const OnLeaving done([&] {
    if (!fetched) pages_->Cancel();
  });
  bool begun = false;
  while (!fetched && !session_.StopRequested && !shutDown_) {
    if (!std::exchange(begun, true) || !pages_->IsUnderWay())
      pages_->Begin(UnitPageAddress(session_), [&fetched](const FetchedPage& page) { fetched = page; });
    platform_.clock.WaitRound();
  }
  if (fetched) TextOfPage(*fetched);
}

void PageSource::Tick(const Form& form) {
  if (form.timer.Enabled() && !pages_->IsUnderWay() && platform_.clock.Ticks() >= nextFetch_) Fetch(form);
}

/// A page that comes while its timer rests is nobody's: the address may be in the dialog that is open.
void PageSource::Fetch(const Form& form) {
  pages_->Begin(UnitPageAddress(session_), [this, &form](const FetchedPage& page) {
    if (form.timer.Enabled()) Pass(form, page);
  });
}

/// Pages go on behind the box of a fault, since nobody may be there to answer it. Its Retry asks for one at once.
void PageSource::Pass(const Form& form, const FetchedPage& page) {
  ++passing_;
  const OnLeaving done([this] { --passing_; });
  const std::int64_t cameBefore = pagesCame_;
  std::optional<std::string> line;
  bool retried = false;
  const bool passed = RunProcedure(form.report, [&](const Statements& run) {
    run([&] {
      if (std::exchange(retried, true)) return Fetch(form);
      line = form.lineOf(session_, TextOfPage(page), platform_.clock.Now());
    });
  });
  const bool faultStands = !passed && pagesCame_ == cameBefore;
  if (faultStands) nextFetch_ = platform_.clock.Ticks() + kRestAfterCancelMs;
  if (!line) return;
  ++pagesCame_;
  if (StatusIs(session_, text::StatusAcquiringData)) road_.ProcessLine(*line);
}

}  // namespace velk
