#include "command_line.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>

namespace sim {

namespace {

template <class Value>
bool ReadNumber(std::string_view text, Value& target) {
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), target);
  return error == std::errc() && stop == text.data() + text.size() && target >= Value{};
}

}  // namespace

CommandLine::CommandLine(const char* program, const char* help) : program_(program), help_(help) {
}

void CommandLine::Flag(std::string_view name, bool& target) {
  flags_[name] = &target;
}

void CommandLine::Text(std::string_view name, std::string& target) {
  Take(name, [&target](std::string_view text) {
    target = text;
    return true;
  });
}

void CommandLine::Number(std::string_view name, double& target) {
  Take(name, [&target](std::string_view text) { return ReadNumber(text, target); });
}

void CommandLine::Number(std::string_view name, long& target) {
  Take(name, [&target](std::string_view text) { return ReadNumber(text, target); });
}

void CommandLine::Number(std::string_view name, int& target) {
  Take(name, [&target](std::string_view text) { return ReadNumber(text, target); });
}

void CommandLine::Take(std::string_view name, std::function<bool(std::string_view)> take) {
  takers_[name] = std::move(take);
}

void CommandLine::Read(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view name = argv[i];
    if (name == "--help") {
      std::fputs(help_, stdout);
      std::exit(0);
    }
    if (const auto flag = flags_.find(name); flag != flags_.end()) {
      *flag->second = true;
      continue;
    }
    const auto taker = takers_.find(name);
    if (taker == takers_.end() || ++i >= argc || !taker->second(argv[i])) Refuse(name);
  }
}

void CommandLine::Refuse(std::string_view option) const {
  std::fprintf(stderr, "%s: wrong option or value: %.*s (--help tells)\n", program_, static_cast<int>(option.size()),
               option.data());
  std::exit(2);
}

void CommonOptions::AddCommon(CommandLine& commandLine) {
  commandLine.Text("--link", link);
  commandLine.Text("--journal", journal);
  commandLine.Number("--seed", seed);
}

std::string Unescape(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != '\\' || at + 1 == text.size()) {
      plain += text[at];
      continue;
    }
    const char kind = text[++at];
    if (kind == 'x' && at + 2 < text.size()) {
      plain += static_cast<char>(std::strtol(std::string(text.substr(at + 1, 2)).c_str(), nullptr, 16));
      at += 2;
    } else {
      plain += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
    }
  }
  return plain;
}

}  // namespace sim
