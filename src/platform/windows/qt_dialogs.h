#pragma once

#include <QDialog>
#include <QFileDialog>
#include <QPointer>
#include <QString>
#include <string>

#include "platform/dialogs/dialogs.h"

namespace velk {

/// The boxes on the screen. Each is modal to the window that it stands over and runs an event loop of its own, so
/// timers, lines and drawing go on behind it.
class QtDialogs : public Dialogs {
 public:
  using Dialogs::Dialogs;

  /// The main window: where boxes stand when none of the program's windows is active.
  void SetParent(QWidget* parent) { parent_ = parent; }

  bool TopIsAnswered() const override;

 protected:
  Answer ShowMessage(const ShownMessage& box) override;
  std::optional<std::string> ShowInput(const std::string& prompt, const std::string& title,
                                       const std::string& preset) override;
  std::optional<std::string> ShowOpenFile(const ShownFileQuestion& question) override;
  std::optional<std::string> ShowSaveFile(const ShownFileQuestion& question) override;
  std::optional<std::string> ShowList(const ShownListQuestion& question) override;
  std::optional<std::int32_t> ShowColour(const std::string& title, std::int32_t initial) override;
  std::optional<FontChoice> ShowFont(const FontChoice& initial) override;
  std::unique_ptr<ProgressBox> MakeProgress(const std::string& title) override;
  void ShowText(const std::string& subject, const std::string& text) override;
  void CloseStanding() override;

 private:
  /// Shows the dialog until it is answered; false when it was cancelled or went away with its window.
  bool Run(const QPointer<QDialog>& dialog);
  /// The path that was chosen in a file dialog made ready by the caller, which goes.
  std::optional<std::string> RunFiles(const QPointer<QFileDialog>& files, const ShownFileQuestion& question);
  QWidget* Owner() const;
  /// Our words on the buttons of a box of the toolkit's.
  void NameButtons(QDialog& dialog) const;
  QString TextOf(const MessageText& text) const;
  QString Title(const std::string& title) const;

  QPointer<QWidget> parent_;
};

/// "Data files (*.mdb)|*.mdb|All files (*.*)|*.*" in the toolkit's form: "Data files (*.mdb);;All files (*)".
QString FileFilter(const std::string& filter);

}  // namespace velk
