#include "opc/opc_calls.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/scope.h"
#include "opc/texts.h"

namespace velk {

namespace {

/// One wait, which its answer may outlive.
struct Waiting {
  std::optional<OpcStatus> answer;
  bool isOver = false;
};

std::string HexText(OpcStatus number) {
  char text[9];
  std::snprintf(text, sizeof text, "%X", number);
  return text;
}

}  // namespace

OpcStatus OpcCalls::Wait(const std::function<void(OpcDone)>& begin, OpcDone late) {
  const auto state = std::make_shared<Waiting>();
  const int cancels = cancels_;
  const std::int64_t deadline = clock_.Ticks() + kOpcMilliseconds;
  ++waiting_;
  const OnLeaving done([&] {
    --waiting_;
    state->isOver = true;
  });
  begin([state, late = std::move(late)](OpcStatus status) {
    if (!state->isOver) {
      state->answer = status;
    } else if (late) {
      late(status);
    }
  });
  while (!state->answer) {
    if (cancels != cancels_ || dialogs_.IsEnding()) return kOpcCancelled;
    if (clock_.Ticks() >= deadline) return kOpcTimeout;
    clock_.WaitRound();
  }
  return *state->answer;
}

void OpcCalls::DisplayOPC_COM_ErrorValue(std::string_view name, OpcStatus number) {
  dialogs_.Message({.text = text::OpcFunctionBefore + OperatorText(std::string(name)) + text::OpcFunctionNumber +
                            std::to_string(static_cast<std::int32_t>(number)) + text::OpcFunctionHex + HexText(number),
                    .title = text::OpcFunctionTitle,
                    .icon = BoxIcon::Exclamation});
}

bool OpcCalls::Succeeded(std::string_view name, OpcStatus status) {
  if (IsGood(status)) return true;
  // Whoever cancelled knows of it.
  if (status != kOpcCancelled) DisplayOPC_COM_ErrorValue(name, status);
  return false;
}

}  // namespace velk
