#include "graphs/windows/frm_ext_graph_form.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <utility>

#include "base/dates.h"
#include "base/text_qt.h"
#include "exchange/live_properties.h"
#include "graphs/texts.h"
#include "graphs/windows/chart_fonts.h"
#include "graphs/windows/curve_editor.h"
#include "i18n/windows/translate_form.h"
#include "model/help_topics.h"
#include "platform/dialogs/procedure.h"
#include "settings/windows/frm_properties.h"

namespace velk {

namespace {

constexpr int kPollMs = 7000;
/// Between two pieces of a run: the rest of the program comes first.
constexpr int kPieceMs = 12;
constexpr double kSecondsADay = 86400;
/// What a child window of the main window has of its frame, in pixels, and the bar is laid out for.
constexpr QSize kFrame(14, 79);
constexpr int kBesideState = 8;

}  // namespace

frmExtGraphForm::frmExtGraphForm(WindowHost& host, const ExternalAccess& access, const LiveImport& live)
    : host_(host),
      access_(access),
      live_(live),
      measures_(MeasuresOf(access.session)),
      sampleSeconds_(std::max(1.0, std::round(access.session.SamplingRate * kSecondsADay))),
      curves_(live),
      refresh_(access.platform.clock),
      view_(std::make_unique<ChartView>(times_, measures_, curves_,
                                        ChartFont(access.session.CurrentFont, access.session.intFontSize),
                                        access.platform.language, refresh_, this)),
      past_(std::make_unique<StripChart>(pastTimes_, measures_, curves_, access.platform.language, view_->Surfaces())),
      plot_(std::make_unique<ExternalPlot>(times_, view_->Chart(), curves_, measures_, sampleSeconds_)),
      follower_(std::make_unique<ExternalFollower>(*plot_, access.tools)),
      toolbar_(new GraphToolbar(this)),
      commentBox_(new CommentBox(this)),
      state_(new QLabel(this)),
      timer1_(access.platform.clock.MakeTimer()),
      pieces_(access.platform.clock.MakeTimer()),
      pageWaits_(access.platform.clock.MakeTimer()) {
  setObjectName("frmExtGraphForm");
  setAttribute(Qt::WA_QuitOnClose, false);
  setProperty("helpTopic", topic::Exchange);
  setWindowTitle(QString::fromLatin1(text::ExternalTitle.english.data(),
                                     static_cast<qsizetype>(text::ExternalTitle.english.size())));
  setFocusPolicy(Qt::ClickFocus);
  state_->setObjectName("lblState");
  state_->setTextFormat(Qt::PlainText);
  state_->setWordWrap(true);
  timer1_->SetInterval(kPollMs);
  timer1_->SetHandler([this] { Timer1_Timer(); });
  pieces_->SetInterval(kPieceMs);
  pieces_->SetHandler([this] { ReadPiece(); });
  pageWaits_->SetHandler([this] {
    pageWaits_->SetEnabled(false);
    PlotScrolledGraph();
  });
  plot_->onBlock = [this](double start, double end) { FrameStep(start, end); };
  plot_->onValue = [this](int slot, double value) { view_->SetValue(slot, value); };
  BindToolbar();
  BindEditor();
  view_->PlotArea().installEventFilter(this);
  connect(&view_->HistoryBar(), &QScrollBar::valueChanged, this, [this] { VScroll1_Change(); });
  TranslateForm(*this, host.Words());
  setMinimumSize(ChartView::LeastWidth(), ChartView::LeastHeight(measures_, curves_.Count()));
  resize(1100, ChartView::WantedHeight(measures_, curves_.Count()) + 2 * fontMetrics().height());
  Form_Load();
}

frmExtGraphForm::~frmExtGraphForm() {
  view_->StopRefresh();
}

void frmExtGraphForm::BindToolbar() {
  const auto bind = [this](const char* key, void (frmExtGraphForm::*work)()) {
    toolbar_->Bind(key, [this, work] { RunKey("Toolbar1_ButtonClick", work); });
  };
  bind("AddComment", &frmExtGraphForm::AddComment);
  bind("Print", &frmExtGraphForm::Print);
  bind("ReadValue", &frmExtGraphForm::ReadValue);
  toolbar_->Release();
  for (QAbstractButton* key : toolbar_->findChildren<QAbstractButton*>()) key->setFocusPolicy(Qt::TabFocus);
  commentBox_->onDone = [this](const QString& comment) {
    const Stay stay(*this);
    setFocus();
    AddTheComment(FromQt(comment));
    if (access_.log.onReportChanged) access_.log.onReportChanged();
    access_.platform.clock.Yield();
  };
}

void frmExtGraphForm::BindEditor() {
  const QPointer<frmExtGraphForm> alive(this);
  const auto field = [alive](int id) -> LiveField* {
    const auto place = static_cast<std::size_t>(id) - 1;
    return alive && place < alive->live_.Fields.size() ? &alive->live_.Fields[place] : nullptr;
  };
  EditedCurves edited;
  edited.idOf = [this](int slot) { return slot <= curves_.Count() ? slot : 0; };
  edited.definition = [field](int id) {
    const LiveField* const edits = field(id);
    return edits ? CurveOf(*edits) : Parameter();
  };
  edited.store = [field](int id, const Parameter& curve) {
    if (LiveField* const edits = field(id)) StoreCurve(*edits, curve);
  };
  edited.editProperties = [field, &host = host_](int id) {
    const LiveField* const shown = field(id);
    const auto entered =
        AskProperties(host, shown ? std::optional<CurveProperties>(PropertiesOf(*shown)) : std::nullopt);
    LiveField* const edits = field(id);
    if (!entered || !edits) return false;
    StoreProperties(*edits, *entered);
    return true;
  };
  edited.show = [this] {
    RefreshForm();
    access_.keep(live_);
  };
  new CurveEditor(*this, *view_, host_, std::move(edited));
}

void frmExtGraphForm::Form_Load() {
  IntilizeTime();
  FollowLooks();
  loaded_ = true;
  LayOutChart();
  FillLabels();
  Operation("InitialHeader", [&] { view_->DrawHeader(); });
  Operation("Form_Load", [&] {
    view_->Chart().SetBlockPairsPerPage();
    const double end = plot_->FormStart() + plot_->BlockLength();
    view_->Chart().Picture2_Update(plot_->FormStart(), end);
    view_->Chart().WriteDate(plot_->FormStart(), end);
  });
  TellState();
  view_->ScheduleRefresh();
}

void frmExtGraphForm::IntilizeTime() {
  plot_->IntilizeTime(access_.platform.clock.Now());
  pastTimes_.GraphTimeStep = times_.GraphTimeStep;
}

bool frmExtGraphForm::Fits(const LiveImport& live) const {
  const auto sameField = [](const LiveField& a, const LiveField& b) { return a.Name == b.Name; };
  return live.DBaseName == live_.DBaseName && live.TableName == live_.TableName && live.DateField == live_.DateField &&
         live.TimeField == live_.TimeField &&
         std::equal(live.Fields.begin(), live.Fields.end(), live_.Fields.begin(), live_.Fields.end(), sameField);
}

void frmExtGraphForm::Follow(const LiveImport& live) {
  live_ = live;
  RefreshForm();
}

void frmExtGraphForm::FollowLooks() {
  const bool fills = access_.session.FitGraphsToWindows;
  view_->ShowNight(access_.session.NightColours || palette().color(QPalette::Window).lightness() <= 127);
  if (fills == view_->FillsWindow()) return;
  view_->FillWindow(fills);
  if (!loaded_) return;
  LayOutChart();
  RefreshForm();
  Repaint();
}

void frmExtGraphForm::End() {
  if (ended_) return;
  ended_ = true;
  StopReading();
  follower_->Leave();
  page_.read.reset();
  view_->StopRefresh();
  hide();
  if (standing_ == 0) deleteLater();
}

void frmExtGraphForm::closeEvent(QCloseEvent* event) {
  event->accept();
  End();
}

void frmExtGraphForm::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && loaded_) FollowLooks();
}

void frmExtGraphForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!loaded_) return;
  LayOutChart();
  RefreshForm();
  Repaint();
}

QSize frmExtGraphForm::WindowSize() const {
  return QSize(width(), view_->height()) + kFrame;
}

/// What can't be read has a path, which may take more than one line.
int frmExtGraphForm::StateHeight() const {
  const int most = height() / 3;
  const int wanted = state_->heightForWidth(std::max(width() - 2 * kBesideState, 1));
  return std::clamp(wanted, std::min(state_->fontMetrics().height(), most), most) + kBesideState;
}

void frmExtGraphForm::LayOutChart() {
  const int bar = std::min(toolbar_->sizeHint().height(), GraphToolbar::kMostHeight);
  const int line = StateHeight();
  toolbar_->setGeometry(0, 0, width(), bar);
  view_->setGeometry(0, bar, width(), std::max(height() - bar - line, 0));
  state_->setGeometry(kBesideState, height() - line, std::max(width() - 2 * kBesideState, 0), line);
  view_->FitToWindow(WindowSize());
}

void frmExtGraphForm::RefreshForm() {
  curves_.Follow(live_);
  plot_->FollowCurves();
  Operation("RefreshForm", [&] { view_->DrawHeader(); });
  FillLabels();
  view_->ScheduleRefresh();
}

void frmExtGraphForm::FillLabels() {
  view_->FillLabels();
  const auto& rows = plot_->Rows();
  for (int slot = 1; slot <= curves_.Count(); ++slot)
    view_->SetValue(slot, rows.empty() ? std::numeric_limits<double>::quiet_NaN()
                                       : rows.back().values[static_cast<std::size_t>(slot) - 1]);
}

/// Runs a statement that has changed nothing when it fails.
bool frmExtGraphForm::Operation(const char* procedure, const std::function<void()>& statement) {
  try {
    statement();
    return true;
  } catch (const std::exception&) {  // runs again below, where its text is shown
  }
  return handle_error(procedure, statement);
}

/// What has failed is told as it came, and done again by Retry only.
void frmExtGraphForm::RunKey(const char* procedure, void (frmExtGraphForm::*work)()) {
  const Stay stay(*this);
  std::exception_ptr failed;
  try {
    return (this->*work)();
  } catch (...) {
    failed = std::current_exception();
  }
  handle_error(procedure, [&] {
    if (failed) std::rethrow_exception(std::exchange(failed, nullptr));
    (this->*work)();
  });
}

/// Nothing is read while the box stands.
bool frmExtGraphForm::handle_error(const char* procedure, const std::function<void()>& statement) {
  const Stay stay(*this);
  const bool wasReading = IsReading();
  StopReading();
  const bool done = RunProcedure({access_.platform.dialogs, procedure, text::ExternalTitle},
                                 [&](const Statements& run) { run(statement); });
  if (wasReading && !ended_) StartReading();
  return done;
}

void frmExtGraphForm::Tell(const OperatorText& text) {
  const Stay stay(*this);
  access_.platform.dialogs.Message({text, text::GraphsTitle, Buttons::Ok, BoxIcon::Exclamation});
}

}  // namespace velk
