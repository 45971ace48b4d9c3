#pragma once

#include "instruments/link/link_lease.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// What who speaks to an own unit works with.
struct UnitAccess {
  Session& session;
  Platform platform;
  Link& link;
  MainTimers& timers;
};

/// A conversation with the board of an own unit: nobody else is on the port. At its end, whatever way it is left, the
/// unit is sent to run mode where it can be reached, and the link is as it was.
class UnitTalk {
 public:
  /// Opens the port; raises what keeps it from opening. `cancelled` ends a wait once it is set; it begins clear.
  UnitTalk(const UnitAccess& unit, bool& cancelled);
  ~UnitTalk();
  UnitTalk(const UnitTalk&) = delete;
  UnitTalk& operator=(const UnitTalk&) = delete;

  CAdc12nCom& Board() const { return link_.Board; }

 private:
  Link& link_;
  LinkLease lease_;
};

/// Sends what was set and raises the error of a command that the board doesn't take. Where it fails, some of it may
/// have reached the board: its table is read ahead of the next send.
void SaveOrForget(CAdc12nCom& board);

}  // namespace velk
