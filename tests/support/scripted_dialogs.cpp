#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace velk::test {

ScriptedDialogs::~ScriptedDialogs() {
  for (const Foreseen& left : foreseen_) ADD_FAILURE() << "a box that never came: " << left.text;
}

void ScriptedDialogs::Expect(const std::string& text, Answer answer, std::function<void()> while_) {
  foreseen_.push_back({Kind::Message, text, answer, std::nullopt, std::move(while_)});
}

void ScriptedDialogs::ExpectInput(const std::string& prompt, std::optional<std::string> reply) {
  foreseen_.push_back({Kind::Input, prompt, Answer::Ok, std::move(reply), {}});
}

void ScriptedDialogs::ExpectOpenFile(std::optional<std::string> path) {
  foreseen_.push_back({Kind::Open, "", Answer::Ok, std::move(path), {}});
}

void ScriptedDialogs::ExpectSaveFile(std::optional<std::string> path, std::function<void()> while_) {
  foreseen_.push_back({Kind::File, "", Answer::Ok, std::move(path), std::move(while_)});
}

ScriptedDialogs::Foreseen ScriptedDialogs::Take(Kind kind, const std::string& text) {
  if (foreseen_.empty()) {
    ADD_FAILURE() << "a box that was not foreseen: " << text;
    return {.kind = kind, .text = text, .answer = Answer::Cancel, .reply = {}, .while_ = {}};
  }
  Foreseen next = std::move(foreseen_.front());
  foreseen_.pop_front();
  EXPECT_EQ(next.kind, kind) << text;
  EXPECT_NE(text.find(next.text), std::string::npos) << "box: " << text << "\nforeseen: " << next.text;
  return next;
}

Answer ScriptedDialogs::ShowMessage(const ShownMessage& box) {
  shown.push_back(box);
  const Foreseen next = Take(Kind::Message, box.text);
  if (next.while_) next.while_();
  return next.answer;
}

std::optional<std::string> ScriptedDialogs::ShowInput(const std::string& prompt, const std::string& title,
                                                      const std::string&) {
  inputTitles.push_back(title);
  return Take(Kind::Input, prompt).reply;
}

std::optional<std::string> ScriptedDialogs::ShowOpenFile(const ShownFileQuestion& question) {
  filesAsked.push_back(question);
  return Take(Kind::Open, question.title).reply;
}

std::optional<std::string> ScriptedDialogs::ShowSaveFile(const ShownFileQuestion& question) {
  filesAsked.push_back(question);
  const Foreseen next = Take(Kind::File, question.title);
  if (next.while_) next.while_();
  return next.reply;
}

// --- Lists, colours, fonts ---

void ScriptedDialogs::ExpectChoice(const std::string& title, std::optional<std::string> chosen) {
  foreseen_.push_back({Kind::List, title, Answer::Ok, std::move(chosen), {}});
}

void ScriptedDialogs::ExpectColour(const std::string& title, std::optional<std::int32_t> chosen) {
  foreseen_.push_back({.kind = Kind::Colour, .text = title, .reply = {}, .while_ = {}, .colour = chosen});
}

void ScriptedDialogs::ExpectFont(std::optional<FontChoice> chosen) {
  foreseen_.push_back({.kind = Kind::Font, .text = "", .reply = {}, .while_ = {}, .font = std::move(chosen)});
}

std::optional<std::string> ScriptedDialogs::ShowList(const ShownListQuestion& question) {
  listsAsked.push_back(question);
  return Take(Kind::List, question.title).reply;
}

std::optional<std::int32_t> ScriptedDialogs::ShowColour(const std::string& title, std::int32_t) {
  return Take(Kind::Colour, title).colour;
}

std::optional<FontChoice> ScriptedDialogs::ShowFont(const FontChoice&) {
  return Take(Kind::Font, "").font;
}

// --- Progress ---

class ScriptedDialogs::ScriptedProgress : public ProgressBox {
 public:
  ScriptedProgress(ScriptedDialogs& dialogs, ShownProgress& shown) : dialogs_(dialogs), shown_(shown) {}
  ~ScriptedProgress() override { shown_.gone = true; }

  void Appear() override { shown_.appeared = true; }
  void Show(const std::string& doing, double share) override { shown_.steps.emplace_back(doing, share); }
  bool IsCancelled() const override { return dialogs_.cancelProgress; }

 private:
  ScriptedDialogs& dialogs_;
  ShownProgress& shown_;
};

std::unique_ptr<ProgressBox> ScriptedDialogs::MakeProgress(const std::string& title) {
  progress.push_back({.title = title, .steps = {}});
  return std::make_unique<ScriptedProgress>(*this, progress.back());
}

}  // namespace velk::test
