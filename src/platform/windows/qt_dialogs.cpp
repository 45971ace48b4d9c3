#include "platform/windows/qt_dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFontDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <utility>
#include <vector>

#include "base/colour.h"
#include "platform/texts.h"
#include "platform/windows/list_input_box.h"
#include "platform/windows/progress_window.h"

namespace velk {

namespace {

constexpr const char* kSubject = "subject";  ///< a property of message boxes

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      break;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Critical:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

struct ButtonPair {
  Answer enter;   ///< the default button's
  Answer escape;  ///< of Escape and of closing the box
};

ButtonPair AnswersOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      break;
    case Buttons::YesNo:
      return {Answer::Yes, Answer::No};
    case Buttons::RetryCancel:
      return {Answer::Retry, Answer::Cancel};
  }
  return {Answer::Ok, Answer::Ok};
}

const MessageText& CaptionOf(Answer answer) {
  switch (answer) {
    case Answer::Ok:
      break;
    case Answer::Cancel:
      return text::ButtonCancel;
    case Answer::Yes:
      return text::ButtonYes;
    case Answer::No:
      return text::ButtonNo;
    case Answer::Retry:
      return text::ButtonRetry;
  }
  return text::ButtonOk;
}

/// Patterns in the toolkit's form: blanks between them, and a name without a point counts as any file too.
QString Patterns(const QString& patterns) {
  QStringList list = patterns.split(';', Qt::SkipEmptyParts);
  for (QString& pattern : list) {
    pattern = pattern.trimmed();
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
  }
  return list.join(' ');
}

/// The patterns of a filter as the toolkit has it: "JPEG Files (*.jpg *.jpeg)".
QStringList PatternsOf(const QString& filter) {
  const qsizetype bracket = filter.lastIndexOf('(');
  return filter.mid(bracket + 1, filter.lastIndexOf(')') - bracket - 1).split(' ', Qt::SkipEmptyParts);
}

/// Of several filters the one that was chosen gives its ending to a name that has none of theirs.
QString WithEnding(const QString& path, const QFileDialog& files) {
  const QStringList filters = files.nameFilters();
  if (filters.size() < 2) return path;
  for (const QString& filter : filters)
    for (const QString& pattern : PatternsOf(filter))
      if (pattern.startsWith(QLatin1String("*.")) && path.endsWith(pattern.mid(1), Qt::CaseInsensitive)) return path;
  const QStringList chosen = PatternsOf(files.selectedNameFilter());
  return !chosen.isEmpty() && chosen.front().startsWith(QLatin1String("*.")) ? path + chosen.front().mid(1) : path;
}

/// All of the program's, also those that a caller of Modal shows: each has an event loop on the stack.
std::vector<QDialog*> ModalWindowsShown() {
  std::vector<QDialog*> shown;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    auto* dialog = qobject_cast<QDialog*>(window);
    if (dialog && dialog->isVisible() && dialog->isModal()) shown.push_back(dialog);
  }
  return shown;
}

}  // namespace

QString FileFilter(const std::string& filter) {
  const QStringList parts = QString::fromStdString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString name = parts[i];
    const qsizetype bracket = name.lastIndexOf('(');
    if (bracket >= 0 && name.trimmed().endsWith(')')) name.truncate(bracket);
    filters += name.trimmed() + " (" + Patterns(parts[i + 1]) + ')';
  }
  return filters.join(QStringLiteral(";;"));
}

QWidget* QtDialogs::Owner() const {
  if (QWidget* box = QApplication::activeModalWidget()) return box;
  if (QWidget* window = QApplication::activeWindow()) return window;
  return parent_;
}

QString QtDialogs::TextOf(const MessageText& text) const {
  return QString::fromStdString(InLanguage(text));
}

QString QtDialogs::Title(const std::string& title) const {
  return title.empty() ? TextOf(text::ProgramName) : QString::fromStdString(title);
}

bool QtDialogs::Run(const QPointer<QDialog>& dialog) {
  dialog->setWindowModality(Qt::WindowModal);
  return dialog->exec() == QDialog::Accepted && dialog;
}

void QtDialogs::CloseStanding() {
  for (QDialog* dialog : ModalWindowsShown()) dialog->reject();
}

void QtDialogs::ShowText(const std::string& subject, const std::string& text) {
  for (QDialog* dialog : ModalWindowsShown()) {
    auto* const box = qobject_cast<QMessageBox*>(dialog);
    if (box != nullptr && box->property(kSubject).toString().toStdString() == subject)
      box->setText(QString::fromStdString(text));
  }
}

bool QtDialogs::TopIsAnswered() const {
  return static_cast<int>(ModalWindowsShown().size()) < Standing();
}

Answer QtDialogs::ShowMessage(const ShownMessage& message) {
  const ButtonPair answers = AnswersOf(message.buttons);
  const auto caption = [&](Answer answer) { return TextOf(CaptionOf(answer)); };

  // On the heap and watched: the window below may be destroyed while the box stands, and takes the box with it.
  const QPointer<QMessageBox> box = new QMessageBox(Owner());
  box->setWindowTitle(Title(message.title));
  box->setTextFormat(Qt::PlainText);
  box->setText(QString::fromStdString(message.text));
  box->setProperty(kSubject, QString::fromStdString(message.subject));
  if (message.helpTopic != 0) box->setProperty("helpTopic", message.helpTopic);
  box->setIcon(IconOf(message.icon));
  QPushButton* enter = box->addButton(caption(answers.enter), QMessageBox::AcceptRole);
  QPushButton* escape = enter;
  if (answers.escape != answers.enter) escape = box->addButton(caption(answers.escape), QMessageBox::RejectRole);
  box->setDefaultButton(message.safeDefault ? escape : enter);
  box->setEscapeButton(escape);
  Run(box.data());
  if (!box) return answers.escape;
  const Answer answer = box->clickedButton() == enter ? answers.enter : answers.escape;
  delete box;
  return answer;
}

