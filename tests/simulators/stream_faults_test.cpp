// Faults that instruments which send by themselves make when they are asked to, seen as plain bytes on their device.

#include <gtest/gtest.h>

#include <algorithm>

#include "simulators/simulator.h"
#include "support/child_program.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using Arguments = std::vector<std::string>;

struct Instrument {
  std::string name;
  Arguments arguments;
  char delimiter;
  int perFrame;  ///< lines of values in a frame
};

const Instrument kInstruments[] = {
    {"formatted", {"--end", "cr"}, ' ', 1},     {"das104", {"--delimiter", ","}, ',', 1},
    {"data_taker", {"--end", "lfcr"}, ' ', 1},  {"data_taker", {"--form", "b", "--delimiter", ","}, ',', 1},
    {"intermittent", {"--burst", "3"}, ',', 3},
};

/// Everything that the instrument sends until it ends by itself, and what its journal says of it.
struct Sent {
  std::string bytes;
  std::vector<test::SentFrame> frames;
  double seconds = 0;
};

Sent RunOf(const Instrument& instrument, const Arguments& fault) {
  const test::TemporaryFolder folder;
  Arguments arguments = {"--frames", "6",        "--interval", "0", "--baud",    "0",
                         "--clock",  "10:20:30", "--channels", "4", "--journal", folder.File("sent")};
  arguments.insert(arguments.end(), instrument.arguments.begin(), instrument.arguments.end());
  arguments.insert(arguments.end(), fault.begin(), fault.end());
  test::ChildProgram program(VELK_SIMULATORS + ("/velk_sim_" + instrument.name), arguments);
  const int device = open(program.NextLine().c_str(), O_RDONLY | O_NOCTTY);
  const auto begun = std::chrono::steady_clock::now();
  Sent sent;
  char bytes[4096];
  for (ssize_t count = 0; (count = read(device, bytes, sizeof bytes)) > 0;)
    sent.bytes.append(bytes, static_cast<std::size_t>(count));
  sent.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
  close(device);
  EXPECT_EQ(program.ExitCode(), 0);
  sent.frames = test::ReadJournal(folder.File("sent"));
  return sent;
}

TEST(FormattedStream, ChangesItsLineEndForSomeFramesWhereAskedFor) {
  const Sent sent = RunOf({"formatted", {"--end", "crlf"}, ' ', 1},
                          {"--other-end", "lf", "--other-end-after", "2", "--other-end-frames", "3"});
  ASSERT_EQ(sent.frames.size(), 6U);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(sent.frames[i].text.ends_with("\r\n"), i < 2 || i == 5) << i;
  for (const test::SentFrame& frame : sent.frames) EXPECT_TRUE(frame.text.ends_with("\n"));
}

class StreamFaults : public testing::TestWithParam<Instrument> {
 protected:
  Sent RunWith(const Arguments& fault) { return RunOf(GetParam(), fault); }
  void ExpectJournalTellsTheBytes(const Sent& sent) {
    std::string told;
    for (const test::SentFrame& frame : sent.frames) told += frame.text;
    EXPECT_EQ(sent.bytes, told);
    ASSERT_EQ(sent.frames.size(), 6U);
  }
  /// Frames 3 and 6 are other ones than those of a sound run, the others the same.
  void ExpectEveryThirdDamaged(const Sent& sent) {
    ExpectJournalTellsTheBytes(sent);
    for (std::size_t i = 0; i < 6; ++i) {
      const bool damaged = i % 3 == 2;
      EXPECT_EQ(sent.frames[i].kind, damaged ? "damaged" : "sound");
      EXPECT_EQ(sent.frames[i].text != sound.frames[i].text, damaged) << sent.frames[i].text;
    }
  }
  int DelimitersOf(const std::string& text) const {
    return static_cast<int>(std::count(text.begin(), text.end(), GetParam().delimiter));
  }

  Sent sound = RunWith({});
};

TEST(FormattedStream, EndsItsLinesAsAskedFor) {
  const std::pair<const char*, const char*> ends[] = {{"cr", "\r"}, {"lf", "\n"}, {"crlf", "\r\n"}, {"lfcr", "\n\r"}};
  for (const auto& [name, end] : ends) {
    const Sent sent = RunOf({"formatted", {"--end", name}, ' ', 1}, {});
    ASSERT_EQ(sent.frames.size(), 6U);
    for (const test::SentFrame& frame : sent.frames) {
      EXPECT_TRUE(frame.text.ends_with(end)) << name;
      EXPECT_EQ(frame.text.find_first_of("\r\n"), frame.text.size() - std::string(end).size());
    }
  }
}

TEST_P(StreamFaults, SendTheFramesOfTheJournalWithoutAny) {
  ExpectJournalTellsTheBytes(sound);
  for (const test::SentFrame& frame : sound.frames) EXPECT_EQ(DelimitersOf(frame.text), 4 * GetParam().perFrame);
}

TEST_P(StreamFaults, CutALine) {
  const Sent cut = RunWith({"--cut-every", "3"});
  ExpectEveryThirdDamaged(cut);
  EXPECT_TRUE(sound.frames[2].text.starts_with(cut.frames[2].text));
}

TEST_P(StreamFaults, SendAWrongCountOfValues) {
  const Sent wrong = RunWith({"--wrong-count-every", "3"});
  ExpectEveryThirdDamaged(wrong);
  EXPECT_EQ(DelimitersOf(wrong.frames[2].text), 5 * GetParam().perFrame);
}

TEST_P(StreamFaults, SendNoise) {
  const Sent noisy = RunWith({"--noise-every", "3", "--seed", "7"});
  const std::size_t sizes[] = {noisy.frames[2].text.size(), sound.frames[2].text.size()};
  EXPECT_EQ(noisy.frames[2].kind, "damaged");
  EXPECT_EQ(noisy.frames[1].kind, "sound");
  EXPECT_LE(std::max(sizes[0], sizes[1]) - std::min(sizes[0], sizes[1]), 1U);
  ExpectJournalTellsTheBytes(noisy);
}

TEST_P(StreamFaults, KeepSilentForAWhile) {
  const Sent silent = RunWith({"--silence-after", "3", "--silence", "0.3"});
  EXPECT_EQ(silent.bytes, sound.bytes);
  EXPECT_GE(silent.seconds, 0.3);
}

TEST_P(StreamFaults, DribbleByteByByte) {
  const Sent slow = RunWith({"--dribble", "0.0005"});
  EXPECT_EQ(slow.bytes, sound.bytes);
  EXPECT_GE(slow.seconds, 0.0005 * static_cast<double>(sound.bytes.size()));
}

INSTANTIATE_TEST_SUITE_P(Of, StreamFaults, testing::ValuesIn(kInstruments), [](const auto& each) {
  std::string name = each.param.name;
  for (const std::string& argument : each.param.arguments)
    for (const char c : argument)
      if (std::isalnum(static_cast<unsigned char>(c))) name += c;
  std::erase(name, '_');
  return name;
});

}  // namespace
}  // namespace velk
