#include "platform/opc/opc_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/dates.h"

namespace velk {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNoNumber = std::nan("");

std::string Text(const char* text) {
  return text;
}

TEST(OpcValueTest, KnowsTheTypeOfEachElement) {
  const std::pair<OpcElement, OpcType> cases[] = {
      {true, OpcType::Boolean},         {std::uint8_t{1}, OpcType::Byte}, {std::int16_t{1}, OpcType::Short},
      {std::int32_t{1}, OpcType::Long}, {1.0F, OpcType::Float},           {1.0, OpcType::Double},
      {Text("1"), OpcType::String},     {OpcDate{1}, OpcType::Date}};
  for (const auto& [element, type] : cases) EXPECT_EQ(TypeOf(element), type);
}

TEST(OpcValueTest, BringsElementsIntoOtherTypes) {
  const struct {
    OpcElement from;
    OpcType type;
    OpcElement to;
  } cases[] = {
      {2.5, OpcType::Native, 2.5},
      {2.5, OpcType::Long, std::int32_t{2}},  // half to even
      {3.5, OpcType::Short, std::int16_t{4}},
      {254.6, OpcType::Byte, std::uint8_t{255}},
      {-0.4, OpcType::Byte, std::uint8_t{0}},
      {std::int32_t{-7}, OpcType::Double, -7.0},
      {true, OpcType::Float, 1.0F},
      {true, OpcType::String, Text("True")},
      {false, OpcType::String, Text("False")},
      {0.1, OpcType::Boolean, true},
      {0.0, OpcType::Boolean, false},
      {Text("true"), OpcType::Boolean, true},
      {Text(" False "), OpcType::Long, std::int32_t{0}},
      {Text("1.5e2"), OpcType::Long, std::int32_t{150}},
      {0.1F, OpcType::String, Text("0.1")},
      {std::uint8_t{7}, OpcType::String, Text("7")},
      {OpcDate{DateSerial(2026, 3, 14) + TimeOfDay(9, 5, 7)}, OpcType::String, Text("2026-03-14 09:05:07")},
      {Text("2026-03-14 09:05:07"), OpcType::Date, OpcDate{DateSerial(2026, 3, 14) + TimeOfDay(9, 5, 7)}},
      {kInfinity, OpcType::Float, std::numeric_limits<float>::infinity()},
  };
  for (const auto& row : cases) EXPECT_EQ(Converted(row.from, row.type), row.to);
}

TEST(OpcValueTest, GivesNothingForWhatATypeCannotHold) {
  const std::pair<OpcElement, OpcType> cases[] = {
      {255.6, OpcType::Byte},         {-0.6, OpcType::Byte},          {32768.0, OpcType::Short},
      {-2147483649.0, OpcType::Long}, {kNoNumber, OpcType::Long},     {kInfinity, OpcType::Long},
      {1e39, OpcType::Float},         {kNoNumber, OpcType::Boolean},  {Text(""), OpcType::Double},
      {Text("12x"), OpcType::Double}, {Text("nan"), OpcType::Double}, {OpcDate{1}, OpcType::Double},
      {1.0, OpcType::Date},           {Text("46000"), OpcType::Date}, {Text("31-Feb-2026"), OpcType::Date}};
  for (const auto& [element, type] : cases) EXPECT_EQ(Converted(element, type), std::nullopt) << static_cast<int>(type);
}

TEST(OpcValueTest, BringsAnArrayIntoATypeAsAWhole) {
  const OpcValue numbers(std::vector<OpcElement>{1.0, 300.0});
  EXPECT_EQ(Converted(numbers, {OpcType::Long, true}),
            OpcValue(std::vector<OpcElement>{std::int32_t{1}, std::int32_t{300}}));
  EXPECT_EQ(Converted(numbers, {OpcType::Byte, true}), std::nullopt);
  EXPECT_EQ(Converted(numbers, {OpcType::Long, false}), std::nullopt);
  EXPECT_EQ(Converted(OpcValue(1.0), {OpcType::Long, true}), std::nullopt);
  EXPECT_EQ(Converted(numbers, {}), numbers);
}

TEST(OpcValueTest, KnowsAheadWhichTypesThereIsAWayBetween) {
  EXPECT_TRUE(CanConvert({OpcType::Double, true}, {}));
  EXPECT_TRUE(CanConvert({OpcType::Float}, {OpcType::Long}));
  EXPECT_TRUE(CanConvert({OpcType::String}, {OpcType::Date}));
  EXPECT_TRUE(CanConvert({OpcType::Date}, {OpcType::String}));
  EXPECT_TRUE(CanConvert({OpcType::Date, true}, {OpcType::Date, true}));
  EXPECT_FALSE(CanConvert({OpcType::Date}, {OpcType::Double}));
  EXPECT_FALSE(CanConvert({OpcType::Long}, {OpcType::Date}));
  EXPECT_FALSE(CanConvert({OpcType::Float}, {OpcType::Float, true}));
  EXPECT_FALSE(CanConvert({OpcType::Float, true}, {OpcType::Float}));
}

}  // namespace
}  // namespace velk