std::optional<std::string> QtDialogs::ShowInput(const std::string& prompt, const std::string& title,
                                                const std::string& preset) {
  const QPointer<QInputDialog> input = new QInputDialog(Owner());
  input->setWindowTitle(Title(title));
  input->setLabelText(QString::fromStdString(prompt));
  for (QLabel* label : input->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  input->setTextValue(QString::fromStdString(preset));
  input->setOkButtonText(TextOf(text::ButtonOk));
  input->setCancelButtonText(TextOf(text::ButtonCancel));
  std::optional<std::string> text;
  if (Run(input.data())) text = input->textValue().toStdString();
  delete input;
  return text;
}

std::optional<std::string> QtDialogs::ShowOpenFile(const ShownFileQuestion& question) {
  const QPointer<QFileDialog> files = new QFileDialog(Owner(), Title(question.title));
  files->setOptions(QFileDialog::DontUseNativeDialog);
  files->setAcceptMode(QFileDialog::AcceptOpen);
  files->setFileMode(QFileDialog::ExistingFile);
  return RunFiles(files, question);
}

std::optional<std::string> QtDialogs::ShowSaveFile(const ShownFileQuestion& question) {
  const QPointer<QFileDialog> files = new QFileDialog(Owner(), Title(question.title));
  files->setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite);
  files->setAcceptMode(QFileDialog::AcceptSave);
  files->setFileMode(QFileDialog::AnyFile);
  return RunFiles(files, question);
}

std::optional<std::string> QtDialogs::ShowList(const ShownListQuestion& question) {
  const QPointer<ListInputBox> list = new ListInputBox(question, ShownLanguage(), Owner());
  std::optional<std::string> chosen;
  if (Run(list.data())) chosen = list->Chosen();
  delete list;
  return chosen;
}

std::optional<std::int32_t> QtDialogs::ShowColour(const std::string& title, std::int32_t initial) {
  const QPointer<QColorDialog> colours = new QColorDialog(QColor(Red(initial), Green(initial), Blue(initial)), Owner());
  colours->setOptions(QColorDialog::DontUseNativeDialog);
  colours->setWindowTitle(Title(title));
  NameButtons(*colours);
  std::optional<std::int32_t> chosen;
  if (Run(colours.data())) {
    const QColor picked = colours->selectedColor();
    chosen = picked.red() | picked.green() << 8 | picked.blue() << 16;
  }
  delete colours;
  return chosen;
}

std::optional<FontChoice> QtDialogs::ShowFont(const FontChoice& initial) {
  QFont font(QString::fromStdString(initial.family), initial.size);
  font.setBold(initial.bold);
  font.setItalic(initial.italic);
  const QPointer<QFontDialog> fonts = new QFontDialog(font, Owner());
  fonts->setOptions(QFontDialog::DontUseNativeDialog);
  NameButtons(*fonts);
  std::optional<FontChoice> chosen;
  if (Run(fonts.data())) {
    const QFont picked = fonts->selectedFont();
    chosen = {picked.family().toStdString(), picked.pointSize(), picked.bold(), picked.italic()};
  }
  delete fonts;
  return chosen;
}

void QtDialogs::NameButtons(QDialog& dialog) const {
  for (const auto* box : dialog.findChildren<QDialogButtonBox*>()) {
    if (QPushButton* ok = box->button(QDialogButtonBox::Ok)) ok->setText(TextOf(text::ButtonOk));
    if (QPushButton* cancel = box->button(QDialogButtonBox::Cancel)) cancel->setText(TextOf(text::ButtonCancel));
  }
}

std::unique_ptr<ProgressBox> QtDialogs::MakeProgress(const std::string& title) {
  return std::make_unique<StandingProgress>(QString::fromStdString(title), TextOf(text::ButtonCancel), Owner());
}

std::optional<std::string> QtDialogs::RunFiles(const QPointer<QFileDialog>& files, const ShownFileQuestion& question) {
  files->setNameFilter(FileFilter(question.filter));
  // The folder of the last time may have been on a medium that is gone; the program's own is no place for files.
  const QString directory = QString::fromStdString(question.directory);
  files->setDirectory(QFileInfo(directory).isDir() ? directory : QDir::homePath());
  if (!question.name.empty()) files->selectFile(QString::fromStdString(question.name));
  files->setLabelText(QFileDialog::Accept, TextOf(text::ButtonOk));
  files->setLabelText(QFileDialog::Reject, TextOf(text::ButtonCancel));
  std::optional<std::string> path;
  if (Run(files.data()) && !files->selectedFiles().isEmpty()) {
    const QString chosen = files->selectedFiles().first();
    path = (files->acceptMode() == QFileDialog::AcceptSave ? WithEnding(chosen, *files) : chosen).toStdString();
  }
  delete files;
  return path;
}

}  // namespace velk
