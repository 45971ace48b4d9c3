// The least that a program can do that draws and records the lines of an instrument: one widget, pictures that are kept
// and added to, digits that are drawn once, strips repainted at most 30 times a second, one transaction a row. It
// checks nothing, can't be configured, and is what live_bench measures VELK against.
//
//   velk_lean_program DEVICE LOG

#include <fcntl.h>
#include <sqlite3.h>
#include <termios.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <utility>

namespace {

constexpr int kChannels = 64, kCharts = 8;
constexpr int kColumns = 2;  ///< of charts
constexpr int kWidth = 640, kHeight = 220, kLabels = 150, kRowHeight = 20, kValueLeft = 60;
constexpr int kRefreshMs = 34;
constexpr double kScale = 100;  ///< values reach from 0 to it

void Check(int code) {
  if (code != SQLITE_OK && code != SQLITE_DONE) std::exit(1);
}

/// A table of the same columns and index as VELK's logs.
class Log {
 public:
  explicit Log(const char* path) {
    Check(sqlite3_open(path, &database_));
    std::string columns, marks;
    for (int i = 1; i <= kChannels; ++i) columns += ", \"Channel " + std::to_string(i) + "\" DOUBLE", marks += ",?";
    for (const std::string& sql : {"CREATE TABLE logData (ID INTEGER PRIMARY KEY, Date DATE, Time DATE" + columns + ")",
                                   std::string("CREATE INDEX times ON logData (Date, Time)"),
                                   std::string("PRAGMA journal_mode=WAL"), std::string("PRAGMA synchronous=FULL")})
      Check(sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr));
    const std::string insert = "INSERT INTO logData VALUES (NULL,?,?" + marks + ")";
    Check(sqlite3_prepare_v2(database_, insert.c_str(), -1, &insert_, nullptr));
  }

  void Append(const std::array<float, kChannels>& values) {
    const std::time_t now = std::time(nullptr);
    sqlite3_bind_double(insert_, 1, static_cast<double>(now / 86400));
    sqlite3_bind_double(insert_, 2, static_cast<double>(now % 86400) / 86400);
    for (int i = 0; i < kChannels; ++i)
      sqlite3_bind_double(insert_, i + 3, static_cast<double>(values[static_cast<std::size_t>(i)]));
    Check(sqlite3_step(insert_));
    sqlite3_reset(insert_);
  }

 private:
  sqlite3* database_ = nullptr;
  sqlite3_stmt* insert_ = nullptr;
};

class Job : public QWidget {
 public:
  Job(const char* device, const char* log) : log_(log), port_(open(device, O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    termios mode{};
    tcgetattr(port_, &mode);
    cfmakeraw(&mode);
    tcsetattr(port_, TCSANOW, &mode);
    picture_.fill(Qt::white);
    DrawDigits();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setGeometry(0, 0, picture_.width(), picture_.height());
    connect(new QSocketNotifier(port_, QSocketNotifier::Read, this), &QSocketNotifier::activated, this, &Job::Read);
    refresh_.setSingleShot(true);
    connect(&refresh_, &QTimer::timeout, this, &Job::Show);
    since_.start();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    // Rows are copied into the picture of the window: through a painter, strips that are no rectangle take half as much
    // again, on several threads.
    QPoint corner;
    auto* const window = static_cast<QImage*>(redirected(&corner));
    for (const QRect& rect : event->region()) {
      for (int y = rect.top(); y <= rect.bottom(); ++y)
        std::memcpy(window->scanLine(y - corner.y()) + 4 * (rect.left() - corner.x()),
                    picture_.constScanLine(y) + 4 * rect.left(), static_cast<std::size_t>(4 * rect.width()));
    }
  }

 private:
  void Show() {
    since_.start();
    for (QRect& strip : dirty_) update(std::exchange(strip, QRect()));
  }

  void DrawDigits() {
    const QFontMetrics metrics(font());
    for (const char c : std::string_view("0123456789.-")) {
      QImage& cell = digits_[static_cast<std::size_t>(c)];
      cell = QImage(metrics.horizontalAdvance(QLatin1Char('0')), metrics.height(), QImage::Format_RGB32);
      cell.fill(Qt::lightGray);
      QPainter(&cell).drawText(0, metrics.ascent(), QString(QLatin1Char(c)));
    }
  }

  void Read() {
    char bytes[4096];
    for (ssize_t count = 0; (count = read(port_, bytes, sizeof bytes)) > 0;)
      waiting_.append(bytes, static_cast<std::size_t>(count));
    std::size_t start = 0;
    for (std::size_t end = 0; (end = waiting_.find('\n', start)) != std::string::npos; start = end + 1)
      Take(waiting_.data() + start, waiting_.data() + end);
    waiting_.erase(0, start);
  }

  /// "hh:mm:ss", then a blank and a number a channel.
  void Take(const char* at, const char* end) {
    at += 8;
    for (float& value : values_) {
      while (at < end && *at == ' ') ++at;
      at = std::from_chars(at, end, value).ptr;
    }
    y_ = (y_ + 1) % kHeight;
    for (int i = 0; i < kChannels; ++i) Draw(i);
    before_ = values_;
    log_.Append(values_);
    const int rest = kRefreshMs - static_cast<int>(since_.elapsed());
    if (rest <= 0)
      Show();
    else if (!refresh_.isActive())
      refresh_.start(rest);
  }

  void Draw(int channel) {
    const int chart = channel % kCharts, row = channel / kCharts;
    const int left = chart % kColumns * kWidth, top = chart / kColumns * kHeight;
    const auto index = static_cast<std::size_t>(channel);
    const auto x = [&](float value) {
      return left + kLabels +
             std::clamp(static_cast<int>(static_cast<double>(value) / kScale * (kWidth - kLabels)), 0,
                        kWidth - kLabels - 3);
    };
    const int from = std::min(x(before_[index]), x(values_[index]));
    const int to = std::max(x(before_[index]), x(values_[index]));
    auto* const line = reinterpret_cast<QRgb*>(picture_.scanLine(top + y_));
    const QRgb colour = qRgb(channel * 3, 255 - channel * 3, 128);
    for (int i = from; i < to + 2; ++i) line[i] = colour;
    dirty_[static_cast<std::size_t>(chart)] |= QRect(from, top + y_, to + 2 - from, 1);
    dirty_[static_cast<std::size_t>(kCharts + chart)] |=
        Write(values_[index], left + kValueLeft, top + row * kRowHeight);
  }

  QRect Write(float value, int left, int top) {
    char text[32];
    const char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 3).ptr;
    int x = left;
    for (const char* c = text; c < end; ++c) {
      const QImage& cell = digits_[static_cast<std::size_t>(*c)];
      for (int y = 0; y < cell.height(); ++y)
        std::memcpy(picture_.scanLine(top + y) + 4 * x, cell.constScanLine(y),
                    static_cast<std::size_t>(4 * cell.width()));
      x += cell.width();
    }
    return {left, top, x - left, digits_['0'].height()};
  }

  Log log_;
  int port_;
  std::string waiting_;
  std::array<float, kChannels> values_{}, before_{};
  QImage picture_{kColumns * kWidth, kCharts / kColumns* kHeight, QImage::Format_RGB32};
  std::array<QImage, 128> digits_;
  int y_ = 0;
  std::array<QRect, 2 * kCharts> dirty_;  ///< of the curves of each chart, then of its values
  QElapsedTimer since_;                   ///< the strips were repainted
  QTimer refresh_;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication qt(argc, argv);
  if (argc != 3) return 2;
  Job job(argv[1], argv[2]);
  job.show();
  return QApplication::exec();
}
