#pragma once

#include <cstdint>
#include <string>

#include "hang_up.h"

namespace sim {

/// What the simulated unit was told to do. Times are seconds, counts are frames; a count of 0 means never.
struct Options {
  std::string unit = "KESTA version 3";
  int channels = 0;  ///< 0: as many as the unit has
  double interval = 1;
  int baud = 19200;  ///< 0: no pace
  std::string link;
  std::string journal;
  std::string clock;  ///< "hh:mm:ss" that the unit's clock starts at; empty: the wall clock
  long frames = 0;    ///< ends after this many
  double damage = 0;  ///< share of damaged frames
  std::uint64_t seed = 1;
  long lengthChangeAfter = 0;  ///< values carry one digit more from there on
  long pauseAfter = 0;
  double pause = 5;
  HangUp hangUp;
  bool flood = false;
  double trip = 0;  ///< depth that pipe is run to, 0: none is
  double tripTime = 60;
};

/// Reads the command line. Prints what is wrong, or the help, and ends the program when it can't go on.
Options ReadOptions(int argc, char** argv);

}  // namespace sim
