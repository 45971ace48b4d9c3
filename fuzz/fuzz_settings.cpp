// Any bytes as a settings file: reading never fails, what is written reads back whole, and any section, key and value
// survives beside what the file held.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/settings/ini_file.h"

using namespace velk;

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

bool Holds(const IniFile& file, std::string_view section, std::string_view key, std::string_view value) {
  const std::string* found = file.Find(section, key);
  return found && *found == value;
}

bool IsWhole(const IniFile& file) {
  return file.BadLines().empty() && !file.IsCutOff() && file.ChangedSections().empty() && file.MissingSections() == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  IniFile file(bytes);
  const std::string text = file.Text();
  const IniFile again(text);
  Require(IsWhole(again));
  Require(again.Text() == text);

  // Three pieces of the same bytes as section, key and value.
  const std::string_view all = bytes;
  const std::size_t third = size / 3;
  const std::string_view section = all.substr(0, third);
  const std::string_view key = all.substr(third, third);
  const std::string_view value = all.substr(2 * third);
  const bool wasThere = Holds(file, section, key, value);
  Require(file.Set(section, key, value) != wasThere);
  Require(!file.Set(section, key, value));
  const IniFile changed(file.Text());
  Require(IsWhole(changed) && Holds(changed, section, key, value));

  Require(file.Delete(section));
  Require(!file.Find(section, key));
  Require(IsWhole(IniFile(file.Text())));
  return 0;
}
