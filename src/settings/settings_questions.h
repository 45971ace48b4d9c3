#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/operator_text.h"
#include "model/help_topics.h"

namespace velk {

/// A choice from a list. Behind it is ListInputBox.
struct ListQuestion {
  OperatorText title;
  OperatorText prompt;
  std::vector<std::string> entries;
  bool mayEnter = false;  ///< another text than those of the list may be entered
  int helpTopic = topic::FirstStart;
};

/// Groups of sections of the live settings, in the order of the boxes of ClearSettings.
enum class SettingsGroup { General, Protocol, PrintGraph, Parameters, Playback, Formulae };
inline constexpr int kSettingsGroups = 6;

/// By group: whether it is to be cleared.
using GroupChoice = std::array<bool, kSettingsGroups>;

/// The texts in the boxes of frmUserOptions: samples in a block, height of a sample, graph height, font size, curves in
/// a graph.
using UserOptionTexts = std::array<std::string, 5>;

/// What the operator is asked by the commands of the menu Edit Settings.
class SettingsQuestions {
 public:
  virtual ~SettingsQuestions() = default;

  /// The text that was chosen or entered; empty on Cancel.
  virtual std::string Choose(const ListQuestion& question) = 0;
  /// Nothing on Cancel.
  virtual std::optional<GroupChoice> GroupsToClear() = 0;
  /// Shows the texts. At O.K. it hands the ones in the boxes to `accept`, and stays open while that gives false.
  virtual void UserOptions(const UserOptionTexts& shown, const std::function<bool(const UserOptionTexts&)>& accept) = 0;
};

}  // namespace velk
