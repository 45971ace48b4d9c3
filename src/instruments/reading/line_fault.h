#pragma once

namespace velk {

/// Why a line's values are not taken.
enum class LineFault {
  None,
  CheckFailed,      ///< its protocol's check does not find the line's form
  FieldMissing,     ///< it ends ahead of its last parameter
  FieldNotDecimal,  ///< a value holds what no decimal number holds
  BeyondRange,      ///< a value, as sent or scaled, is beyond the 32-bit range
  NoDate            ///< its first field is no date
};

}  // namespace velk
