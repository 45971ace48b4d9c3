#include "core/windows/large_values_window.h"

#include <QKeyEvent>
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text_qt.h"
#include "core/alarms.h"
#include "core/large_values.h"
#include "core/panel/data_words.h"
#include "core/texts.h"
#include "core/windows/value_tiles.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "ui_large_values_window.h"

namespace velk {

namespace {

constexpr int kLookMs = 250;
constexpr QSize kSize(960, 560);

ValueTiles::Tile TileOf(const Session& session, int channel, bool stale) {
  const Parameter& parameter = session.CurrentParameters[channel];
  const float value = session.CurrentValue[channel];
  const bool isValue = session.Data.hasValues && !std::isnan(value);
  const std::string text = isValue ? Format(static_cast<double>(value), parameter.format) : "\u2013";
  const AlarmSide side = session.AlarmTriggered[channel] ? SideOutOfLimits(parameter, value) : AlarmSide::None;
  return {ToQt(parameter.name), ToQt(text), ToQt(parameter.units), parameter.color, side, stale};
}

bool HasChannels(const Session& session) {
  for (int i = 1; i <= session.TotalParameters; ++i)
    if (session.CurrentParameters[i].GraphVisible) return true;
  return false;
}

}  // namespace

frmLargeValues::frmLargeValues(WindowHost& host, const LargeValuesAccess& access)
    : ui_(std::make_unique<Ui::frmLargeValues>()),
      words_(host.Words()),
      access_(access),
      menu_(new QMenu(this)),
      look_(access.clock.MakeTimer()) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_QuitOnClose, false);
  setProperty("helpTopic", topic::StripChart);
  ui_->cmdChannels->setMenu(menu_);
  connect(menu_, &QMenu::aboutToShow, this, &frmLargeValues::FillMenu);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QWidget::close);
  TranslateForm(*this, host.Words());
  resize(kSize);
  look_->SetInterval(kLookMs);
  look_->SetHandler([this] { ShowValues(); });
}

frmLargeValues::~frmLargeValues() = default;

void frmLargeValues::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  ShowValues();
  look_->SetEnabled(true);
}

void frmLargeValues::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  look_->SetEnabled(false);
}

void frmLargeValues::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else
    QWidget::keyPressEvent(event);
}

void frmLargeValues::ShowValues() {
  std::vector<ValueTiles::Tile> tiles;
  const bool stale = HasStaleValues(access_.session, access_.clock.Ticks());
  for (const int channel : LargeChannels(access_.session)) tiles.push_back(TileOf(access_.session, channel, stale));
  ui_->Tiles->SetNight(access_.session.NightColours || palette().color(QPalette::Window).lightness() <= 127);
  const bool hasChannels = HasChannels(access_.session);
  ui_->cmdChannels->setEnabled(hasChannels);
  ui_->Tiles->SetHint(ToQt(words_.Translator.In(hasChannels ? text::NoneChosen : text::NoLargeValues)));
  ui_->Tiles->Show(std::move(tiles));
}

void frmLargeValues::FillMenu() {
  menu_->clear();
  const std::vector<int> chosen = LargeChannels(access_.session);
  for (int i = 1; i <= access_.session.TotalParameters; ++i) {
    const Parameter& parameter = access_.session.CurrentParameters[i];
    if (!parameter.GraphVisible) continue;
    QAction* entry = menu_->addAction(ToQt(parameter.name).replace('&', QStringLiteral("&&")));
    entry->setCheckable(true);
    entry->setChecked(std::find(chosen.begin(), chosen.end(), i) != chosen.end());
    connect(entry, &QAction::toggled, this, [this, i](bool on) { Choose(i, on); });
  }
}

void frmLargeValues::Choose(int channel, bool chosen) {
  access_.session.LargeValues = LargeChannelsWith(access_.session, channel, chosen);
  ShowValues();
  access_.keepSettings();
}

void BindLargeValues(CommandBinder& commands, WindowHost& host, const LargeValuesAccess& access) {
  commands.Bind("mnuViewLargeValues", [&host, access] { host.Open<frmLargeValues>(access); });
}

}  // namespace velk
