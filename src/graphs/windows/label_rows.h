#pragma once

#include <QFont>
#include <QLabel>
#include <QWidget>
#include <string>
#include <string_view>
#include <vector>

#include "model/parameter.h"

namespace velk {

/// The rows of a graph window's left panel, one a curve: Label1_n its name, Label2_n the latest value, Label3_n the
/// units, in the curve's colour where it can be read; a value stands on the colour of buttons. Value texts are stored
/// as they come and shown by ShowChanges.
class LabelRows {
 public:
  /// `panel` holds the labels, among them those of row 0.
  LabelRows(QWidget& panel, QLabel& Label1, QLabel& Label2, QLabel& Label3);

  void SetFont(const QFont& font) { font_ = font; }
  int Count() const { return static_cast<int>(rows_.size()); }

  /// Creates the three labels of row `row`, the one behind the last, as clones of row 0.
  void LoadAnotherFrame(int row);
  /// Removes rows from the end until `count`, at least 1, are left.
  void Unload(int count);
  /// Writes name, units and colour of a curve and places the row below the one before.
  void Fill(int row, const Parameter& curve);
  /// The panel has another width: values and units share it anew.
  void FitToPanel();
  /// The latest value, as text by the picture. Allocates nothing once the text has had its longest form.
  void SetValue(int row, double value, std::string_view picture);
  /// Flashes the value of an alarmed curve: with each call its background changes between white and the colour of
  /// buttons. A frame in the colour of alarms shows the flash where these two are alike, and a mark stands beside the
  /// value, since colour alone can be missed. Without an alarm it looks as ever.
  void SetAlarm(int row, bool alarmed);
  /// A label of a curve: 1 its name, 2 its value, 3 its units.
  struct Place {
    int column = 0;
    int row = 0;
  };
  /// The label at a place of the panel; column 0 where none is.
  Place PlaceAt(const QPoint& place) const;
  /// Puts changed values and alarms on the screen.
  void ShowChanges();

 private:
  enum class Flash { None, White, Button };

  struct Row {
    QLabel* name;
    QLabel* value;
    QLabel* units;
    std::string text;
    bool changed = false;
    Flash flash = Flash::None;
    Flash shownFlash = Flash::None;
    std::int32_t colour = 0;
  };

  void Colour(Row& row, std::int32_t colour);
  void ShowFlash(Row& row);
  void PlaceName(int row, const QString& name);
  void PlaceValue(Row& row);

  QWidget& panel_;
  std::vector<Row> rows_;
  QFont font_;
};

}  // namespace velk
