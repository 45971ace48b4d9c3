#include "options.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string_view>

namespace sim {

namespace {

constexpr const char* kHelpAhead =
    R"(velk_sim_unit: a pseudo-terminal that speaks as a KESTA or LUMO unit in run mode.

  --unit NAME            "KESTA version 3" (default), 4, 5, "LUMO version A", B; short: kesta3 ... lumob
  --channels N           values in a frame; default as many as the unit has
  --interval S           seconds between frames (default 1)
  --baud N               pace of the line, 10 bits a byte (default 19200; 0 without pace)
  --link PATH            symbolic link that leads to the device, also after a hang-up and return
  --journal FILE         writes each frame that was sent: time, "sound", "damaged" or "cut", text
  --clock hh:mm:ss       start of the unit's clock (default the wall clock)
  --frames N             ends after N frames
  --trip DEPTH           runs pipe into a well and pulls it out: channels 1 to 5 are depth, speed, inclination,
                         azimuth and turns a minute
  --trip-time S          one way of it takes S seconds (default 60)
  --seed N               seed of noise and damage (default 1)
  --damage SHARE         damages this share of the frames, 0 to 1
  --change-length-after N  values carry one digit more behind N frames
  --pause-after N        sends nothing for --pause S seconds (default 5) behind N frames
)";
constexpr const char* kHelpBehind =
    R"(  --flood                frame after frame, as fast as the reader takes them

The first line printed is the path of the device. While nobody has the device open nothing is sent.
Ends on SIGTERM and SIGINT, and with the program that started it.
)";

[[noreturn]] void Refuse(std::string_view option) {
  std::fprintf(stderr, "velk_sim_unit: wrong option or value: %.*s (--help tells)\n", static_cast<int>(option.size()),
               option.data());
  std::exit(2);
}

template <class Number>
Number NumberOf(std::string_view option, std::string_view text) {
  Number value{};
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || stop != text.data() + text.size() || value < Number{}) Refuse(option);
  return value;
}

std::string UnitOf(std::string_view name) {
  static const std::map<std::string_view, std::string_view> shortNames = {{"kesta3", "KESTA version 3"},
                                                                          {"kesta4", "KESTA version 4"},
                                                                          {"kesta5", "KESTA version 5"},
                                                                          {"lumoa", "LUMO version A"},
                                                                          {"lumob", "LUMO version B"}};
  for (const auto& [brief, full] : shortNames)
    if (name == brief || name == full) return std::string(full);
  Refuse(name);
}

}  // namespace

Options ReadOptions(int argc, char** argv) {
  Options options;
  using Take = std::function<void(std::string_view)>;
  const auto number = [](std::string_view name, auto& target) {
    return Take([name, &target](std::string_view text) {
      target = NumberOf<std::remove_reference_t<decltype(target)>>(name, text);
    });
  };
  const auto text = [](std::string& target) { return Take([&target](std::string_view value) { target = value; }); };
  const std::map<std::string_view, Take> takers = {
      {"--unit", [&](std::string_view value) { options.unit = UnitOf(value); }},
      {"--channels", number("--channels", options.channels)},
      {"--interval", number("--interval", options.interval)},
      {"--baud", number("--baud", options.baud)},
      {"--link", text(options.link)},
      {"--journal", text(options.journal)},
      {"--clock", text(options.clock)},
      {"--frames", number("--frames", options.frames)},
      {"--seed", number("--seed", options.seed)},
      {"--damage", number("--damage", options.damage)},
      {"--change-length-after", number("--change-length-after", options.lengthChangeAfter)},
      {"--pause-after", number("--pause-after", options.pauseAfter)},
      {"--pause", number("--pause", options.pause)},
      {"--trip", number("--trip", options.trip)},
      {"--trip-time", number("--trip-time", options.tripTime)},
      {"--hangup-after", number("--hangup-after", options.hangUp.after)},
      {"--return-after", number("--return-after", options.hangUp.away)},
      {"--return-as", text(options.hangUp.returnsAs)},
  };
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    if (name == "--help") {
      std::printf("%s%s%s", kHelpAhead, SIM_HANG_UP_HELP, kHelpBehind);
      std::exit(0);
    }
    if (name == "--flood" || name == "--hangup-within") {
      (name == "--flood" ? options.flood : options.hangUp.withinFrame) = true;
      continue;
    }
    const auto taker = takers.find(name);
    if (taker == takers.end() || ++i >= argc) Refuse(name);
    taker->second(argv[i]);
  }
  return options;
}

}  // namespace sim
