#pragma once

#include <string>
#include <vector>

namespace velk::test {

/// A row of a folder's texts.h.
struct ProgramText {
  std::string folder;  ///< of src
  std::string constant;
  int number = 0;
  std::string english;
};

/// Every text of the program, as the headers list them.
const std::vector<ProgramText>& ProgramTexts();

}  // namespace velk::test
