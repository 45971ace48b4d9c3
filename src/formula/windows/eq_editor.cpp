#include "formula/windows/eq_editor.h"

#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <algorithm>

#include "base/text.h"
#include "base/text_qt.h"
#include "formula/formula_entry.h"
#include "formula/texts.h"
#include "i18n/windows/translate_form.h"
#include "model/graph_map.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"
#include "ui_eq_editor.h"

namespace velk {

namespace {

/// Where an entry of the list carries the number of its parameter.
constexpr int kParameterRole = Qt::UserRole;

constexpr int kMostLetters = 40;

}  // namespace

EqEditor::EqEditor(WindowHost& host, Session& session, const FormulaReport& report, GraphWindows& graphs)
    : QDialog(host.Parent()),
      ui_(std::make_unique<Ui::EqEditor>()),
      session_(session),
      report_(report),
      graphs_(graphs) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Formulas);
  FillList();
  ConnectKeypad();
  ConnectList();
  connect(ui_->cmdClear, &QPushButton::clicked, this, &EqEditor::cmdClear_Click);
  connect(ui_->Equals, &QPushButton::clicked, this, &EqEditor::Equals_Click);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->Text1, &QLineEdit::textChanged, this, &EqEditor::AllowAdding);
  AllowAdding();
  ui_->Text1->setFocus();
  TranslateForm(*this, host.Words());
  ui_->List1->setAccessibleName(ui_->List1->toolTip());
}

EqEditor::~EqEditor() = default;

void EqEditor::AllowAdding() {
  ui_->Equals->setEnabled(!ui_->Text1->text().trimmed().isEmpty());
}

void EqEditor::ConnectKeypad() {
  for (QPushButton* button : findChildren<QPushButton*>()) {
    const QString name = button->objectName();
    const QString caption = button->text();
    // Keys are as narrow as a keypad's, but not narrower than their captions in the desktop's font.
    const int captionWidth = button->fontMetrics().horizontalAdvance(caption) + button->fontMetrics().height();
    button->setMinimumWidth(std::max(button->minimumWidth(), captionWidth));
    if (name.startsWith(QLatin1String("cmdDigit")))
      connect(button, &QPushButton::clicked, this, [this, caption] { Press(InsertText, caption); });
    else if (name.startsWith(QLatin1String("cmdOperator")))
      connect(button, &QPushButton::clicked, this, [this, caption] { Press(InsertOperator, caption); });
    else if (name.startsWith(QLatin1String("cmdFunction")))
      connect(button, &QPushButton::clicked, this, [this, caption] { Function_Click(caption); });
  }
}

void EqEditor::ConnectList() {
  connect(ui_->List1, &QListWidget::itemDoubleClicked, this, &EqEditor::List1_DblClick);
  connect(ui_->List1, &QListWidget::customContextMenuRequested, this,
          [this](const QPoint& where) { List1_RightClick(ui_->List1->itemAt(where)); });
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* enter = new QShortcut(key, ui_->List1);
    enter->setContext(Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, [this] { List1_DblClick(ui_->List1->currentItem()); });
  }
}

void EqEditor::FillList() {
  ui_->List1->clear();
  for (int i = 1; i <= session_.TotalParameters; ++i) {
    const std::string& name = session_.CurrentParameters[i].name;
    if (name == kBlankName) continue;
    auto* item = new QListWidgetItem(ToQt(name), ui_->List1);
    item->setData(kParameterRole, i);
  }
  // Names are read in full, up to a length that leaves the keypad on the screen.
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * ui_->List1->frameWidth();
  const int names = std::min(ui_->List1->sizeHintForColumn(0) + bar, kMostLetters * fontMetrics().averageCharWidth());
  ui_->List1->setMinimumWidth(std::max(ui_->List1->minimumWidth(), names));
}

FormulaInput EqEditor::Input() const {
  const QString text = ui_->Text1->text();
  return {FromQt(text), CharacterCount(FromQt(text.left(ui_->Text1->cursorPosition())))};
}

void EqEditor::Show(const FormulaInput& input) {
  ui_->Text1->setText(ToQt(input.text));
  ui_->Text1->setCursorPosition(static_cast<int>(ToQt(Left(input.text, input.cursor)).size()));
}

void EqEditor::Press(void (*insert)(FormulaInput&, std::string_view), const QString& caption) {
  FormulaInput input = Input();
  insert(input, FromQt(caption));
  Show(input);
}

void EqEditor::Function_Click(const QString& caption) {
  FormulaInput input = Input();
  if (!InsertFunction(input, FromQt(caption))) {
    report_.dialogs.Message({.text = text::OneStatisticOnly, .title = {}, .icon = BoxIcon::Exclamation});
    return;
  }
  Show(input);
  ui_->Text1->setFocus();
}

void EqEditor::List1_DblClick(const QListWidgetItem* item) {
  if (item == nullptr) return;
  FormulaInput input = Input();
  InsertReference(input, session_.CurrentParameters[item->data(kParameterRole).toInt()].name);
  Show(input);
}

void EqEditor::List1_RightClick(const QListWidgetItem* item) {
  if (item == nullptr) return;
  ui_->Text1->setText(ToQt(FormulaOf(session_, item->data(kParameterRole).toInt())));
}

void EqEditor::cmdClear_Click() {
  ui_->Text1->clear();
  QRect place = frameGeometry();
  place.moveCenter(screen()->availableGeometry().center());
  move(place.topLeft());
}

void EqEditor::Equals_Click() {
  RunProcedure({report_.dialogs, "Equals_Click"}, [&](const Statements& run) {
    const auto putBack = [this](const std::string& text) { ui_->Text1->setText(ToQt(text)); };
    if (!run([&] { return AddFormula(session_, report_, FromQt(ui_->Text1->text()), putBack); })) return;
    report_.added();
    FillList();
    // The new entry shows that something came of it.
    ui_->List1->setCurrentRow(ui_->List1->count() - 1);
    run([&] { RebuildGraphs(session_, graphs_); });
  });
}

}  // namespace velk
