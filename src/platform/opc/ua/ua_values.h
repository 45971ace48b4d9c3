#pragma once

#include <open62541/types.h>

#include <optional>

#include "platform/opc/opc_value.h"

namespace velk::ua {

/// The type that values of a data type have here: whole numbers without a type of their own become the next larger
/// one, numbers of 64 bits Double, an enumeration Long. Nothing for structures.
std::optional<OpcType> TypeOf(const UA_NodeId& dataType);

/// A value that came. Nothing where it is none of the types, or has more elements than kMostElements.
std::optional<OpcValue> ValueOf(const UA_Variant& value);
inline constexpr std::size_t kMostElements = 100000;
/// Bytes of a text; what lies behind is left away.
inline constexpr std::size_t kMostBytes = 65536;

/// A value in the data type that the server keeps a node in; `variant` is cleared by the caller. False where there is
/// no way there.
bool ToVariant(const OpcValue& value, const UA_NodeId& dataType, UA_Variant& variant);

/// 192, 64 or 0 and the sub-code where there is one.
std::int32_t QualityOf(UA_StatusCode status);

/// Local wall clock in days; 0 for no time.
double DaysOf(UA_DateTime time);
/// The same in days from a local wall clock to the library's time.
UA_DateTime TimeOf(double days);

}  // namespace velk::ua
