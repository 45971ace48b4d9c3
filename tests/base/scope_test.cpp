#include "base/scope.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace velk {
namespace {

TEST(Scope, WorkRunsWhenTheScopeIsLeftAndNotBefore) {
  std::string order;
  {
    const OnLeaving work([&] { order += "left "; });
    order += "inside ";
  }
  EXPECT_EQ(order, "inside left ");
}

TEST(Scope, WorkRunsWhereAnErrorLeavesTheScope) {
  bool ran = false;
  try {
    const OnLeaving work([&] { ran = true; });
    throw std::runtime_error("leaves");
  } catch (const std::runtime_error&) {
  }
  EXPECT_TRUE(ran);
}

}  // namespace
}  // namespace velk
