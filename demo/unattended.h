#pragma once

#include <cstdio>

#include "log/job_questions.h"
#include "platform/dialogs/dialogs.h"

namespace velk::demo {

/// Nobody is there to answer: boxes go to the error output and get their safe answers.
class UnattendedDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;
  int boxes = 0;

 protected:
  Answer ShowMessage(const ShownMessage& box) override {
    ++boxes;
    std::fprintf(stderr, "box: %s\n", box.text.c_str());
    if (box.buttons == Buttons::YesNo) return Answer::No;
    return box.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
  }
  std::optional<std::string> ShowInput(const std::string&, const std::string&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion&) override { return std::nullopt; }
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion&) override { return std::nullopt; }
};

/// The first parameters that are shown go into the summary report.
class UnattendedQuestions : public JobQuestions {
 public:
  FileChoice AppendOrCreate(const ExistingLog&) override { return FileChoice::None; }
  void IncludeInSummary(SummaryInclusion& inclusion) override {
    for (auto& entry : inclusion.parameters) entry.included = entry.parameter <= 5;
  }
};

}  // namespace velk::demo
