#pragma once

#include <cstddef>

namespace velk::bench {

/// Calls of operator new since the program started. Linking allocations.cpp counts them.
std::size_t Allocations();

}  // namespace velk::bench
