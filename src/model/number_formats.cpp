#include "model/number_formats.h"

namespace velk {

std::vector<std::string> NumberFormatSamples() {
  std::vector<std::string> samples;
  samples.reserve(std::size(kNumberFormats));
  for (const NumberFormat& row : kNumberFormats) samples.emplace_back(row.sample);
  return samples;
}

std::string SampleOfFormat(std::string_view format) {
  for (const NumberFormat& row : kNumberFormats)
    if (row.format == format) return std::string(row.sample);
  return std::string(format);
}

std::string FormatOfSample(std::string_view sample) {
  for (const NumberFormat& row : kNumberFormats)
    if (row.sample == sample) return std::string(row.format);
  return "#0.000";
}

}  // namespace velk
