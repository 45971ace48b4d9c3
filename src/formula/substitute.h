#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace velk {

/// A channel that a formula asks for has no value at present: a row that is played back leaves it out.
inline constexpr int kValueMissing = -1;

/// Writes the formula to `text` with each reference "{depth}" replaced by the present value of that channel (7 digits),
/// and gives the number of ")" in it, which evaluating needs. At the first reference that no channel answers to,
/// the rest of the text stays as it is and the number is 0; at one to a channel whose present value is NaN, it is
/// kValueMissing, and the text is of no use. Allocates nothing once `text` has grown.
int SubstituteParameters(const Session& session, std::string_view formula, std::string& text);
/// The same with other values than the present ones, indexed like CurrentValue.
int SubstituteParameters(const Session& session, const Session::PerParameter<float>& values, std::string_view formula,
                         std::string& text);

/// The channels that a formula refers to, in its order; a reference that no channel answers to is left out.
std::vector<int> ReferencesOf(const Session& session, std::string_view formula);

/// The first of CurrentParameters 1 to 64 whose name in lower case is `name`; 0 where there is none.
int FindChannel(const Session& session, std::string_view name);

}  // namespace velk
