#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "instruments/link/link.h"
#include "model/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/platform.h"

namespace velk {

/// Goes through the serial ports and finds out what stands behind them. It sets the session to what it finds.
class PortSearch {
 public:
  /// `port` is its own meanwhile. `box` shows how far it is and has its Cancel. `devices`
  /// is where serial devices are looked for.
  PortSearch(Session& session, const Platform& platform, SerialPort& port, std::unique_ptr<ProgressBox> box,
             const std::string& devices);
  ~PortSearch();
  PortSearch(const PortSearch&) = delete;
  PortSearch& operator=(const PortSearch&) = delete;

  /// Whether an instrument was found; that is told in a box. Events run.
  bool Find();
  /// Cancel came, or the program ends.
  bool IsCancelled() const { return box_.IsCancelled(); }
  /// The ports that could not be opened, a line each, with a line ahead of them; empty where there is none.
  OperatorText PortsNotOpened() const;

 private:
  struct Port {
    int number;
    std::string device;
    OperatorText fault = {};
  };
  struct HeardLine {
    std::string text;
    std::int32_t delimiters = 0;
    bool endsInCrLf = false;
    bool endsInLfCr = false;
  };

  void Prepare();
  /// Listens on each port; `take` tells whether the line is one of an instrument's.
  bool ListenOnEach(const MessageText& doing, std::int16_t handshake, bool (PortSearch::*take)(const HeardLine&));
  bool TakeStreaming(const HeardLine& line);
  bool TakeWithHandshake(const HeardLine& line);
  bool AskEach();
  bool TakeAnswers(std::int32_t delimiters);
  void ForEachPort(const MessageText& doing, const std::function<bool()>& isFound);
  bool Open(Port& port);
  HeardLine HearLine();
  std::string ReadLine(std::int64_t begun);
  bool AnswersToTrad();
  void Drain();
  bool MayBeCount(std::int32_t delimiters) const;
  void Tell(const MessageText& found);

  Session& session_;
  Platform platform_;
  SerialPort& port_;
  Dialogs::Progress box_;
  std::vector<Port> ports_;
  std::unique_ptr<Timer> watch_;  ///< brings Cancel to a wait for an answer
  bool found_ = false;
  int opened_ = 0;  ///< tries so far
};

}  // namespace velk
