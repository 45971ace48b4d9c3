#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "base/errors.h"

namespace velk::test {

/// The run-time error that `statement` raises; raising none fails the test.
template <class Statement>
ErrorNumber Raised(Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  ADD_FAILURE() << "nothing was raised";
  return {};
}

}  // namespace velk::test
