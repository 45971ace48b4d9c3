#include "instruments/unit/unit_talk.h"

#include "base/scope.h"

namespace velk {

UnitTalk::UnitTalk(const UnitAccess& unit, bool& cancelled) : link_(unit.link), lease_(unit.link, unit.timers) {
  try {
    link_.SetUpBoard();
  } catch (const RuntimeError&) {
    lease_.LossIsTold();
    throw;
  }
  cancelled = false;
  link_.Board.isCancelled = [&cancelled] { return cancelled; };
}

UnitTalk::~UnitTalk() {
  link_.Board.isCancelled = nullptr;
  if (link_.Board.LossRaised()) lease_.LossIsTold();
  if (link_.Board.MayBeInTradMode()) link_.Board.BringToRunMode();
  link_.Board.CloseComPort();
}

void SaveOrForget(CAdc12nCom& board) {
  bool isSent = false;
  const OnLeaving done([&] {
    if (!isSent) board.ForgetChannels();
  });
  if (board.SaveDataToBoard() != 0) throw BoardError(board.RefusedCommand());
  isSent = true;
}

}  // namespace velk
