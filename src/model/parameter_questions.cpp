#include "model/parameter_questions.h"

#include <algorithm>
#include <set>

#include "base/number_entry.h"
#include "model/number_formats.h"
#include "model/texts.h"

namespace velk {

std::optional<std::int32_t> AskColour(Dialogs& dialogs, const std::string& name, std::int32_t present) {
  return dialogs.Colour(text::SelectColour + name, present);
}

std::optional<std::string> AskNumberFormat(Dialogs& dialogs) {
  const auto sample = dialogs.Choose({text::NumberFormatTitle, text::NumberFormatPrompt, NumberFormatSamples()});
  if (!sample) return std::nullopt;
  return FormatOfSample(*sample);
}

const MessageText& FaultOfNumber(std::string_view text) {
  return IsUnclearNumber(text) ? text::NumberUnclear : text::NumberTooLarge;
}

std::vector<std::string> TellApart(std::vector<std::string> names) {
  const std::set<std::string> distinct(names.begin(), names.end());
  if (distinct.size() == names.size() && !distinct.contains({})) return names;
  for (std::size_t i = 0; i < names.size(); ++i) names[i].insert(0, std::to_string(i + 1) + ": ");
  return names;
}

std::optional<int> AskWhich(Dialogs& dialogs, const OperatorText& title, const OperatorText& prompt,
                            const std::vector<std::string>& names, int helpTopic) {
  const std::vector<std::string> entries = TellApart(names);
  const auto chosen = dialogs.Choose({title, prompt, entries, false, helpTopic});
  if (!chosen) return std::nullopt;
  const auto entry = std::find(entries.begin(), entries.end(), *chosen);
  if (entry == entries.end()) return std::nullopt;
  return static_cast<int>(entry - entries.begin()) + 1;
}

}  // namespace velk
