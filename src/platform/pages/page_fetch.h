#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/errors.h"
#include "platform/loop/clock.h"

namespace velk {

/// Why a page did not come.
enum class PageFault {
  BadAddress,       ///< no address of a page, or one that is not http
  NoConnection,     ///< nobody there, or the connection broke
  TimedOut,         ///< not whole within PageFetch::kMilliseconds
  TooLarge,         ///< more than PageFetch::kMostBytes
  RedirectRefused,  ///< to another host, to something that is not http, or once too often
  Refused           ///< the unit answered with an error
};

/// A page that could not be fetched. What the operator is told is made from the fault and the address.
class PageError : public RuntimeError {
 public:
  /// `status` is the unit's own number of its answer, for Refused.
  PageError(PageFault fault, std::string address, int status = 0);

  PageFault Fault() const { return fault_; }
  const std::string& Address() const { return address_; }
  int Status() const { return status_; }

 private:
  PageFault fault_;
  std::string address_;
  int status_;
};

/// Fetches pages of a networked unit.
class PageFetch {
 public:
  static constexpr int kMilliseconds = 5000;  ///< for the page as a whole, redirects included
  static constexpr std::size_t kMostBytes = 1024 * 1024;
  static constexpr int kMostRedirects = 3;  ///< on the same host

  virtual ~PageFetch() = default;

  /// The page at an address ("10.0.0.5/pens.htm", with or without "http://") as UTF-8. Waits for it, letting events
  /// run. Nothing while another page is being fetched, and when Cancel ended the wait. Raises PageError.
  virtual std::optional<std::string> Fetch(const std::string& address) = 0;

  /// Ends the wait that is under way.
  virtual void Cancel() = 0;

  /// Gives up a fetch that can't go on, because a box stands on it: it will end without a page, and another may begin.
  virtual void GiveUp() {}
};

/// Over the machine's own network, without a proxy.
std::unique_ptr<PageFetch> MakePageFetch(Clock& clock);

}  // namespace velk
