#pragma once

#include <functional>
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

/// What came of a fetch.
struct FetchedPage {
  std::string text;                ///< UTF-8
  std::optional<PageError> error;  ///< why there is none
};

/// Fetches pages of a networked unit, one at a time, while the event loop runs: nobody waits on the stack.
class PageFetch {
 public:
  static constexpr int kMilliseconds = 5000;  ///< for the page as a whole, redirects included
  static constexpr std::size_t kMostBytes = 1024 * 1024;
  static constexpr int kMostRedirects = 3;  ///< on the same host

  using Done = std::function<void(const FetchedPage&)>;

  virtual ~PageFetch() = default;

  /// Asks for the page at an address ("10.0.0.5/pens.htm", with or without "http://"). `done` is told once what came of
  /// it, from the event loop and never from inside this call. Cancels a fetch that is under way.
  virtual void Begin(const std::string& address, Done done) = 0;

  /// From Begin until `done` is called.
  virtual bool IsUnderWay() const = 0;

  /// Ends the fetch that is under way; its `done` is not called.
  virtual void Cancel() = 0;
};

/// Over the machine's own network, without a proxy.
std::unique_ptr<PageFetch> MakePageFetch(Clock& clock);

}  // namespace velk
