#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "model/session.h"
#include "platform/dialogs/procedure.h"
#include "platform/loop/clock.h"

namespace velk {

/// A fault that comes with each sample would come with a box each time. One that was answered with Cancel comes again
/// for the same error and channel behind ten seconds at the earliest; meanwhile the data panel names it.
class SampleErrors : public BoxPause {
 public:
  SampleErrors(Session& session, const Clock& clock) : session_(session), clock_(clock) {}

  bool StaysAway(const Failure& failure) override;
  void WasAnswered(const Failure& failure, Answer answer) override;

  /// A sample begins, or comes to its end: where nothing has failed in between, the panel names nothing any more. One
  /// that an error has left has no end here: the panel names it.
  void BeginSample() { failed_ = false; }
  void EndSample();

 private:
  std::string KeyOf(const Failure& failure) const;
  void Name(const Failure& failure);

  Session& session_;
  const Clock& clock_;
  std::map<std::string, std::int64_t> restsUntil_;  ///< ticks, by error and channel
  bool failed_ = false;
};

}  // namespace velk
