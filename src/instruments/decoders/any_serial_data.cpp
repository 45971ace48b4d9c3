#include "instruments/decoders/any_serial_data.h"

#include "instruments/reading/get_field.h"

namespace velk {

void AnySerialData(std::string& line) {
  line = CleanUp(std::move(line));
}

}  // namespace velk
