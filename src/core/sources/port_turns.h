#pragma once

#include <utility>

#include "platform/dialogs/dialogs.h"
#include "platform/ports/serial.h"

namespace velk {

class PortTurn;

/// Who may wait on the plain port. A wait on which a box came to stand can't go on until the box was answered, for
/// hours perhaps; then a later one may begin on top of it and take the port over. So one wait is live, and what lies
/// below a box has given up its port.
class PortTurns {
 public:
  PortTurns(SerialPort& port, const Dialogs& dialogs) : port_(port), dialogs_(dialogs) {}

  /// The latest wait goes on by itself: no box stands on it, or one that was answered already.
  bool IsTaken() const {
    const bool liesBelowABox = dialogs_.Standing() > boxesBelow_;
    return depth_ > 0 && (!liesBelowABox || dialogs_.TopIsAnswered());
  }
  /// How many are on the stack.
  int Depth() const { return depth_; }

 private:
  friend class PortTurn;

  SerialPort& port_;
  const Dialogs& dialogs_;
  const PortTurn* holder_ = nullptr;
  int depth_ = 0;
  int boxesBelow_ = 0;  ///< boxes that stood when the latest turn began
};

/// The plain port for one turn, as long as it is on the stack. Where a later turn takes the port over, the earlier one
/// is left with a port that is closed: what it had read so far is not joined to what comes later. So is a turn above a
/// box that has been answered: whoever showed the box, perhaps to end the program, waits for the turn to leave.
class PortTurn : public SerialPort {
 public:
  explicit PortTurn(PortTurns& turns)
      : turns_(turns), boxesBelow_(std::exchange(turns.boxesBelow_, turns.dialogs_.Standing())) {
    liesAboveOthers_ = turns_.depth_++ > 0;
    turns_.holder_ = this;
  }
  ~PortTurn() override {
    if (IsHeld()) turns_.holder_ = nullptr;
    --turns_.depth_;
    turns_.boxesBelow_ = boxesBelow_;
  }
  PortTurn(const PortTurn&) = delete;
  PortTurn& operator=(const PortTurn&) = delete;

  /// No other turn has taken the port over.
  bool IsHeld() const { return turns_.holder_ == this; }

  void Open(const SerialSettings& settings) override {
    if (IsHeld()) turns_.port_.Open(settings);
  }
  std::vector<PortSetting> Unsupported() const override { return turns_.port_.Unsupported(); }
  void Close() override {
    if (IsHeld()) turns_.port_.Close();
  }
  bool IsOpen() const override {
    const bool mustLeave = liesAboveOthers_ && turns_.dialogs_.TopIsAnswered();
    return IsHeld() && turns_.port_.IsOpen() && !mustLeave;
  }
  std::size_t BytesWaiting() const override { return IsHeld() ? turns_.port_.BytesWaiting() : 0; }
  std::string Read(std::size_t most) override { return IsHeld() ? turns_.port_.Read(most) : std::string(); }
  std::string Peek() const override { return IsHeld() ? turns_.port_.Peek() : std::string(); }
  void Write(std::string_view bytes) override {
    if (!IsHeld()) throw RuntimeError(ErrorNumber::PortNotOpen);
    turns_.port_.Write(bytes);
  }
  void ClearInput() override {
    if (IsHeld()) turns_.port_.ClearInput();
  }

 private:
  PortTurns& turns_;
  const int boxesBelow_;
  bool liesAboveOthers_ = false;
};

}  // namespace velk
