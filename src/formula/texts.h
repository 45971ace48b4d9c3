#pragma once

#include "base/message_text.h"

/// What formulas and computed channels say. Each with its number in the message database, which never changes its
/// meaning.
namespace velk::text {

// Formulas
inline constexpr MessageText NoSuchParameterBefore{212, "Formula Error, Parameter {"};
inline constexpr MessageText NoSuchParameterAfter{213, "} does not exist"};
inline constexpr MessageText DefaultAdditionalName{214, "Additional Parameter "};
inline constexpr MessageText BracketNumbersDiffer{
    225, "Error in formula, number of left brackets does not match number of right brackets"};
inline constexpr MessageText FormulaCalculator{226, "Formula Calculator"};
inline constexpr MessageText RightBracketFirst{227, "Error in formula, right bracket(s) proceeding left bracket(s)"};
inline constexpr MessageText NotValidBefore{230, "Error in formula, string "};
inline constexpr MessageText NotValidAfter{231, " is not valid string"};
inline constexpr MessageText OneStatisticOnly{2350, "Cannot insert another statistical function"};
inline constexpr MessageText NoRoomForParameter{
    2351, "There is room for 64 parameters in all. Remove an additional parameter before you add another one."};
inline constexpr MessageText RemoveAdditionalTitle{2352, "Remove Additional Parameter"};
inline constexpr MessageText RemoveAdditionalPrompt{2353, "Select Additional Parameter to Remove"};
inline constexpr MessageText RemoveAdditionalError{2354, "Remove additional ... error"};
inline constexpr MessageText ListedGraph{2355, "Graph"};
inline constexpr MessageText ListedFormula{2356, "Formula"};

}  // namespace velk::text
