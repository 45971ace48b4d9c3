#pragma once

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "platform/dialogs/dialogs.h"

namespace velk::bench {

/// Boxes that nobody answers: a message ends the bench.
class NoDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;

 protected:
  Answer ShowMessage(const ShownMessage& box) override {
    std::fprintf(stderr, "a box came up: %s\n", box.text.c_str());
    std::exit(1);
  }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return std::nullopt; }
};

}  // namespace velk::bench
