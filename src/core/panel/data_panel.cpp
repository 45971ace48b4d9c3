#include "core/panel/data_panel.h"

#include <algorithm>
#include <utility>

#include "model/graph_map.h"
#include "model/graph_window.h"
#include "model/status.h"
#include "model/texts.h"
#include "platform/files/disk_room.h"

namespace velk {

namespace {

constexpr int kLookMs = 1000;
/// While nothing is acquired there is less to tell, and each look wakes a machine that rests.
constexpr int kRestMs = 2000;
/// Samples that come once a second are a little late at times.
constexpr int kWithinMs = 100;
constexpr std::int64_t kToolTipMs = 5000;
/// The rate is that of the last ten seconds; of five samples where they come slowly.
constexpr std::int64_t kRateWindowMs = 10'000;

LogFileRoom RoomOf(const std::string& path) {
  double bytes = 0;
  for (const char* part : {"", "-wal", "-shm"}) bytes += FileBytes(path + part);
  return {path, bytes, FreeBytes(path)};
}

}  // namespace

DataPanel::DataPanel(Session& session, const Platform& platform, MainView& view, const Recorder& recorder, Link& link)
    : session_(session),
      platform_(platform),
      view_(view),
      recorder_(recorder),
      link_(link),
      timer_(platform.clock.MakeTimer()) {
  timer_->SetHandler([this] {
    timer_->SetInterval(StatusIs(session_, text::StatusAcquiringData) ? kLookMs : kRestMs);
    Look();
  });
}

void DataPanel::FollowJob(bool stands) {
  timer_->SetInterval(kLookMs);
  timer_->SetEnabled(stands);
  Look();
}

void DataPanel::FollowAcquiring() {
  timer_->SetInterval(kLookMs);
  Look();
}

void DataPanel::LookAlong() {
  if (!timer_->Enabled()) return;
  timer_->SetInterval(kLookMs + kWithinMs);
  if (platform_.clock.Ticks() >= nextLook_ - kWithinMs) Look();
}

void DataPanel::Look() {
  nextLook_ = platform_.clock.Ticks() + kLookMs;
  const DataState& data = session_.Data;
  const std::int64_t window = std::max(kRateWindowMs, SilenceMs(session_));
  if (!StatusIs(session_, text::StatusAcquiringData)) rate_.Restart(), rowRate_.Restart();
  rate_.Note(data.samples, data.lastSample, window);
  rowRate_.Note(data.rows, data.lastRow, window);
  ShowWords(WordsOfData(session_, platform_.clock.Ticks(), rate_.PerSecond()));
  ShowRecording();
}

void DataPanel::ShowWords(const DataWords& words) {
  const bool jobRuns = !words.text.IsEmpty();
  if (std::exchange(jobRuns_, jobRuns) || jobRuns) {
    // Windows may have been made since the last look.
    ForEachGraphWindow(session_, [&](GraphWindow& window) { window.ShowValuesStale(words.stale); });
    link_.ShowSilence(words.stale && session_.Data.pausedSince == 0 && IsSilent(session_, platform_.clock.Ticks()));
  }
  std::string text = words.text.English();
  if (text == shown_ && words.warns == warned_) return;
  view_.ShowData(words.text, words.warns);
  shown_ = std::move(text);
  warned_ = words.warns;
}

void DataPanel::ShowRecording() {
  OperatorText text;
  if (recorder_.IsRecording()) {
    text = RecordingText(session_, session_.LogFileInUse, platform_.clock.Now());
    if (recording_.empty() || platform_.clock.Ticks() >= nextToolTip_) {
      toolTip_ = RecordingToolTip(session_, RoomOf(session_.LogFileInUse), rowRate_.PerSecond());
      nextToolTip_ = platform_.clock.Ticks() + kToolTipMs;
    }
  }
  std::string shown = text.English();
  if (shown == recording_) return;
  view_.ShowRecording(text, toolTip_);
  recording_ = std::move(shown);
}

}  // namespace velk
