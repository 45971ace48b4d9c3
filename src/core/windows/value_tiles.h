#pragma once

#include <QWidget>
#include <vector>

#include "model/graph_window.h"

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
    bool operator==(const Tile&) const = default;
  };

  explicit ValueTiles(QWidget* parent = nullptr) : QWidget(parent) {}

  /// What stands in place of tiles where there are none.
  void SetHint(const QString& hint) { hint_ = hint; }
  /// Repaints where something has changed.
  void Show(std::vector<Tile> tiles);
  const std::vector<Tile>& Tiles() const { return tiles_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintTile(QPainter& painter, const Tile& tile, const QRect& box) const;

  std::vector<Tile> tiles_;
  QString hint_;
};

}  // namespace velk
