#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace velk {

/// Looks for a value that jumps: one beyond `factor` times the mean of the two before it, or below a `factor`-th of it.
/// A mean of 0, or of what is no number, never counts.
class EventSearch {
 public:
  /// A factor of 0 means 2.
  explicit EventSearch(double factor) : factor_(factor == 0 ? 2 : factor) {}

  /// Takes the values of the next record, as many each time. True where one of them jumps.
  bool Push(std::span<const double> values);

 private:
  double factor_;
  std::array<std::vector<double>, 2> before_;
  std::size_t taken_ = 0;
};

}  // namespace velk
