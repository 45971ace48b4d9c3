#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/sample_road.h"
#include "core/sources/sample_source.h"
#include "model/main_timers.h"
#include "platform/pages/page_fetch.h"

namespace velk {

/// The page of a networked unit, fetched at each tick of its timer from the start of the program on. Samples come of it
/// only in a running job.
class PageSource : public SampleSource {
 public:
  PageSource(const Session& session, const Platform& platform, MainTimers& timers, SampleRoad& road,
             std::unique_ptr<PageFetch> pages);

  /// One page is fetched.
  void Check() override;
  bool IsRunning() const override { return passing_ > 0; }

  /// Switches the timer of the session's unit on, and any other off.
  void FollowProtocol();
  /// At the end of the program: the page under way is given up and no other asked for.
  void ShutDown();

 private:
  /// A form of page, and the timer's procedure that fetches it.
  struct Form {
    Timer& timer;
    Report report;
    std::string (*lineOf)(const Session& session, std::string_view page, double now);
  };

  void FetchForCheck();
  void Tick(const Form& form);
  void Fetch(const Form& form);
  void Pass(const Form& form, const FetchedPage& page);

  const Session& session_;
  Platform platform_;
  Timer& timer4_;
  Timer& timer5_;
  SampleRoad& road_;
  std::unique_ptr<PageFetch> pages_;
  const Form table_;   ///< of Timer4: a networked recorder's page, one table
  const Form values_;  ///< of Timer5: a networked unit's page, named cells or its operator panel's
  std::int64_t nextFetch_ = 0;
  std::int64_t pagesCame_ = 0;
  int passing_ = 0;  ///< pages on the stack, with their sample or the box of their fault
  bool shutDown_ = false;
};

}  // namespace velk
