#pragma once

#include <functional>

namespace velk {

/// Whether lines that wait in a driver's queue may be delivered now. It is shut while a line is being worked on, so
/// that the yields of a sample never start the next one, and opened again by whatever may stand for long on top of a
/// sample: a box, or a wait for an instrument.
class Gate {
 public:
  bool IsOpen() const { return open_; }

  /// Called each time the gate goes from shut to open, by the driver that has lines waiting. It posts the
  /// delivery and throws nothing: scopes end in here.
  std::function<void()> onOpened;

 private:
  friend class GateState;
  bool open_ = true;
};

/// Sets the gate for a scope and puts it back at the end.
class GateState {
 public:
  enum State { Shut, Open };
  GateState(Gate& gate, State state) : gate_(gate), before_(gate.open_) { Set(state == Open); }
  ~GateState() { Set(before_); }
  GateState(const GateState&) = delete;
  GateState& operator=(const GateState&) = delete;

 private:
  void Set(bool open) {
    const bool opened = open && !gate_.open_;
    gate_.open_ = open;
    if (opened && gate_.onOpened) gate_.onOpened();
  }

  Gate& gate_;
  bool before_;
};

}  // namespace velk
