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

constexpr std::int64_t kAppearMilliseconds = 300;
constexpr std::int64_t kQuestionMilliseconds = 200;  ///< no round without a box takes so long

std::string HexText(OpcStatus number) {
  char text[9];
  std::snprintf(text, sizeof text, "%X", number);
  return text;
}

}  // namespace

OpcStatus OpcCalls::Wait(const std::function<void(OpcDone)>& begin, OpcDone late) {
  const auto state = std::make_shared<Waiting>();
  const int cancels = cancels_;
  std::int64_t deadline = clock_.Ticks() + kOpcMilliseconds;
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
  if (state->answer) return *state->answer;
  Dialogs::Progress box(dialogs_, text::OpcAsking);
  bool hasAppeared = false;
  while (!state->answer) {
    const std::int64_t left = deadline - clock_.Ticks();
    if (cancels != cancels_ || box.IsCancelled()) return kOpcCancelled;
    if (left <= 0) return kOpcTimeout;
    if (!hasAppeared && left <= kOpcMilliseconds - kAppearMilliseconds) {
      hasAppeared = true;
      box.Show(text::OpcWaits, -1);
      box.Appear();
    }
    const std::int64_t before = clock_.Ticks();
    clock_.WaitRound();
    // A question that the server gives rise to is no time of the server's.
    const std::int64_t spent = clock_.Ticks() - before;
    if (spent > kQuestionMilliseconds) deadline += spent;
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
  if (status == kOpcCancelled) ++cancelled_;
  // Whoever cancelled knows of it.
  if (status != kOpcCancelled && quiet_ == 0) DisplayOPC_COM_ErrorValue(name, status);
  return false;
}

}  // namespace velk
