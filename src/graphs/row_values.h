#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "graphs/parameter_curves.h"
#include "log/log_row.h"
#include "model/session.h"

namespace velk {

/// The values of the curves of one graph in the rows of a log. Computed channels are computed again from the row, over
/// running statistics that begin with the first row taken: the live ones, and the present values, stay as they are.
///
/// Rows hold scaled values, which stand as they are in a running job; playback applies gain and offset once more, as it
/// does where it draws. NaN is the value of a channel that the log doesn't hold, of one that a decoder fills, and of a
/// formula that fails at this row.
class RowValues {
 public:
  /// `channels`: how many the log has.
  RowValues(const Session& session, const ParameterCurves& curves, std::size_t channels);

  /// The channels of the log that the rows have to have, counted from 0, in this order.
  const std::vector<int>& Channels() const { return channels_; }

  /// From here on the values are those of this row.
  void Take(const LogRow& row) { Take(std::span<const double>(row.values)); }
  void Take(std::span<const double> channels);
  float Of(int slot) const { return values_[static_cast<std::size_t>(curves_.ParameterOf(slot))]; }

 private:
  struct Computed {
    int parameter;
    std::vector<int> references;  ///< channels that its formula leans on
  };

  void Need(int parameter, Session::PerParameter<bool>& needed);
  float ValueOf(const Computed& channel);

  const Session& session_;
  const ParameterCurves& curves_;
  std::vector<int> channels_;
  std::vector<Computed> computed_;  ///< in ascending order, as a sample computes them
  Session::PerParameter<float> values_;
  std::vector<Parameter> statistics_;  ///< of the computed channels, slot 0 unused
};

}  // namespace velk
