#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/errors.h"
#include "base/language.h"
#include "platform/loop/gate.h"

namespace velk {

enum class Buttons { Ok, YesNo, RetryCancel };
enum class BoxIcon { None, Information, Question, Exclamation, Critical };
enum class Answer { Ok, Cancel, Yes, No, Retry };

/// One message box. An empty title shows the program's name.
struct MessageBox {
  OperatorText text;
  OperatorText title = {};
  Buttons buttons = Buttons::Ok;
  BoxIcon icon = BoxIcon::None;
  std::optional<ErrorNumber> error = {};  ///< what it tells of, where that is a run-time error
  std::string subject = {};               ///< by which Retell finds it; empty: its text never changes
  bool safeDefault = false;               ///< Enter answers what Escape does: Yes would lose something
  int helpTopic = 0;                      ///< the page that F1 opens; 0: that of the window below
};

struct FileQuestion {
  OperatorText title;
  OperatorText filter;    ///< "Data files (*.mdb)|*.mdb"
  std::string directory;  ///< where the dialog starts; the home folder where there is no such one
  std::string name = {};  ///< of the file that is offered
};

/// A choice from a list.
struct ListQuestion {
  OperatorText title;
  OperatorText prompt;
  std::vector<std::string> entries;  ///< not translated: names that the operator gave, or words of the program's data
  bool mayEnter = false;             ///< another text than those of the list may be entered
  int helpTopic = 0;                 ///< the page that F1 opens; 0: that of the window below
};

struct FontChoice {
  std::string family;
  int size = 10;  ///< points
  bool bold = false;
  bool italic = false;

  bool operator==(const FontChoice&) const = default;
};

/// A message box in the operator's language.
struct ShownMessage {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::Ok;
  BoxIcon icon = BoxIcon::None;
  std::optional<ErrorNumber> error = {};
  std::string subject = {};
  bool safeDefault = false;
  int helpTopic = 0;
};

/// A question for a file in the operator's language.
struct ShownFileQuestion {
  std::string title;
  std::string filter;
  std::string directory;
  std::string name = {};
};

/// A choice from a list in the operator's language.
struct ShownListQuestion {
  std::string title;
  std::string prompt;
  std::vector<std::string> entries;
  bool mayEnter = false;
  int helpTopic = 0;
};

/// How far a long task is, on the screen. It stands over the window that began the task from the first moment on, so
/// that nothing there is begun a second time, and is seen once it appears.
class ProgressBox {
 public:
  virtual ~ProgressBox() = default;
  virtual void Appear() = 0;
  /// `doing` in the operator's language, and from 0 to 1 how much of it is done; below 0 nobody knows.
  virtual void Show(const std::string& doing, double share) = 0;
  /// Cancel was pressed, or the box was closed.
  virtual bool IsCancelled() const = 0;
};

/// Every box of the program goes through here: messages, inputs, lists, files, colours, fonts, progress. A box lets
/// events run, and opens the gate while it stands: the samples behind it go on. Tests script the answers
/// (tests/support/scripted_dialogs.h).
class Dialogs {
 public:
  /// Texts are shown in this language; it outlives the boxes.
  Dialogs(Gate& gate, const Language& language) : gate_(gate), language_(language) {}
  virtual ~Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;

