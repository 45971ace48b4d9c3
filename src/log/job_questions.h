#pragma once

#include <string>
#include <vector>

#include "base/operator_text.h"

namespace velk {

enum class FileChoice {
  None,  ///< the question was closed without an answer
  Append,
  CreateNew,
};

/// A log that is there already.
struct ExistingLog {
  std::string oldName;
  std::string newName;       ///< of the file that is made beside it where the operator wants a new one
  bool compatible = true;    ///< it has a column for each channel, else it can't be appended to
  bool sameOrder = true;     ///< they stand in the order of the channels
  OperatorText whyNot = {};  ///< it is not compatible
};

/// What a row of the summary report holds.
struct SummaryInclusion {
  struct Entry {
    int parameter;  ///< number of the channel
    std::string name;
    bool included;
  };
  std::vector<Entry> parameters;
  std::vector<std::string> extraFields;  ///< names of the fields that are entered by hand, at most kMaxExtraFields
};

inline constexpr int kMaxExtraFields = 4;

/// What the operator is asked about a job's file. Behind it are frmFileExist and frmIncParamInSum.
class JobQuestions {
 public:
  virtual ~JobQuestions() = default;

  virtual FileChoice AppendOrCreate(const ExistingLog& log) = 0;
  /// Takes the present choice and changes it to the one made; leaves it where the dialog is closed without an answer.
  virtual void IncludeInSummary(SummaryInclusion& inclusion) = 0;
};

}  // namespace velk
