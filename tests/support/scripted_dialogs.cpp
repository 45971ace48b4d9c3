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
    return {kind, text, Answer::Cancel, std::nullopt, {}};
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

}  // namespace velk::test
