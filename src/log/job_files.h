#pragma once

#include <string>

#include "log/job_questions.h"
#include "log/told_once.h"
#include "model/graph_window.h"
#include "model/session.h"
#include "platform/platform.h"

namespace velk {

/// What is asked and looked at before a job's file is made or appended to. No file is open meanwhile. Failures raise a
/// RuntimeError whose text names the file.
class JobFiles {
 public:
  JobFiles(Session& session, const Platform& platform, JobQuestions& questions, GraphWindows& graphs)
      : session_(session), platform_(platform), questions_(questions), graphs_(graphs), told_(platform.dialogs) {}

  /// Whether a file can take rows of the present channels. Of two channels with the same name the operator is asked to
  /// rename the later one; the new name stays, whatever the answer is in the end. False for a database without a log,
  /// too.
  bool IsCompatibleLog(const std::string& path);
  /// Whether the columns of a file stand in the order of the present channels.
  bool HasSameColumnOrder(const std::string& path);
  /// Asks what to do with a file that is there; `newName` is that of a new one. Raises FileAlreadyOpen where another
  /// program records to it. One that is appended to is read first, as far as the operator lets it: where it is damaged
  /// he is offered a new one, and none is chosen where he takes neither.
  FileChoice AppendOrCreate(const std::string& path, const std::string& newName);
  /// Removes what broken-off programs left of files with this name, and tells of what can't be removed.
  void ClearParts(const std::string& path);
  /// Asks what the report of a new file gets, for the session to note. Raises first where such a file can't be made.
  void AskForNewFile(const std::string& path);

 private:
  bool HasNameOfEarlierChannel(int channel) const;
  bool AskForOtherName(int channel);
  bool IsWhole(const std::string& path);
  /// Notes why a file is not compatible; gives false.
  bool IsNot(OperatorText compatible);

  Session& session_;
  const Platform& platform_;
  JobQuestions& questions_;
  GraphWindows& graphs_;
  ToldOnce told_;
  OperatorText whyNot_;  ///< the file that was looked at last is not compatible
};

}  // namespace velk
