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
  /// The next list must have `title` in its title.
  void ExpectChoice(const std::string& title, std::optional<std::string> chosen);
  void ExpectColour(const std::string& title, std::optional<std::int32_t> chosen);
  void ExpectFont(std::optional<FontChoice> chosen);

  bool TopIsAnswered() const override { return topIsAnswered; }

  bool topIsAnswered = false;  ///< set by what runs while a box stands
  std::vector<ShownMessage> shown;
  std::vector<ShownMessage> retold;  ///< texts that a box got while it stood: its subject and its text
  std::vector<ShownFileQuestion> filesAsked;
  std::vector<std::string> inputTitles;
  std::vector<ShownListQuestion> listsAsked;

  /// What the box of a long task was told.
  struct ShownProgress {
    std::string title;
    bool appeared = false;
    bool gone = false;
    std::vector<std::pair<std::string, double>> steps;
  };
  std::deque<ShownProgress> progress;  ///< of each long task
  bool cancelProgress = false;         ///< Cancel is pressed on it

 protected:
  Answer ShowMessage(const ShownMessage& box) override;
  void ShowText(const std::string& subject, const std::string& text) override {
    retold.push_back({.text = text, .title = {}, .subject = subject});
  }
  std::optional<std::string> ShowInput(const std::string& prompt, const std::string& title,
                                       const std::string& preset) override;
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion& question) override;
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion& question) override;
  std::optional<std::string> ShowList(const ShownListQuestion& question) override;
  std::optional<std::int32_t> ShowColour(const std::string& title, std::int32_t initial) override;
  std::optional<FontChoice> ShowFont(const FontChoice& initial) override;
  std::unique_ptr<ProgressBox> MakeProgress(const std::string& title) override;

 private:
  class ScriptedProgress;
  enum class Kind { Message, Input, Open, File, List, Colour, Font };
  struct Foreseen {
    Kind kind;
    std::string text;
    Answer answer = Answer::Ok;
    std::optional<std::string> reply;
    std::function<void()> while_;
    std::optional<std::int32_t> colour = {};
    std::optional<FontChoice> font = {};
  };
  Foreseen Take(Kind kind, const std::string& text);

  std::deque<Foreseen> foreseen_;
};

}  // namespace velk::test
