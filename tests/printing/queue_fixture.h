#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include "platform/windows/qt_printers.h"

namespace velk::test {

/// What a command prints.
inline std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  for (int c = 0; pipe && (c = fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  if (pipe) pclose(pipe);
  return output;
}

/// The queues of a print service of the tests' own; none has brought anything to its device yet.
class QueueFixture : public testing::Test {
 protected:
  QueueFixture() {
    for (const auto& left : std::filesystem::directory_iterator(folder_)) std::filesystem::remove(left);
  }
  /// The document that a queue has brought to its device, which works at a time of its own.
  std::string Arrived() const {
    for (int tries = 0; tries < 200; ++tries) {
      for (const auto& file : std::filesystem::directory_iterator(folder_))
        if (file.path().extension() == ".pdf") return file.path().string();
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return {};
  }

  const std::filesystem::path folder_ = std::getenv("VELK_PRINTED");
  QtPrinters printers_;
};

}  // namespace velk::test
