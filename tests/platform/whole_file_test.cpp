#include "platform/files/whole_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/file_size_limit.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

namespace velk {
namespace {

using test::Raised;

TEST(WholeFile, IsReadAsItWasWritten) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("well.d15");
  std::string bytes = "one\r\n";
  bytes += '\0';
  WriteWholeFile(path, bytes);
  EXPECT_EQ(ReadWholeFile(path, 100), bytes);
  WriteWholeFile(path, "two");
  EXPECT_EQ(ReadWholeFile(path, 100), "two");
  WriteWholeFile(path, "");
  EXPECT_EQ(ReadWholeFile(path, 100), "");
}

TEST(WholeFile, LeavesWhatStoodThereWhereTheDiskIsFull) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("well.d15");
  WriteWholeFile(path, "kept");
  {
    const test::FileSizeLimit limit(1000);
    Raised([&] { WriteWholeFile(path, std::string(5000, 'x')); });
  }
  EXPECT_EQ(ReadWholeFile(path, 100), "kept");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1) << "nothing is left beside it";
}

TEST(WholeFile, SaysWhatKeepsItFromBeingReadOrWritten) {
  const test::TemporaryFolder folder;
  EXPECT_EQ(Raised([&] { ReadWholeFile(folder.File("none"), 100); }), ErrorNumber::FileNotFound);
  EXPECT_EQ(Raised([&] { ReadWholeFile(folder.File("no/such"), 100); }), ErrorNumber::PathNotFound);
  EXPECT_EQ(Raised([&] { ReadWholeFile(folder.Path().string(), 100); }), ErrorNumber::BadFileName);
  Raised([&] { WriteWholeFile(folder.File("no/such"), "x"); });
  Raised([&] { WriteWholeFile(folder.Path().string(), "x"); });
}

TEST(WholeFile, IsNotReadBeyondItsLimit) {
  const test::TemporaryFolder folder;
  const std::string path = folder.File("large");
  WriteWholeFile(path, std::string(200'000, 'x'));
  EXPECT_EQ(Raised([&] { ReadWholeFile(path, 199'999); }), ErrorNumber::Overflow);
  EXPECT_EQ(ReadWholeFile(path, 200'000).size(), 200'000U);
}

}  // namespace
}  // namespace velk
