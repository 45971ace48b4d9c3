#pragma once

#include <string>
#include <string_view>

namespace velk {

// From the page of a networked unit to a line: the time, then a value a parameter; the terminator is put behind by the
// caller. Tags and names are searched for as they are written here, capitals included. A page that lacks a cell raises
// InvalidArgument.

/// A page that brings no time of its own. `time` is "hh:mm:ss".
using ValuesPageReader = std::string (*)(std::string_view page, std::string_view time, int parameters);

/// The page of named cells: the value of parameter i stands behind "iVar", in the next "<td>", up to "&nbsp". A
/// blank leads each value.
std::string LineFromNamedCells(std::string_view page, std::string_view time, int parameters);

/// The page of the operator panel: the rows behind the first one hold a name and, inside two tags, a number up to
/// "&nbsp". A blank leads each number. A number beyond the 64-bit range raises Overflow.
std::string LineFromPanelPage(std::string_view page, std::string_view time, int parameters);

/// The page that is one table: the 8 characters behind the first "&nbsp;" are the time, and the fourth cell of every
/// row is a value, led by `delimiter`. No more than 65 rows are read.
std::string LineFromTable(std::string_view page, std::string_view delimiter);

/// The text without what stands in front of a value on these pages: line ends, blanks, ":" and ";", and "&nbsp".
std::string TrimPageText(std::string_view text);

}  // namespace velk
