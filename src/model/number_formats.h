#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace velk {

/// A number picture that may be chosen, and how it is shown: as a number that is written by it.
struct NumberFormat {
  std::string_view sample;
  std::string_view format;
};

inline constexpr std::array<NumberFormat, 7> kNumberFormats = {{{"12345678", "#0"},
                                                                {"123456.1", "#0.0"},
                                                                {"12345.12", "#0.00"},
                                                                {"1234.123", "#0.000"},
                                                                {"123.1234", "#0.0000"},
                                                                {"12.12345", "#0.00000"},
                                                                {"1.23456E+01", "0.00e+00"}}};

/// The samples in the order of the table.
std::vector<std::string> NumberFormatSamples();

/// What stands for a picture: its sample, or the picture itself where it is none of the table's.
std::string SampleOfFormat(std::string_view format);

/// The picture that a sample stands for; "#0.000" for any other text.
std::string FormatOfSample(std::string_view sample);

}  // namespace velk
