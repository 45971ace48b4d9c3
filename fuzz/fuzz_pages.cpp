// Any page of a networked unit: its readers give a line with the asked count of values or raise what a damaged page
// raises.

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "base/errors.h"
#include "instruments/decoders/page_readers.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

template <class Read>
void Check(Read read) {
  try {
    read();
  } catch (const RuntimeError& error) {
    Require(error.Number() == ErrorNumber::InvalidArgument || error.Number() == ErrorNumber::Overflow);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const int parameters = data[0] & 7;
  const std::string page(data + 1, data + size);
  Check([&] { Require(LineFromNamedCells(page, "09:30:15", parameters).starts_with("09:30:15")); });
  Check([&] {
    const std::string line = LineFromPanelPage(page, "09:30:15", parameters);
    Require(std::count(line.begin(), line.end(), ' ') == parameters);
  });
  Check([&] { Require(LineFromTable(page, ",").size() <= 8 + 65 * (page.size() + 1)); });
  const std::string trimmed = TrimPageText(page);
  Require(page.ends_with(trimmed) && TrimPageText(trimmed) == trimmed);
  return 0;
}
