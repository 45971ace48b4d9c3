#include "log/log_rows.h"

#include <algorithm>

#include "base/errors.h"
#include "log/log_reader.h"

namespace velk {

namespace {

constexpr int kPageRows = 256;

}  // namespace

bool LogRows::First() {
  rest_ = span_ ? span_ : reader_.Find(filter_);
  return ReadPage();
}

bool LogRows::Seek(double time) {
  rest_ = span_ ? span_ : reader_.Find(filter_);
  const std::vector<LogRow> first = reader_.Page({time, {}, RowFilter::Compare::Sum}, 1);
  if (first.empty()) rest_.reset();
  if (rest_) rest_->first = std::max(rest_->first, first[0].key);
  if (rest_ && rest_->first > rest_->last) rest_.reset();
  return ReadPage();
}

bool LogRows::Next() {
  if (present_ < page_.size()) ++present_;
  return present_ < page_.size() || ReadPage();
}

bool LogRows::ReadPage() {
  page_.clear();
  present_ = 0;
  if (!rest_) return false;
  page_ = reader_.Page(filter_, *rest_, kPageRows);
  if (page_.empty()) return false;
  if (page_.back().key == rest_->last)
    rest_.reset();
  else
    rest_->first = page_.back().key + 1;
  return true;
}

const LogRow& LogRows::Row() const {
  if (present_ >= page_.size()) throw RuntimeError(ErrorNumber::NoCurrentRecord);
  return page_[present_];
}

}  // namespace velk