  /// Shows a message and waits for the answer. Closing an Ok box answers Ok, a YesNo box No, a RetryCancel box Cancel.
  Answer Message(const MessageBox& box);
  /// Puts another text into the message boxes of this subject that stand, wherever they lie. Without one: nothing.
  void Retell(const std::string& subject, const OperatorText& text);
  /// A line of text; nothing on Cancel.
  std::optional<std::string> Input(const OperatorText& prompt, const OperatorText& title,
                                   const std::string& preset = {});
  /// A file that is there; nothing on Cancel.
  std::optional<std::string> OpenFile(const FileQuestion& question);
  /// A path to save to, with no question of the toolkit's own about overwriting; nothing on Cancel.
  std::optional<std::string> SaveFile(const FileQuestion& question);
  /// A text of the list, or one that was entered, blanks included and never empty; nothing on Cancel.
  std::optional<std::string> Choose(const ListQuestion& question);
  /// A colour, 0x00bbggrr; nothing on Cancel.
  std::optional<std::int32_t> Colour(const OperatorText& title, std::int32_t initial);
  /// A font of the desktop; nothing on Cancel.
  std::optional<FontChoice> Font(const FontChoice& initial);
  /// Runs a dialog of the program's own (frmFileExist, ...) under the same rules as the boxes above.
  void Modal(const std::function<void()>& show);

  /// The box of a long task while the task runs; see long_task.h, which is what makes one.
  class Progress {
   public:
    Progress(Dialogs& dialogs, const OperatorText& title);
    /// Shown by a window of the caller's.
    Progress(Dialogs& dialogs, std::unique_ptr<ProgressBox> box);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Appear();
    void Show(const OperatorText& doing, double share);
    /// By the operator, or because the program ends.
    bool IsCancelled() const;

   private:
    Dialogs& dialogs_;
    const GateState open_;
    std::unique_ptr<ProgressBox> box_;  ///< null at the program's end and where nobody is there
  };

  /// The box of a failed statement: `text` with Retry and Cancel. While a box of the same `procedure` stands, no second
  /// one comes and the answer is Cancel. See procedure.h.
  Answer ProcedureError(const std::string& procedure, const MessageBox& box);

  /// Runs once, ahead of the next box: what must not wait for the operator. The running sample sets it, to get its row
  /// to the log and to let later samples pass.
  std::function<void()> beforeBox;

  /// Boxes and dialogs that stand, one on top of the other: what lies below the topmost waits for its answer.
  int Standing() const { return boxes_; }
  /// Long tasks that are on the stack, one on top of the other.
  int LongTasks() const { return longTasks_; }
  /// The topmost was answered already: whoever shows it goes on once what was begun behind it has left the stack.
  virtual bool TopIsAnswered() const { return false; }

  /// From the end of the program on: every box answers Cancel (or No) without being shown, and one that stands closes.
  void SetEnding();
  bool IsEnding() const { return ending_; }

 protected:
  virtual Answer ShowMessage(const ShownMessage& box) = 0;
  virtual std::optional<std::string> ShowInput(const std::string& prompt, const std::string& title,
                                               const std::string& preset) = 0;
  virtual std::optional<std::string> ShowOpenFile(const ShownFileQuestion& question) = 0;
  virtual std::optional<std::string> ShowSaveFile(const ShownFileQuestion& question) = 0;
  // Where nobody is to answer, these are cancelled and a long task runs without a box.
  virtual std::optional<std::string> ShowList(const ShownListQuestion&) { return std::nullopt; }
  virtual std::optional<std::int32_t> ShowColour(const std::string& /*title*/, std::int32_t) { return std::nullopt; }
  virtual std::optional<FontChoice> ShowFont(const FontChoice&) { return std::nullopt; }
  virtual std::unique_ptr<ProgressBox> MakeProgress(const std::string& /*title*/) { return nullptr; }
  virtual void ShowText(const std::string& /*subject*/, const std::string& /*text*/) {}
  /// Closes the boxes that stand, with their safe answers.
  virtual void CloseStanding() {}

  std::string InLanguage(const OperatorText& text) const { return language_.In(text); }
  const Language& ShownLanguage() const { return language_; }

 private:
  template <class Show>
  auto WithGateOpen(Show&& show);
  ShownFileQuestion Shown(const FileQuestion& question) const;

  Gate& gate_;
  const Language& language_;
  std::set<std::string> standing_;
  int boxes_ = 0;
  int longTasks_ = 0;
  bool ending_ = false;
};

}  // namespace velk
