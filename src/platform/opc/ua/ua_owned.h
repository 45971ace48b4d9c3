#pragma once

#include <open62541/types.h>
#include <open62541/types_generated_handling.h>

#include <string>
#include <string_view>

namespace velk::ua {

/// A structure of the library's with all that it holds.
template <class T>
class Owned {
 public:
  explicit Owned(const UA_DataType& type) : type_(type) { UA_init(&value_, &type_); }
  ~Owned() { UA_clear(&value_, &type_); }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

  T& operator*() { return value_; }
  T* operator->() { return &value_; }

 private:
  T value_;
  const UA_DataType& type_;
};

inline std::string TextOf(const UA_String& text) {
  return text.length == 0 ? std::string() : std::string(reinterpret_cast<const char*>(text.data), text.length);
}

/// A view for the library, which takes no constant texts; it lives as long as `text` does and is never cleared.
inline UA_String ViewOf(std::string_view text) {
  UA_String view;
  view.length = text.size();
  view.data = reinterpret_cast<UA_Byte*>(const_cast<char*>(text.data()));  // NOLINT: read only
  return view;
}

/// A copy that its owner clears.
inline UA_String CopyOf(std::string_view text) {
  UA_String copy;
  const UA_String view = ViewOf(text);
  UA_String_copy(&view, &copy);
  return copy;
}

/// "ns=2;s=Pump".
inline std::string TextOf(const UA_NodeId& id) {
  Owned<UA_String> text(UA_TYPES[UA_TYPES_STRING]);
  UA_NodeId_print(&id, &*text);
  return TextOf(*text);
}

}  // namespace velk::ua
