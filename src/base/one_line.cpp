#include "base/one_line.h"

#include <algorithm>
#include <utility>

#include "base/text.h"

namespace velk {

std::string OnOneLine(std::string text) {
  text = ReplaceAll(std::move(text), "\r\n", " ");
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
  return text;
}

}  // namespace velk
