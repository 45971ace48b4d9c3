#pragma once

#include <QFont>
#include <QImage>
#include <QStringList>
#include <QWidget>
#include <optional>
#include <string>
#include <vector>

#include "graphs/curve_source.h"
#include "graphs/label_shares.h"
#include "graphs/windows/digit_cells.h"
#include "model/graph_window.h"
#include "platform/windows/window_strips.h"

namespace velk {

/// The rows of a graph window's left panel, one a curve, in three columns: 1 its name, 2 the latest value, 3 the units,
/// in the curve's colour, darker or lighter where it could not be read; a value stands on the colour of buttons. One
/// widget paints them all. Values are kept as they come and formatted when they are shown, by ShowChanges.
class LabelRows : public QWidget, public ReadyDots {
  Q_OBJECT

 public:
  explicit LabelRows(QWidget* parent = nullptr);

  /// The font of all rows; its pixel size counts at ratio 1.
  void UseFont(const QFont& font);
  int Count() const { return static_cast<int>(rows_.size()); }
  /// Name, units, colour and number picture of each curve; rows come and go with them. A row keeps its value.
  void Fill(const CurveSource& curves);

  /// The latest value; rows are counted from 0, and what is no row is passed over. One that is no number stands as a
  /// dash.
  void SetValue(int row, double value) {
    if (row >= 0 && row < static_cast<int>(values_.size())) values_[static_cast<std::size_t>(row)] = value;
  }
  /// No row has a value until it is given one.
  void ForgetValues();
  /// Flashes the value of an alarmed curve: with each call its background changes between white and the colour of
  /// buttons. A frame in the colour of alarms shows the flash where these two are alike, and a mark stands beside the
  /// value, pointing to the side on which it is out, since colour alone can be missed. Without an alarm it looks as
  /// ever.
  void SetAlarm(int row, AlarmSide side);
  /// Values that are not of this moment: grey, and without the ground of buttons. Gives whether that is new.
  bool SetStale(bool stale);
  /// The paper that the panel goes with: dark beside a chart that is shown on dark paper.
  void SetNight(bool night);
  /// Puts changed values and alarms on the screen.
  void ShowChanges(WindowStrips& strips);
  /// Of values.
  bool CopyDots(const PaintTarget& target, const QRect& part) override;

  /// A label of a curve: 1 its name, 2 its value, 3 its units.
  struct Place {
    int column = 0;
    int row = 0;
  };
  /// The label at a place of the panel; column 0 where none is.
  Place PlaceAt(const QPoint& point) const;
  /// The box of a label, in pixels of the panel.
  QRect Box(const Place& place) const;
  /// What a label says at present, whole also where it is shown shortened; a value with its mark.
  QString Text(const Place& place) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  enum class Flash { None, White, Button };

  /// How the plate behind a value looks.
  struct Plate {
    QRgb ink = 0;
    QRgb ground = 0;
    QRgb mark = 0;
    AlarmSide side = AlarmSide::None;  ///< with a frame and a mark unless it is None
    bool operator==(const Plate&) const = default;
  };
  struct Row {
    std::optional<double> formatted;  ///< the value that the text is of
    bool changed = true;              ///< in another way than by its value
    QString name;
    QString units;
    std::string picture;
    std::int32_t colour = 0;
    QRgb ink = 0;           ///< of the value on the colour of buttons
    double reserved = 0;    ///< pixels for the value from the start, by the limits of its scale
    bool canAlarm = false;  ///< has room for the mark from the start
    std::string text;       ///< of the value, as it is shown
    AlarmSide side = AlarmSide::None;
    Flash flash = Flash::None;
    std::optional<Plate> drawn;  ///< how the plate stands in the column
    QPoint textCorner;           ///< where the text is written in the column, in device pixels
    bool isWritten = false;      ///< by the cells
    int top = 0;
    int height = 0;
    QFont nameFont;
    QStringList nameLines;
    QFont unitsFont;
    QString shownUnits;
  };

  /// The colours of the panel, worked out once a palette: how well one can be read takes longer than drawing it.
  struct Looks {
    QRgb ground = 0;
    QRgb plate = 0;
    QRgb stale = 0;  ///< ink on the ground
    QRgb mark = 0;
    QRgb onWhite = 0;
    QRgb onPlate = 0;
  };

  void FollowPalette();
  void FillRow(Row& row, const Parameter& curve);
  void LayOut();
  void FitTexts(Row& row) const;
  void DrawColumn();
  static void FormatValue(std::optional<double> value, const std::string& picture, std::string& text);
  double NeedOf(const Row& row) const;
  double MarkOf(const Row& row) const;
  Plate PlateOf(const Row& row) const;
  QRect DrawValue(Row& row);
  QRect WriteOver(Row& row, const Plate& plate, const std::string& before);
  void DrawPlate(const Plate& plate, const QRect& box);
  void DrawByPainter(const Row& row, const Plate& plate, const QRect& box);
  QRect PlateBox(const Row& row) const;
  int ValueLeft() const;
  QRect ValueColumn() const;
  void PaintTexts(QPainter& painter, const Row& row) const;

  std::vector<Row> rows_;
  std::vector<std::optional<double>> values_;  ///< of the rows; side by side, since each sample sets them all
  QFont font_;
  DigitCells cells_;
  double ratio_ = 0;  ///< of the cells and the column
  Looks looks_;
  LabelNeeds needs_;
  LabelShares shares_;
  QImage column_;               ///< the values of all rows, in device pixels
  std::vector<QRect> changed_;  ///< since they were shown, in pixels
  std::string formatted_;       ///< room for a text
  bool stale_ = false;
  bool night_ = false;
};

}  // namespace velk
