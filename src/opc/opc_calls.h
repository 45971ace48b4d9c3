#pragma once

#include <functional>
#include <string_view>

#include "platform/dialogs/dialogs.h"
#include "platform/loop/clock.h"
#include "platform/opc/opc_transport.h"

namespace velk {

/// How the OPC objects call: each call is waited for, events run meanwhile, and each failure comes to one box.
class OpcCalls {
 public:
  OpcCalls(OpcTransport& transport, Clock& clock, Dialogs& dialogs)
      : transport_(transport), clock_(clock), dialogs_(dialogs) {}
  OpcCalls(const OpcCalls&) = delete;
  OpcCalls& operator=(const OpcCalls&) = delete;

  OpcTransport& Transport() { return transport_; }

  /// Begins a call and waits for what came of it: kOpcMilliseconds at most, then kOpcTimeout; kOpcCancelled behind
  /// Cancel and at the end of the program. The window below takes nothing else meanwhile; a box with Cancel comes up
  /// behind 300 ms. `begin` is handed what takes the answer. An answer that comes when nobody
  /// waits for it goes to `late`, which undoes what the call did.
  OpcStatus Wait(const std::function<void(OpcDone)>& begin, OpcDone late = {});

  bool IsWaiting() const { return waiting_ > 0; }
  /// How many calls were cancelled so far.
  int Cancelled() const { return cancelled_; }
  /// While one stands, failures show no box: whoever has made it tells of them in his own way.
  class Quiet {
   public:
    explicit Quiet(OpcCalls& calls) : calls_(calls) { ++calls_.quiet_; }
    ~Quiet() { --calls_.quiet_; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    OpcCalls& calls_;
  };

  /// Ends the waits that stand.
  void Cancel() { ++cancels_; }

  /// Shows the box of a failed call; `name` is the function's, and is not translated.
  void DisplayOPC_COM_ErrorValue(std::string_view name, OpcStatus number);
  /// Whether a call succeeded; shows the box where it didn't.
  bool Succeeded(std::string_view name, OpcStatus status);

 private:
  OpcTransport& transport_;
  Clock& clock_;
  Dialogs& dialogs_;
  int waiting_ = 0;
  int cancels_ = 0;
  int quiet_ = 0;
  int cancelled_ = 0;
};

}  // namespace velk
