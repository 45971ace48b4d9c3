#include "instruments/windows/requested_data.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

#include "base/text_qt.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_requested_data.h"

namespace velk {

namespace {

constexpr int kCommandColumn = 1;
constexpr int kResetColumn = 4;
constexpr int kTextWidth = 120;

/// What a window may take of the screen.
QSize Room() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? QSize(800, 600) : screen->availableSize() * 0.9;
}

CommandText Shown(const QLineEdit& text, const QCheckBox& cr, const QCheckBox& lf) {
  return {FromQt(text.text()), cr.isChecked(), lf.isChecked()};
}

/// What the boxes of a stored command show before anybody touches them.
CommandText AsShown(const std::string& stored) {
  CommandText command = SplitCommand(stored);
  command.text = FromQt(ToQt(command.text));
  return command;
}

}  // namespace

RequestedData::RequestedData(WindowHost& host, const std::vector<ParameterCommands>& commands)
    : QDialog(host.Parent()), ui_(std::make_unique<Ui::RequestedData>()), stored_(commands) {
  ui_->setupUi(this);
  setProperty("helpTopic", topic::Instruments);
  last_ = ui_->scrollArea;
  for (std::size_t i = 0; i < stored_.size(); ++i) AddParameter(static_cast<int>(i) + 1, stored_[i]);
  setTabOrder(last_, ui_->cmdOK);
  ui_->parametersLayout->setColumnStretch(kCommandColumn, 1);
  ui_->parametersLayout->setColumnStretch(kResetColumn, 1);
  ui_->parametersLayout->setRowStretch(static_cast<int>(stored_.size()) + 1, 1);
  if (commands_.empty())
    ui_->cmdOK->setFocus();
  else
    commands_.front().text->setFocus();
  connect(ui_->cmdOK, &QPushButton::clicked, this, &RequestedData::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &RequestedData::reject);
  TranslateForm(*this, host.Words());
  NameBoxes();
  FitToScreen();
}

RequestedData::~RequestedData() = default;

void RequestedData::AddParameter(int number, const ParameterCommands& commands) {
  auto* name = new QLabel(ToQt(commands.name), ui_->parameters);
  name->setObjectName(QStringLiteral("lblName_%1").arg(number));
  name->setTextFormat(Qt::PlainText);
  ui_->parametersLayout->addWidget(name, number, 0);
  commands_.push_back(AddCommand(QStringLiteral("Command"), number, kCommandColumn, commands.CommandString));
  resets_.push_back(AddCommand(QStringLiteral("Reset"), number, kResetColumn, commands.ResetCommand));
}

RequestedData::Row RequestedData::AddCommand(const QString& what, int number, int column, const std::string& stored) {
  const CommandText command = SplitCommand(stored);
  const Row row{new QLineEdit(ToQt(command.text), ui_->parameters),
                new QCheckBox(QStringLiteral("CR"), ui_->parameters),
                new QCheckBox(QStringLiteral("LF"), ui_->parameters)};
  row.text->setObjectName(QStringLiteral("txt%1_%2").arg(what).arg(number));
  row.text->setMinimumWidth(kTextWidth);
  row.cr->setObjectName(QStringLiteral("chk%1CR_%2").arg(what).arg(number));
  row.cr->setChecked(command.cr);
  row.lf->setObjectName(QStringLiteral("chk%1LF_%2").arg(what).arg(number));
  row.lf->setChecked(command.lf);
  for (QWidget* const box : std::initializer_list<QWidget*>{row.text, row.cr, row.lf})
    ui_->parametersLayout->addWidget(InTabOrder(box), number, column++);
  return row;
}

QWidget* RequestedData::InTabOrder(QWidget* widget) {
  setTabOrder(last_, widget);
  last_ = widget;
  return widget;
}

/// For readers of the screen: the boxes stand in a table, and their labels above and in front of them.
void RequestedData::NameBoxes() {
  const auto name = [this](const std::vector<Row>& rows, const QString& heading) {
    for (std::size_t i = 0; i < rows.size(); ++i)
      rows[i].text->setAccessibleName(ToQt(stored_[i].name) + QStringLiteral(", ") + heading);
  };
  name(commands_, ui_->lblCommand->text());
  name(resets_, ui_->lblReset->text());
}

/// As large as its rows where the screen has room; they scroll where it hasn't.
void RequestedData::FitToScreen() {
  const int frame = 2 * ui_->scrollArea->frameWidth();
  const QSize bar(style()->pixelMetric(QStyle::PM_ScrollBarExtent) + frame, frame);
  const QSize wanted = ui_->parameters->sizeHint() + bar + sizeHint() - ui_->scrollArea->sizeHint();
  resize(wanted.expandedTo(minimumSizeHint()).boundedTo(Room()));
}

std::vector<ParameterCommands> RequestedData::Answer() const {
  std::vector<ParameterCommands> commands = stored_;
  for (std::size_t i = 0; i < commands.size(); ++i) {
    commands[i].CommandString = CommandOf(commands_[i], stored_[i].CommandString);
    commands[i].ResetCommand = CommandOf(resets_[i], stored_[i].ResetCommand);
  }
  return commands;
}

std::string RequestedData::CommandOf(const Row& row, const std::string& stored) {
  const CommandText shown = Shown(*row.text, *row.cr, *row.lf);
  return shown == AsShown(stored) ? stored : JoinCommand(shown);
}

}  // namespace velk
