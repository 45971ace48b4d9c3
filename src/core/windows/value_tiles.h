#pragma once

#include <QWidget>
#include <vector>

#include "model/graph_window.h"
#include "platform/drawing/colour_map.h"

namespace velk {

/// Values in digits as large as the widget allows, each with the name of its channel and its units.
class ValueTiles : public QWidget {
  Q_OBJECT

 public:
  struct Tile {
    QString name;
    QString value;
    QString units;
    std::int32_t colour = 0;
    AlarmSide side = AlarmSide::None;
    bool stale = false;  ///< the value is no present one: grey
    bool operator==(const Tile&) const = default;
  };

  explicit ValueTiles(QWidget* parent = nullptr) : QWidget(parent) {}

  /// What stands in place of tiles where there are none.
  void SetHint(const QString& hint);
  const QString& Hint() const { return hint_; }
  /// On dark paper, in the colours that the charts have on it.
  void SetNight(bool night);
  /// Repaints where something has changed.
  void Show(std::vector<Tile> tiles);
  const std::vector<Tile>& Tiles() const { return tiles_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintTile(QPainter& painter, const Tile& tile, const QRect& box) const;

  /// On this ground.
  QColor InkOf(const Tile& tile, const QColor& ground) const;

  std::vector<Tile> tiles_;
  QString hint_;
  ColourMap night_;
  bool isNight_ = false;
};

}  // namespace velk
