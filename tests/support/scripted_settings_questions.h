#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "settings/settings_questions.h"

namespace velk::test {

/// Answers the questions about settings and remembers what was asked.
class ScriptedSettingsQuestions : public SettingsQuestions {
 public:
  std::string Choose(const ListQuestion& question) override {
    asked.push_back(question);
    return choice;
  }

  std::optional<GroupChoice> GroupsToClear() override { return groups; }

  void UserOptions(const UserOptionTexts& shown, const std::function<bool(const UserOptionTexts&)>& accept) override {
    optionsShown = shown;
    for (const UserOptionTexts& texts : entered) accepted.push_back(accept(texts));
  }

  std::string choice;
  std::optional<GroupChoice> groups;
  std::vector<UserOptionTexts> entered;  ///< what stands in the boxes at each press of O.K.; none: Cancel

  std::vector<ListQuestion> asked;
  UserOptionTexts optionsShown;
  std::vector<bool> accepted;
};

}  // namespace velk::test
