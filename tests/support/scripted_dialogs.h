#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/dialogs/dialogs.h"
#include "support/in_english.h"

namespace velk::test {

/// Answers boxes from a queue. A box that was not foreseen, and an answer left over at the end, fail the test.
class ScriptedDialogs : public Dialogs {
 public:
  explicit ScriptedDialogs(Gate& gate, const Language& language = English()) : Dialogs(gate, language) {}
  ~ScriptedDialogs() override;

  /// The next message box must hold `text` and gets this answer; `while_` runs while it stands.
  void Expect(const std::string& text, Answer answer, std::function<void()> while_ = {});
  void ExpectInput(const std::string& prompt, std::optional<std::string> reply);
  void ExpectOpenFile(std::optional<std::string> path);
  void ExpectSaveFile(std::optional<std::string> path, std::function<void()> while_ = {});

  bool TopIsAnswered() const override { return topIsAnswered; }

  bool topIsAnswered = false;  ///< set by what runs while a box stands
  std::vector<ShownMessage> shown;
  std::vector<ShownFileQuestion> filesAsked;
  std::vector<std::string> inputTitles;

 protected:
  Answer ShowMessage(const ShownMessage& box) override;
  std::optional<std::string> ShowInput(const std::string& prompt, const std::string& title,
                                       const std::string& preset) override;
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion& question) override;
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion& question) override;

 private:
  enum class Kind { Message, Input, Open, File };
  struct Foreseen {
    Kind kind;
    std::string text;
    Answer answer = Answer::Ok;
    std::optional<std::string> reply;
    std::function<void()> while_;
  };
  Foreseen Take(Kind kind, const std::string& text);

  std::deque<Foreseen> foreseen_;
};

}  // namespace velk::test
