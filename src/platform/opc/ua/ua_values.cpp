#include "platform/opc/ua/ua_values.h"

#include <open62541/types_generated.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>

#include "base/dates.h"
#include "platform/opc/opc_transport.h"
#include "platform/opc/ua/ua_owned.h"

namespace velk::ua {

namespace {

constexpr UA_UInt32 kEnumeration = 29;
constexpr UA_UInt32 kNumber = 26;
constexpr UA_UInt32 kUtcTime = 294;
constexpr UA_UInt32 kDuration = 290;

/// At most kMostBytes of a text, without the front half of a letter.
std::string Within(const UA_String& text) {
  std::size_t length = std::min(text.length, kMostBytes);
  const auto isInside = [&](std::size_t at) { return at < text.length && (text.data[at] & 0xC0U) == 0x80U; };
  while (length > 0 && isInside(length)) --length;
  return length == 0 ? std::string() : std::string(reinterpret_cast<const char*>(text.data), length);
}

/// One element of a builtin type.
std::optional<OpcElement> ElementOf(const void* data, UA_UInt32 kind) {
  switch (kind) {
    case UA_DATATYPEKIND_BOOLEAN:
      return OpcElement(*static_cast<const UA_Boolean*>(data));
    case UA_DATATYPEKIND_SBYTE:
      return OpcElement(std::int16_t{*static_cast<const UA_SByte*>(data)});
    case UA_DATATYPEKIND_BYTE:
      return OpcElement(*static_cast<const UA_Byte*>(data));
    case UA_DATATYPEKIND_INT16:
      return OpcElement(*static_cast<const UA_Int16*>(data));
    case UA_DATATYPEKIND_UINT16:
      return OpcElement(std::int32_t{*static_cast<const UA_UInt16*>(data)});
    case UA_DATATYPEKIND_ENUM:
    case UA_DATATYPEKIND_INT32:
      return OpcElement(*static_cast<const UA_Int32*>(data));
    case UA_DATATYPEKIND_STATUSCODE:
    case UA_DATATYPEKIND_UINT32:
      return OpcElement(static_cast<double>(*static_cast<const UA_UInt32*>(data)));
    case UA_DATATYPEKIND_INT64:
      return OpcElement(static_cast<double>(*static_cast<const UA_Int64*>(data)));
    case UA_DATATYPEKIND_UINT64:
      return OpcElement(static_cast<double>(*static_cast<const UA_UInt64*>(data)));
    case UA_DATATYPEKIND_FLOAT:
      return OpcElement(*static_cast<const UA_Float*>(data));
    case UA_DATATYPEKIND_DOUBLE:
      return OpcElement(*static_cast<const UA_Double*>(data));
    case UA_DATATYPEKIND_STRING:
      return OpcElement(Within(*static_cast<const UA_String*>(data)));
    case UA_DATATYPEKIND_LOCALIZEDTEXT:
      return OpcElement(Within(static_cast<const UA_LocalizedText*>(data)->text));
    case UA_DATATYPEKIND_DATETIME:
      return OpcElement(OpcDate{DaysOf(*static_cast<const UA_DateTime*>(data))});
    default:
      return std::nullopt;
  }
}

template <class Whole>
bool PutWhole(const OpcElement& element, void* to) {
  const std::optional<OpcElement> number = Converted(element, OpcType::Double);
  if (!number) return false;
  const double value = std::nearbyint(std::get<double>(*number));
  // The largest numbers of 64 bits are none of Double's, which rounds them up beyond the type.
  constexpr double kEnd = 2.0 * static_cast<double>(Whole{1} << (std::numeric_limits<Whole>::digits - 1));
  if (!(value >= static_cast<double>(std::numeric_limits<Whole>::min()) && value < kEnd)) return false;
  *static_cast<Whole*>(to) = static_cast<Whole>(value);
  return true;
}

template <class Held>
bool PutAs(const OpcElement& element, OpcType type, void* to) {
  const std::optional<OpcElement> converted = Converted(element, type);
  if (converted) *static_cast<Held*>(to) = std::get<Held>(*converted);
  return converted.has_value();
}

/// Puts an element into the room of one of a builtin type.
bool Put(const OpcElement& element, UA_UInt32 kind, void* to) {
  switch (kind) {
    case UA_DATATYPEKIND_BOOLEAN:
      return PutAs<bool>(element, OpcType::Boolean, to);
    case UA_DATATYPEKIND_SBYTE:
      return PutWhole<UA_SByte>(element, to);
    case UA_DATATYPEKIND_BYTE:
      return PutWhole<UA_Byte>(element, to);
    case UA_DATATYPEKIND_INT16:
      return PutWhole<UA_Int16>(element, to);
    case UA_DATATYPEKIND_UINT16:
      return PutWhole<UA_UInt16>(element, to);
    case UA_DATATYPEKIND_INT32:
      return PutWhole<UA_Int32>(element, to);
    case UA_DATATYPEKIND_UINT32:
      return PutWhole<UA_UInt32>(element, to);
    case UA_DATATYPEKIND_INT64:
      return PutWhole<UA_Int64>(element, to);
    case UA_DATATYPEKIND_UINT64:
      return PutWhole<UA_UInt64>(element, to);
    case UA_DATATYPEKIND_FLOAT:
      return PutAs<float>(element, OpcType::Float, to);
    case UA_DATATYPEKIND_DOUBLE:
      return PutAs<double>(element, OpcType::Double, to);
    default:
      break;
  }
  const std::optional<OpcElement> text = Converted(element, OpcType::String);
  const std::optional<OpcElement> date = Converted(element, OpcType::Date);
  if (kind == UA_DATATYPEKIND_STRING) *static_cast<UA_String*>(to) = CopyOf(std::get<std::string>(*text));
  if (kind == UA_DATATYPEKIND_LOCALIZEDTEXT)
    static_cast<UA_LocalizedText*>(to)->text = CopyOf(std::get<std::string>(*text));
  if (kind == UA_DATATYPEKIND_DATETIME && date) *static_cast<UA_DateTime*>(to) = TimeOf(std::get<OpcDate>(*date).day);
  return kind == UA_DATATYPEKIND_STRING || kind == UA_DATATYPEKIND_LOCALIZEDTEXT ||
         (kind == UA_DATATYPEKIND_DATETIME && date);
}

/// The builtin type in which a node of this data type is written; null for what has none.
const UA_DataType* BuiltinOf(const UA_NodeId& dataType) {
  if (dataType.namespaceIndex == 0 && dataType.identifierType == UA_NODEIDTYPE_NUMERIC) {
    if (dataType.identifier.numeric == kEnumeration) return &UA_TYPES[UA_TYPES_INT32];
    if (dataType.identifier.numeric == kUtcTime) return &UA_TYPES[UA_TYPES_DATETIME];
    if (dataType.identifier.numeric == kDuration || dataType.identifier.numeric == kNumber)
      return &UA_TYPES[UA_TYPES_DOUBLE];
  }
  return UA_findDataType(&dataType);
}

}  // namespace

std::optional<OpcType> TypeOf(const UA_NodeId& dataType) {
  const UA_DataType* const type = BuiltinOf(dataType);
  if (type == nullptr) return std::nullopt;
  switch (type->typeKind) {
    case UA_DATATYPEKIND_BOOLEAN:
      return OpcType::Boolean;
    case UA_DATATYPEKIND_BYTE:
      return OpcType::Byte;
    case UA_DATATYPEKIND_SBYTE:
    case UA_DATATYPEKIND_INT16:
      return OpcType::Short;
    case UA_DATATYPEKIND_UINT16:
    case UA_DATATYPEKIND_ENUM:
    case UA_DATATYPEKIND_INT32:
      return OpcType::Long;
    case UA_DATATYPEKIND_UINT32:
    case UA_DATATYPEKIND_STATUSCODE:
    case UA_DATATYPEKIND_INT64:
    case UA_DATATYPEKIND_UINT64:
    case UA_DATATYPEKIND_DOUBLE:
      return OpcType::Double;
    case UA_DATATYPEKIND_FLOAT:
      return OpcType::Float;
    case UA_DATATYPEKIND_STRING:
    case UA_DATATYPEKIND_LOCALIZEDTEXT:
      return OpcType::String;
    case UA_DATATYPEKIND_DATETIME:
      return OpcType::Date;
    default:
      return std::nullopt;
  }
}

std::optional<OpcValue> ValueOf(const UA_Variant& variant) {
  if (variant.type == nullptr) return std::nullopt;
  OpcValue value;
  value.isArray = !UA_Variant_isScalar(&variant);
  const std::size_t count = value.isArray ? variant.arrayLength : 1;
  if (count > kMostElements) return std::nullopt;
  const auto* data = static_cast<const char*>(variant.data);
  for (std::size_t i = 0; i < count; ++i, data += variant.type->memSize) {
    std::optional<OpcElement> element = ElementOf(data, variant.type->typeKind);
    if (!element) return std::nullopt;
    value.elements.push_back(std::move(*element));
  }
  return value;
}

bool ToVariant(const OpcValue& value, const UA_NodeId& dataType, UA_Variant& variant) {
  const UA_DataType* type = BuiltinOf(dataType);
  if (type == nullptr || (value.elements.empty() && !value.isArray)) return false;
  if (type->typeKind == UA_DATATYPEKIND_ENUM) type = &UA_TYPES[UA_TYPES_INT32];
  const std::size_t count = value.elements.size();
  void* const data = UA_Array_new(count, type);
  bool isWhole = true;
  auto* to = static_cast<char*>(data);
  for (std::size_t i = 0; i < count && isWhole; ++i, to += type->memSize)
    isWhole = Put(value.elements[i], type->typeKind, to);
  if (!isWhole) {
    UA_Array_delete(data, count, type);
    return false;
  }
  if (value.isArray) {
    UA_Variant_setArray(&variant, data, count, type);
  } else {
    UA_Variant_setScalar(&variant, data, type);
  }
  return true;
}

std::int32_t QualityOf(UA_StatusCode status) {
  constexpr UA_StatusCode kKind = 0xC0000000;
  constexpr UA_StatusCode kWithoutInfo = 0xFFFF0000;
  switch (status & kWithoutInfo) {
    case UA_STATUSCODE_GOODLOCALOVERRIDE:
      return kOpcQualityGood | 24;
    case UA_STATUSCODE_BADCONFIGURATIONERROR:
      return kOpcQualityBad | 4;
    case UA_STATUSCODE_BADNOTCONNECTED:
      return kOpcQualityBad | 8;
    case UA_STATUSCODE_BADDEVICEFAILURE:
      return kOpcQualityBad | 12;
    case UA_STATUSCODE_BADSENSORFAILURE:
      return kOpcQualityBad | 16;
    case UA_STATUSCODE_BADCOMMUNICATIONERROR:
    case UA_STATUSCODE_BADNOCOMMUNICATION:
      return kOpcQualityBad | 24;
    case UA_STATUSCODE_BADOUTOFSERVICE:
      return kOpcQualityBad | 28;
    case UA_STATUSCODE_BADWAITINGFORINITIALDATA:
      return kOpcQualityBad | 32;
    case UA_STATUSCODE_UNCERTAINNOCOMMUNICATIONLASTUSABLEVALUE:
    case UA_STATUSCODE_UNCERTAINLASTUSABLEVALUE:
      return kOpcQualityUncertain | 4;
    case UA_STATUSCODE_UNCERTAINSENSORNOTACCURATE:
      return kOpcQualityUncertain | 16;
    case UA_STATUSCODE_UNCERTAINENGINEERINGUNITSEXCEEDED:
      return kOpcQualityUncertain | 20;
    case UA_STATUSCODE_UNCERTAINSUBNORMAL:
      return kOpcQualityUncertain | 24;
    default:
      break;
  }
  if ((status & kKind) == 0) return kOpcQualityGood;
  return (status & kKind) == 0x40000000 ? kOpcQualityUncertain : kOpcQualityBad;
}

double DaysOf(UA_DateTime time) {
  if (time <= 0) return 0;
  const std::int64_t unixTicks = time - UA_DATETIME_UNIX_EPOCH;
  const auto seconds = static_cast<std::time_t>(std::floor(static_cast<double>(unixTicks) / UA_DATETIME_SEC));
  std::tm parts{};
  if (localtime_r(&seconds, &parts) == nullptr || parts.tm_year + 1900 < 100 || parts.tm_year + 1900 > 9999) return 0;
  const double fraction = static_cast<double>(unixTicks - seconds * UA_DATETIME_SEC) / UA_DATETIME_SEC;
  return JoinDateTime(DateSerial(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday),
                      TimeOfDay(parts.tm_hour, parts.tm_min, parts.tm_sec + fraction));
}

UA_DateTime TimeOf(double days) {
  const DateParts parts = Split(days);
  std::tm local{};
  local.tm_year = parts.year - 1900;
  local.tm_mon = parts.month - 1;
  local.tm_mday = parts.day;
  local.tm_hour = parts.hour;
  local.tm_min = parts.minute;
  local.tm_sec = parts.second;
  local.tm_isdst = -1;
  const UA_DateTime seconds = std::mktime(&local);
  return seconds * UA_DATETIME_SEC + parts.millisecond * UA_DATETIME_MSEC + UA_DATETIME_UNIX_EPOCH;
}

}  // namespace velk::ua
