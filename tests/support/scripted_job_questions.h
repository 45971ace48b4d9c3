#pragma once

#include <functional>
#include <string>
#include <vector>

#include "log/job_questions.h"

namespace velk::test {

/// Answers the questions about a job's file and remembers what was asked.
class ScriptedJobQuestions : public JobQuestions {
 public:
  struct Asked {
    std::string oldName;
    bool compatible;
    bool sameOrder;
    std::string newName;
    std::string whyNot;
  };

  FileChoice AppendOrCreate(const ExistingLog& log) override {
    asked.push_back({log.oldName, log.compatible, log.sameOrder, log.newName, log.whyNot.English()});
    return choice;
  }

  void IncludeInSummary(SummaryInclusion& inclusion) override {
    inclusions.push_back(inclusion);
    if (include) include(inclusion);
  }

  FileChoice choice = FileChoice::None;
  std::function<void(SummaryInclusion&)> include;  ///< what the operator does in the dialog; none: closes it as it is
  std::vector<Asked> asked;
  std::vector<SummaryInclusion> inclusions;
};

}  // namespace velk::test
