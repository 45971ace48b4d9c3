#include "instruments/calibration/reset_value.h"

#include "base/number_entry.h"
#include "base/numbers.h"
#include "base/text.h"
#include "instruments/texts.h"
#include "model/help_topics.h"
#include "model/parameter_questions.h"
#include "model/texts.h"
#include "platform/dialogs/procedure.h"

namespace velk {

namespace {

constexpr int kTryAgainMs = 20;

}  // namespace

std::string ResetText(const std::string& command, const std::string& number) {
  return command.substr(0, command.size() - 1) + number + command.back();
}

ResetValue::ResetValue(Session& session, const Platform& platform, Link& link, std::function<bool()> isPortInUse)
    : session_(session),
      platform_(platform),
      link_(link),
      isPortInUse_(std::move(isPortInUse)),
      tryAgain_(platform.clock.MakeTimer()) {
  tryAgain_->SetInterval(kTryAgainMs);
  tryAgain_->SetHandler([this] { SendWaiting(); });
}

void ResetValue::mnuToolsReset_Click() {
  RunProcedure({platform_.dialogs, "mnuToolsReset_Click"}, [&](const Statements&) {
    std::vector<std::string> names;
    for (int i = 1; i <= session_.NumberOfParameters; ++i) names.push_back(session_.Parameters[i].name);
    const auto parameter =
        AskWhich(platform_.dialogs, text::ResetValueTitle, text::ResetValuePrompt, names, topic::Parameters);
    if (!parameter) return;
    const std::string command = session_.Parameters[*parameter].ResetCommand;
    if (command.empty()) {
      platform_.dialogs.Message({text::NoResetCommand, text::ResetValueTitle, Buttons::Ok, BoxIcon::Exclamation});
      return;
    }
    const std::string number = AskNumber();
    if (number.empty()) return;
    waiting_.push_back(ResetText(command, number));
    SendWaiting();
  });
}

/// As it was typed, with a point for its comma: some instruments want their count of digits.
std::string ResetValue::AskNumber() const {
  std::string preset;
  for (;;) {
    const auto reply = platform_.dialogs.Input(text::EnterNewValue, text::ResettingTitle, preset);
    if (!reply || Trim(*reply).empty()) return {};
    const std::string number = Trim(WithDecimalPoint(*reply));
    if (IsNumeric(number)) return number;
    const MessageText& fault = IsUnclearNumber(*reply) ? text::NumberUnclear : text::NotANumber;
    platform_.dialogs.Message({fault, text::ResettingTitle, Buttons::Ok, BoxIcon::Exclamation});
    preset = *reply;
  }
}

void ResetValue::SendWaiting() {
  tryAgain_->SetEnabled(false);
  if (waiting_.empty()) return;
  if (isPortInUse_()) return tryAgain_->SetEnabled(true);
  const std::string command = std::move(waiting_.front());
  waiting_.pop_front();
  RunProcedure({platform_.dialogs, "mnuToolsReset_Click"}, [&](const Statements& run) {
    run([&] {
      if (!link_.MSComm1->IsOpen()) throw RuntimeError(ErrorNumber::PortNotOpen);
      link_.MSComm1->Write(command);
    });
  });
  if (!waiting_.empty()) tryAgain_->SetEnabled(true);
}

}  // namespace velk
