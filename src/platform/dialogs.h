#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/errors.h"
#include "platform/gate.h"

namespace velk {

enum class Buttons { Ok, YesNo, RetryCancel };
enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class Answer { Ok, Cancel, Yes, No, Retry };

/// One message box. An empty title shows the program's name.
struct MessageBox {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::Ok;
  BoxIcon icon = BoxIcon::None;
};

struct FileQuestion {
  std::string title;
  std::string filter;     ///< "Data files (*.mdb)|*.mdb"
  std::string directory;  ///< where the dialog starts; the home folder where there is no such one
};

/// Every box of the program goes through here: messages, inputs, files. A box lets events run, and opens the gate while
/// it stands: the samples behind it go on. Tests script the answers (tests/support/scripted_dialogs.h).
class Dialogs {
 public:
  explicit Dialogs(Gate& gate) : gate_(gate) {}
  virtual ~Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  /// Shows a message and waits for the answer. Closing an Ok box answers Ok, a YesNo box No, a RetryCancel box Cancel.
  Answer Message(const MessageBox& box);
  /// A line of text; nothing on Cancel.
  std::optional<std::string> Input(const std::string& prompt, const std::string& title, const std::string& preset = {});
  /// A file that is there; nothing on Cancel.
  std::optional<std::string> OpenFile(const FileQuestion& question);
  /// A path to save to, with no question of the toolkit's own about overwriting; nothing on Cancel.
  std::optional<std::string> SaveFile(const FileQuestion& question);
  /// Runs a dialog of the program's own (frmFileExist, ...) under the same rules as the boxes above.
  void Modal(const std::function<void()>& show);

  /// The box of a failed statement: `text` with Retry and Cancel. While a box of the same `procedure` stands, no second
  /// one comes and the answer is Cancel. See procedure.h.
  Answer ProcedureError(const std::string& procedure, const MessageBox& box);

  /// Runs once, ahead of the next box: what must not wait for the operator. The running sample sets it, to get its row
  /// to the log and to let later samples pass.
  std::function<void()> beforeBox;

  /// Boxes and dialogs that stand, one on top of the other: what lies below the topmost waits for its answer.
  int Standing() const { return boxes_; }
  /// The topmost was answered already: whoever shows it goes on once what was begun behind it has left the stack.
  virtual bool TopIsAnswered() const { return false; }

  /// The language of what the platform says, in boxes and on their buttons; English until then.
  void SetLanguage(Translate translate) { translate_ = std::move(translate); }
  /// A text as it is shown to the operator.
  std::string InLanguage(const OperatorText& text) const { return translate_ ? text.In(translate_) : text.English(); }

  /// From the end of the program on: every box answers Cancel (or No) without being shown, and one that stands closes.
  void SetEnding();

 protected:
  virtual Answer ShowMessage(const MessageBox& box) = 0;
  virtual std::optional<std::string> ShowInput(const std::string& prompt, const std::string& title,
                                               const std::string& preset) = 0;
  virtual std::optional<std::string> ShowOpenFile(const FileQuestion& question) = 0;
  virtual std::optional<std::string> ShowSaveFile(const FileQuestion& question) = 0;
  /// Closes the boxes that stand, with their safe answers.
  virtual void CloseStanding() {}

 private:
  template <class Show>
  auto WithGateOpen(Show&& show);

  Gate& gate_;
  std::set<std::string> standing_;
  int boxes_ = 0;
  bool ending_ = false;
  Translate translate_;
};

}  // namespace velk
