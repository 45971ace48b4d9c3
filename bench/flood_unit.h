#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "tests/support/pty.h"

namespace velk::bench {

/// A unit behind a pseudo-terminal, on a thread of its own. The first value of each line is the line's number.
class FloodUnit {
 public:
  enum class Pace {
    Slow,    ///< a line an interval
    Silent,  ///< nothing
    Burst,   ///< a hundred lines at once, once a second
    Even,    ///< a hundred lines a second, one every 10 ms
    Full     ///< line after line, as fast as the terminal takes them
  };

  /// `interval` is that of Slow.
  explicit FloodUnit(int channels, std::chrono::milliseconds interval = std::chrono::milliseconds(50))
      : channels_(channels), interval_(interval), thread_([this] { Run(); }) {}
  ~FloodUnit() {
    ending_ = true;
    thread_.join();
  }
  FloodUnit(const FloodUnit&) = delete;
  FloodUnit& operator=(const FloodUnit&) = delete;

  const std::string& Device() const { return pty_.Device(); }
  /// A line under way is sent whole.
  void SetPace(Pace pace) { pace_ = pace; }
  /// Whole lines that the terminal took.
  long long Sent() const { return sent_; }
  /// When a line was handed to the terminal: one of the last few thousand.
  std::chrono::steady_clock::time_point SentAt(long long number) const {
    return std::chrono::steady_clock::time_point(std::chrono::nanoseconds(sentAt_[PlaceOf(number)]));
  }

 private:
  static constexpr int kBurst = 100;
  static constexpr std::size_t kRemembered = 8192;

  static std::size_t PlaceOf(long long number) { return static_cast<std::size_t>(number) % kRemembered; }

  /// By the time at which each is due, whatever the one before has cost.
  void SendEvenly() {
    auto due = std::chrono::steady_clock::now();
    while (pace_ == Pace::Even && !ending_) {
      SendWhole(Line(sent_ + 1));
      std::this_thread::sleep_until(due += std::chrono::milliseconds(1000 / kBurst));
    }
  }

  void Run() {
    while (!ending_) {
      const Pace pace = pace_;
      if (pace == Pace::Even) {
        SendEvenly();
        continue;
      }
      const int lines = pace == Pace::Silent ? 0 : pace == Pace::Slow ? 1 : kBurst;
      for (int i = 0; i < lines && pace_ == pace && !ending_; ++i) SendWhole(Line(sent_ + 1));
      if (pace != Pace::Full) Rest(pace == Pace::Burst ? std::chrono::milliseconds(1000) : interval_);
    }
  }

  /// Until an interval behind the time before at which it was due, whatever the lines have cost; in pieces, so that a
  /// new pace is taken up soon.
  void Rest(std::chrono::milliseconds time) {
    const Pace pace = pace_;
    due_ = std::max(due_ + time, std::chrono::steady_clock::now());
    while (pace_ == pace && !ending_ && std::chrono::steady_clock::now() < due_)
      std::this_thread::sleep_until(std::min(due_, std::chrono::steady_clock::now() + std::chrono::milliseconds(5)));
  }

  void SendWhole(const std::string& line) {
    sentAt_[PlaceOf(sent_ + 1)] = std::chrono::steady_clock::now().time_since_epoch().count();
    for (std::size_t at = 0; at < line.size();) {
      if (ending_) return;
      const std::size_t taken = pty_.Send(std::string_view(line).substr(at));
      at += taken;
      if (taken == 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    ++sent_;
  }

  /// All of one length, with values that wander, so that every curve moves.
  std::string Line(long long number) const {
    char text[32];
    const long long second = number / kBurst;
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(second / 3600 % 24),
                  static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
    std::string line = text;
    std::snprintf(text, sizeof text, " %08lld", number);
    line += text;
    for (int channel = 2; channel <= channels_; ++channel) {
      const long long wander = number * (channel + 3) % 2000;
      std::snprintf(text, sizeof text, " %08.3f", static_cast<double>(wander < 1000 ? wander : 2000 - wander) / 10);
      line += text;
    }
    return line + "\r\n";
  }

  test::Pty pty_;
  int channels_;
  std::chrono::steady_clock::time_point due_ = std::chrono::steady_clock::now();
  std::chrono::milliseconds interval_;
  std::atomic<Pace> pace_ = Pace::Slow;
  std::atomic<bool> ending_ = false;
  std::atomic<long long> sent_ = 0;
  std::array<std::atomic<long long>, kRemembered> sentAt_{};  ///< nanoseconds of the steady clock
  std::thread thread_;
};

}  // namespace velk::bench
