// Preloaded into a program by start_bench: writes the time at which the program's first window stands painted on the
// screen to the file that VELK_FIRST_PAINT_FD names, as a std::int64_t of nanoseconds. The program itself knows nothing
// of being measured.

#include <dlfcn.h>
#include <unistd.h>

#include <QBackingStore>
#include <QWindow>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <utility>

namespace {

/// The toolkit's own, which the one below hides.
using Flush = void (*)(QBackingStore*, const QRegion&, QWindow*, const QPoint&);

void TellTime() {
  const char* const place = std::getenv("VELK_FIRST_PAINT_FD");
  if (place == nullptr) return;
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  const std::int64_t nanoseconds = std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  if (write(std::atoi(place), &nanoseconds, sizeof nanoseconds) != sizeof nanoseconds) std::abort();
}

}  // namespace

/// Where the toolkit hands what was painted to the screen.
void QBackingStore::flush(const QRegion& region, QWindow* window, const QPoint& offset) {
  static const auto flush =
      reinterpret_cast<Flush>(dlsym(RTLD_NEXT, "_ZN13QBackingStore5flushERK7QRegionP7QWindowRK6QPoint"));
  flush(this, region, window, offset);
  static bool told = false;
  const bool isMainWindow = window != nullptr && window->type() == Qt::Window;
  if (isMainWindow && !std::exchange(told, true)) TellTime();
}
