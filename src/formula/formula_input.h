#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velk {

/// What stands in the text box of the formula editor, and its cursor: the number of characters ahead of it. A cursor
/// at 0 is one that nobody has placed yet: what is inserted then goes to the end.
struct FormulaInput {
  std::string text;
  std::size_t cursor = 0;
};

// Each of these works on the text as one button of the editor does, and leaves the cursor behind what it inserted.

/// A digit or the decimal point.
void InsertText(FormulaInput& input, std::string_view what);

/// An operator. A minus that stands directly behind another operator gets a bracket of its own: "2*" becomes "2*(-".
void InsertOperator(FormulaInput& input, std::string_view caption);

/// A function with its brackets, the cursor between them; "pi" has none. Gives false, and changes nothing, when the
/// text begins with a statistical function: no other one goes beside it.
bool InsertFunction(FormulaInput& input, std::string_view caption);

/// "{name}", the present value of that parameter.
void InsertReference(FormulaInput& input, std::string_view name);

}  // namespace velk
