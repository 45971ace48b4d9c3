#include "journal.h"

#include <cstdlib>
#include <ctime>

namespace sim {

namespace {

void Print(std::FILE* file, unsigned char byte) {
  switch (byte) {
    case '\r':
      std::fputs("\\r", file);
      return;
    case '\n':
      std::fputs("\\n", file);
      return;
    case '\t':
      std::fputs("\\t", file);
      return;
    case '\\':
      std::fputs("\\\\", file);
      return;
    default:
      break;
  }
  if (byte < 32 || byte > 126)
    std::fprintf(file, "\\x%02X", byte);
  else
    std::fputc(byte, file);
}

}  // namespace

Journal::Journal(const std::string& path) {
  if (path.empty()) return;
  file_ = std::fopen(path.c_str(), "w");
  if (file_ != nullptr) return;
  std::perror(path.c_str());
  std::exit(1);
}

Journal::~Journal() {
  if (file_ != nullptr) std::fclose(file_);
}

void Journal::Write(const char* kind, const std::string& frame) {
  if (file_ == nullptr) return;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  std::fprintf(file_, "%lld.%03ld\t%s\t", static_cast<long long>(now.tv_sec), now.tv_nsec / 1'000'000, kind);
  for (const char byte : frame) Print(file_, static_cast<unsigned char>(byte));
  std::fputc('\n', file_);
  std::fflush(file_);
}

}  // namespace sim
