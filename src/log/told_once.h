#pragma once

#include <set>
#include <string>

#include "log/texts.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

/// Tells of what could not be tidied up and costs no row by itself: each path once.
class ToldOnce {
 public:
  explicit ToldOnce(Dialogs& dialogs) : dialogs_(dialogs) {}

  /// A box with the text and the path behind it. Not for the middle of a transaction.
  void Tell(const MessageText& text, const std::string& path) {
    if (!told_.insert(path).second) return;
    dialogs_.Message({text + path, text::RecordToError, Buttons::Ok, BoxIcon::Exclamation});
  }

 private:
  Dialogs& dialogs_;
  std::set<std::string> told_;
};

}  // namespace velk
