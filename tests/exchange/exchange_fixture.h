#pragma once

#include <fstream>
#include <sstream>

#include "exchange/csv_file.h"
#include "log/log_fixture.h"
#include "platform/dialogs/long_task.h"

namespace velk::test {

/// Text files and logs in a folder of a test's own.
class ExchangeFixture : public LogFixture {
 protected:
  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::string file = folder.File(name);
    std::ofstream(file, std::ios::binary) << bytes;
    return file;
  }
  static std::string Read(const std::string& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
  }
  LongTask Task() { return {dialogs, clock, "Test"}; }
};

/// A file with all of its lines known.
inline void IndexAll(CsvFile& file) {
  while (file.Index(1 << 20)) {
  }
}

}  // namespace velk::test
