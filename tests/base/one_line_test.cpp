#include "base/one_line.h"

#include <gtest/gtest.h>

namespace velk {
namespace {

TEST(OnOneLine, HasABlankForEachLineEndAndControlCharacter) {
  EXPECT_EQ(OnOneLine("Flow\r\nrate\tin\nl\rmin\x1F."), "Flow rate in l min .");
  EXPECT_EQ(OnOneLine("\n"), " ");
  EXPECT_EQ(OnOneLine("давление, °C"), "давление, °C");
}

}  // namespace
}  // namespace velk
