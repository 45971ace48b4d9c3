#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/database/connection.h"
#include "support/temporary_folder.h"

namespace velk::test {

/// A database whose pages are read beside its engine, and can be damaged.
class PagesFixture : public testing::Test {
 protected:
  void Make(const std::string& sql, int pageSize = 4096) {
    std::filesystem::remove(path_);
    const auto connection = Connection::Open(path_, OpenMode::CreateNew);
    connection->Execute("PRAGMA page_size=" + std::to_string(pageSize) + ";" + sql);
  }
  std::string Bytes() {
    std::ifstream stream(path_, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void Write(const std::string& bytes) { std::ofstream(path_, std::ios::binary) << bytes; }

  TemporaryFolder folder_;
  std::string path_ = folder_.File("run.mdb");
};

}  // namespace velk::test
