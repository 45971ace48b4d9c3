#pragma once

#include <array>
#include <string>
#include <variant>

#include "base/message_text.h"
#include "model/session.h"

namespace velk {

/// What frmUserOptions sets.
struct UserOptions {
  double pixelslength = 0;
  double pixeldivide = 0;
  double MaximumTime = 0;
  std::int16_t intFontSize = 0;
};

/// The texts in the boxes of frmUserOptions: samples in a block, height of a sample, graph height, font size, curves in
/// a graph.
using UserOptionTexts = std::array<std::string, 5>;

/// The texts that the boxes show first.
UserOptionTexts TextsOfUserOptions(const Session& session);

/// The options that the texts mean, or why they can't be taken: the graph height has to hold a whole number of pairs
/// of blocks, and can't exceed what a surface can be. A text means the number at its front, or 0; of the first three
/// numbers the whole part counts. The number of curves is looked at and otherwise left alone.
std::variant<UserOptions, MessageText> CheckUserOptions(const UserOptionTexts& texts);

/// Takes the options over into the session.
void TakeUserOptions(Session& session, const UserOptions& options);

}  // namespace velk
