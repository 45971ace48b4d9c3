#pragma once

#include <string>

#include "exchange/export_source.h"

namespace velk {

/// Appends the text of a number that reads back as the same bits: the shortest one, with a point.
void AppendNumber(std::string& to, double value);

/// Writes the fields of one column into text, of which dates come again and again.
class FieldText {
 public:
  /// `xml`: dates as the record set's own form has them, "2026-11-21T10:00:00", else "21-Nov-2026" and "10:00:00".
  FieldText(FieldKind kind, bool xml) : kind_(kind), xml_(xml) {}

  /// Appends a field; nothing for one that is Null. Texts stand as they are, line ends in them as blanks unless `xml`.
  void AppendTo(std::string& to, const Command& row, int column);
  FieldKind Kind() const { return kind_; }

 private:
  void AppendMoment(std::string& to, double value);
  const std::string& Day(double day);

  FieldKind kind_;
  bool xml_;
  double day_ = -1e9;  ///< whose text is kept
  std::string dayText_;
};

}  // namespace velk
