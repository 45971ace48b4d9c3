#include "platform/dialogs/dialogs.h"

#include <utility>

#include "base/scope.h"

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
  ++boxes_;
  const OnLeaving answered([this] { --boxes_; });
  return show();
}

Answer Dialogs::Message(const MessageBox& box) {
  if (ending_) return WithoutAsking(box.buttons);
  return WithGateOpen([&] {
    return ShowMessage({InLanguage(box.text), InLanguage(box.title), box.buttons, box.icon, box.error, box.subject,
                        box.safeDefault, box.helpTopic});
  });
}

void Dialogs::Retell(const std::string& subject, const OperatorText& text) {
  ShowText(subject, InLanguage(text));
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
  return {InLanguage(question.title), InLanguage(question.filter), question.directory, question.name};
}

std::optional<std::string> Dialogs::Choose(const ListQuestion& question) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] {
    return ShowList({InLanguage(question.title), InLanguage(question.prompt), question.entries, question.mayEnter,
                     question.helpTopic});
  });
}

std::optional<std::int32_t> Dialogs::Colour(const OperatorText& title, std::int32_t initial) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] { return ShowColour(InLanguage(title), initial); });
}

std::optional<FontChoice> Dialogs::Font(const FontChoice& initial) {
  if (ending_) return std::nullopt;
  return WithGateOpen([&] { return ShowFont(initial); });
}

void Dialogs::Modal(const std::function<void()>& show) {
  if (ending_) return;
  WithGateOpen(show);
}

// --- Progress ---

Dialogs::Progress::Progress(Dialogs& dialogs, const OperatorText& title)
    : Progress(dialogs, dialogs.ending_ ? nullptr : dialogs.MakeProgress(dialogs.InLanguage(title))) {
}

Dialogs::Progress::Progress(Dialogs& dialogs, std::unique_ptr<ProgressBox> box)
    : dialogs_(dialogs), open_(dialogs.gate_, GateState::Open), box_(std::move(box)) {
  if (const auto first = std::exchange(dialogs_.beforeBox, nullptr)) first();
  if (box_) ++dialogs_.boxes_;
  ++dialogs_.longTasks_;
}

Dialogs::Progress::~Progress() {
  --dialogs_.longTasks_;
  if (box_) --dialogs_.boxes_;
}

void Dialogs::Progress::Appear() {
  if (box_) box_->Appear();
}

void Dialogs::Progress::Show(const OperatorText& doing, double share) {
  if (box_) box_->Show(dialogs_.InLanguage(doing), share);
}

bool Dialogs::Progress::IsCancelled() const {
  return dialogs_.ending_ || (box_ && box_->IsCancelled());
}

// --- The end ---

void Dialogs::SetEnding() {
  ending_ = true;
  CloseStanding();
}

Answer Dialogs::ProcedureError(const std::string& procedure, const MessageBox& box) {
  if (!standing_.insert(procedure).second) return Answer::Cancel;
  const OnLeaving answered([&] { standing_.erase(procedure); });
  return Message(box);
}

}  // namespace velk
