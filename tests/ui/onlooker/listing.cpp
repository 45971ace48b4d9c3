#include "listing.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>
#include <algorithm>

namespace {

constexpr int kMostCells = 4000;

QString TextOf(const QWidget& widget) {
  for (const char* property : {"text", "currentText", "plainText", "title", "windowTitle"}) {
    const QString text = widget.property(property).toString();
    if (!text.isEmpty()) return text;
  }
  return {};
}

class Look {
 public:
  QString Take() {
    const QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      const bool isBelow = modal != nullptr && modal != window && window->windowType() != Qt::Popup;
      if (window->isVisible() && !isBelow) AddWindow(*window);
    }
    return QString::fromUtf8(QJsonDocument(seen_).toJson(QJsonDocument::Compact));
  }

 private:
  void AddWindow(QWidget& window) {
    window_ = window.objectName().isEmpty() ? window.metaObject()->className() : window.objectName();
    AddWidget(window);
    for (QWidget* widget : window.findChildren<QWidget*>())
      if (widget->window() == &window && widget->isVisible() && widget->isEnabled()) AddWidget(*widget);
  }

  void AddWidget(QWidget& widget) {
    const auto* button = qobject_cast<QToolButton*>(&widget);
    const QAction* command = button != nullptr ? button->defaultAction() : nullptr;
    Add(widget, command != nullptr ? command->objectName() : widget.objectName(), TextOf(widget), widget.rect(),
        {{"focus", widget.hasFocus()}});
    if (auto* menu = qobject_cast<QMenu*>(&widget)) AddItems(*menu);
    if (auto* bar = qobject_cast<QMenuBar*>(&widget)) AddItems(*bar);
    if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) AddCells(*view);
  }

  template <class Menu>
  void AddItems(Menu& menu) {
    for (QAction* item : menu.actions()) {
      if (!item->isVisible() || !item->isEnabled() || item->isSeparator()) continue;
      const QString name = item->menu() != nullptr ? item->menu()->objectName() : item->objectName();
      Add(menu, name, item->text(), menu.actionGeometry(item));
    }
  }

  void AddCells(QAbstractItemView& view) {
    const QAbstractItemModel* model = view.model();
    const QModelIndex root = view.rootIndex();
    const int rows = model != nullptr ? model->rowCount(root) : 0;
    const int columns = model != nullptr ? model->columnCount(root) : 0;
    if (columns == 0) return;
    // Of a long table those that can be seen are among the ones from its upper edge on.
    const int most = std::max(1, kMostCells / columns);
    const int first = rows > most ? std::max(0, view.indexAt(QPoint(1, 1)).row()) : 0;
    for (int row = first; row < std::min(rows, first + most); ++row)
      for (int column = 0; column < columns; ++column) {
        const QModelIndex cell = model->index(row, column, root);
        const QRect place = view.visualRect(cell) & view.viewport()->rect();
        if (place.isEmpty()) continue;
        Add(*view.viewport(), view.objectName(), cell.data().toString(), place, {{"row", row}, {"column", column}});
      }
  }

  void Add(const QWidget& on, const QString& name, const QString& text, const QRect& place, QJsonObject more = {}) {
    const QPoint corner = on.mapToGlobal(place.topLeft());
    more["window"] = window_;
    more["class"] = QString::fromLatin1(on.metaObject()->className());
    more["name"] = name;
    more["text"] = text;
    more["x"] = corner.x();
    more["y"] = corner.y();
    more["w"] = place.width();
    more["h"] = place.height();
    seen_.append(more);
  }

  QString window_;
  QJsonArray seen_;
};

}  // namespace

QString Listing() {
  return Look().Take();
}
