#pragma once

#include <string>

namespace velk {

/// Takes the characters of code 0 out of the line. Nothing is checked: a line with any count of values goes on.
void AnySerialData(std::string& line);

}  // namespace velk
