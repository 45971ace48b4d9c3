#include "platform/dialogs/dialogs.h"

#include <utility>

namespace velk {

namespace {

Answer WithoutAsking(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return Answer::Ok;
    case Buttons::YesNo:
      return Answer::No;
    case Buttons::RetryCancel:
      break;
  }
  return Answer::Cancel;
}

}  // namespace

template <class Show>
auto Dialogs::WithGateOpen(Show&& show) {
  if (const auto first = std::exchange(beforeBox, nullptr)) first();
  const GateState open(gate_, GateState::Open);
  struct Counted {
    explicit Counted(int& boxes) : count(boxes) { ++count; }
    ~Counted() { --count; }
    int& count;
  } const counted(boxes_);
  return show();
}

Answer Dialogs::Message(const MessageBox& box) {
  if (ending_) return WithoutAsking(box.buttons);
  return WithGateOpen([&] {
    return ShowMessage({InLanguage(box.text), InLanguage(box.title), box.buttons, box.icon, box.error});
  });
}

std::optional<std::string> Dialogs::Input(const OperatorText& prompt, const OperatorText& title,
                                          const std::string& preset) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] { return ShowInput(InLanguage(prompt), InLanguage(title), preset); });
}

std::optional<std::string> Dialogs::OpenFile(const FileQuestion& question) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] { return ShowOpenFile(Shown(question)); });
}

std::optional<std::string> Dialogs::SaveFile(const FileQuestion& question) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] { return ShowSaveFile(Shown(question)); });
}

ShownFileQuestion Dialogs::Shown(const FileQuestion& question) const {
  return {InLanguage(question.title), InLanguage(question.filter), question.directory};
}

void Dialogs::Modal(const std::function<void()>& show) {
  if (ending_) return;
  WithGateOpen(show);
}

void Dialogs::SetEnding() {
  ending_ = true;
  CloseStanding();
}

Answer Dialogs::ProcedureError(const std::string& procedure, const MessageBox& box) {
  if (!standing_.insert(procedure).second) return Answer::Cancel;
  struct Removal {
    std::set<std::string>& standing;
    const std::string& procedure;
    ~Removal() { standing.erase(procedure); }
  } const removal{standing_, procedure};
  return Message(box);
}

}  // namespace velk
