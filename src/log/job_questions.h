#pragma once

#include <string>
#include <vector>

namespace velk {

enum class FileChoice {
  None,  ///< the question was closed without an answer
  Append,
  CreateNew,
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

  /// The chosen file is there already. `compatible`: it has a column for each channel, else it can't be appended to;
  /// `sameOrder`: they stand in the order of the channels.
  virtual FileChoice AppendOrCreate(const std::string& oldName, bool compatible, bool sameOrder) = 0;
  /// Takes the present choice and changes it to the one made; leaves it where the dialog is closed without an answer.
  virtual void IncludeInSummary(SummaryInclusion& inclusion) = 0;
};

}  // namespace velk
