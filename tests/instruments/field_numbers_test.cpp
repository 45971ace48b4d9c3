#include "instruments/reading/field_numbers.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "instruments/reading/decimal_fields.h"
#include "instruments/reading/get_field.h"

namespace velk {
namespace {

struct Numbers {
  std::vector<double> values;
  bool areSound = false;
};

Numbers Read(std::string_view line, std::string_view delimiter, std::string_view terminator, std::size_t wanted) {
  Numbers numbers{std::vector<double>(wanted), false};
  const FieldNumbers read = ReadFieldNumbers(line, delimiter, terminator, numbers.values);
  numbers.values.resize(read.count);
  numbers.areSound = read.areSound;
  return numbers;
}

/// Each field cut out of the line and read by itself.
std::vector<double> ReadOneByOne(std::string_view line, std::string_view delimiter, std::size_t wanted) {
  std::vector<double> numbers;
  std::size_t position = 0;
  GetField(line, delimiter, position);
  while (numbers.size() < wanted && position != 0) numbers.push_back(Val(GetField(line, delimiter, position)));
  return numbers;
}

TEST(FieldNumbers, AreThoseBehindTheTime) {
  const Numbers read = Read("10:20:30 0012.375 -2.25 +7\r\n", " ", "\r\n", 3);
  EXPECT_EQ(read.values, (std::vector<double>{12.375, -2.25, 7}));
  EXPECT_TRUE(read.areSound);
}

TEST(FieldNumbers, AreAsManyAsThereIsRoomFor) {
  const Numbers read = Read("10:20:30 1 2 3\r\n", " ", "\r\n", 2);
  EXPECT_EQ(read.values, (std::vector<double>{1, 2}));
  EXPECT_FALSE(read.areSound) << "the third was not looked at";
  EXPECT_TRUE(Read("10:20:30 1 2 3\r\n", " ", "\r\n", 0).values.empty());
}

TEST(FieldNumbers, EndWithTheLine) {
  EXPECT_EQ(Read("10:20:30 1 2\r\n", " ", "\r\n", 5).values, (std::vector<double>{1, 2}));
  EXPECT_TRUE(Read("10:20:30\r\n", " ", "\r\n", 5).values.empty());
  EXPECT_TRUE(Read("", " ", "\r\n", 5).values.empty());
}

TEST(FieldNumbers, AreNotSoundWithADamagedField) {
  for (const char* field : {"1e3", "0x1", "", "1.2.3", "--1", "7o", "5\t", "nan"})
    EXPECT_FALSE(Read("10:20:30 1 " + std::string(field) + " 3\r\n", " ", "\r\n", 3).areSound) << field;
}

TEST(FieldNumbers, AreThoseOfFieldsThatAreReadOneByOne) {
  const std::string letters = "0123456789..--++  ,,eE\t;\r\nx";
  const std::string_view separators[] = {" ", ",", ";", "\r\n", "\r", "\n", "",   "1",
                                         ".", "-", "e", "e1",   ", ", ",,", "\t", "x"};
  std::mt19937 random(27);
  const auto below = [&](std::size_t count) { return random() % count; };
  int sound = 0;
  for (int i = 0; i < 200'000; ++i) {
    const std::string_view delimiter = separators[below(i % 2 ? 2 : std::size(separators))];
    const std::string_view terminator = i % 4 ? "\r\n" : separators[below(std::size(separators))];
    std::string line = below(4) ? "10:20:30" : "";
    for (std::size_t field = below(5); field > 0; --field) {
      line += delimiter;
      const std::size_t known = i % 3 ? 10 : letters.size();  // digits only, or anything
      for (std::size_t length = below(20); length > 0; --length) line += letters[below(known)];
    }
    if (below(4)) line += terminator;
    const std::size_t wanted = below(6);
    const Numbers read = Read(line, delimiter, terminator, wanted);
    EXPECT_EQ(read.values, ReadOneByOne(line, delimiter, wanted)) << line << "|" << delimiter << "|" << terminator;
    sound += read.areSound;
    if (read.areSound)
      EXPECT_TRUE(HasDecimalFields(line, delimiter, terminator)) << line << "|" << delimiter << "|" << terminator;
  }
  EXPECT_GT(sound, 1'000);
}

}  // namespace
}  // namespace velk
