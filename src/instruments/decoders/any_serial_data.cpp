#include "instruments/decoders/any_serial_data.h"

#include "instruments/reading/get_field.h"

namespace velk {

void AnySerialData(std::string& line) {
  line = CleanUp(std::move(line));
}

const Decoder decoder::AnySerialData{.procedure = "Any Serial Data",
                                     .check = [](std::string& line, const Decoding&) { velk::AnySerialData(line); }};

}  // namespace velk
