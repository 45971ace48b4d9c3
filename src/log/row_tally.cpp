#include "log/row_tally.h"

#include <algorithm>

#include "platform/database/command.h"

namespace velk {

std::int64_t RowTally::Follow(Connection& connection, const std::string& key, int most) {
  Command ends(connection, "SELECT (SELECT min(" + key + ") FROM logData), (SELECT max(" + key + ") FROM logData)");
  ends.Next();
  const FieldValue first = ends.Field(0);
  if (!std::holds_alternative<std::int64_t>(first)) {
    *this = RowTally();
    return 0;
  }
  const std::int64_t last = ends.Integer(1);
  const std::int64_t from = upTo_.value_or(std::get<std::int64_t>(first) - 1);
  upTo_ = from;
  if (from < last) {
    Command some(connection, "SELECT count(*), max(k) FROM (SELECT " + key + " AS k FROM logData NOT INDEXED WHERE " +
                                 key + " > ? ORDER BY " + key + " LIMIT ?)");
    some.Bind(1, from).Bind(2, std::int64_t{most});
    some.Next();
    counted_ += some.Integer(0);
    upTo_ = some.Integer(0) > 0 ? some.Integer(1) : last;
  }
  return counted_ + std::max<std::int64_t>(last - *upTo_, 0);
}

}  // namespace velk
