#pragma once

#include <QPoint>
#include <QRect>
#include <QVarLengthArray>
#include <QWidget>
#include <span>

class QBackingStore;

namespace velk {

class PaintTarget;

/// A widget whose dots stand ready in memory.
class ReadyDots {
 public:
  /// Copies what stands under `part`, in pixels of the widget and within it, to where it is shown. Gives whether it
  /// could; nothing is copied where it couldn't.
  virtual bool CopyDots(const PaintTarget& target, const QRect& part) = 0;

 protected:
  ~ReadyDots() = default;
  /// The same for all of a region; gives false where a painter is needed for it.
  bool CopyAll(const PaintTarget& target, const QRegion& region);
};

/// What has changed in windows, brought to the screen in one pass: the dots are copied straight into the picture of
/// their window, which is then sent to the display once. The toolkit's own way takes several times as long as the
/// copies: it finds out for each widget what of it can be seen behind all others, and unites and cuts regions that long
/// for each. It is left to it where something may stand in front, or where a painter is needed.
class WindowStrips {
 public:
  WindowStrips() = default;
  ~WindowStrips() { Show(); }
  WindowStrips(const WindowStrips&) = delete;
  WindowStrips& operator=(const WindowStrips&) = delete;

  /// Parts of a widget have changed, in its pixels, each wholly below the one before. The widget stays until Show.
  /// What is copied is these parts; what is sent is the rectangle around them.
  template <class Widget>
  void Add(Widget& widget, std::span<const QRect> parts) {
    Add(widget, widget, parts);
  }
  template <class Widget>
  void Add(Widget& widget, const QRect& part) {
    Add(widget, widget, {&part, 1});
  }
  /// Brings what was added to the screen.
  void Show();

 private:
  struct Strip {
    QWidget* window;
    QWidget* widget;
    ReadyDots* dots;
    QPoint corner;    ///< of the widget in the window
    QRect place;      ///< around its parts, in the window
    qsizetype begin;  ///< of its parts
    qsizetype end;
  };

  void Add(QWidget& widget, ReadyDots& dots, std::span<const QRect> parts);
  void ShowIn(QWidget& window, std::span<const Strip> strips) const;
  bool CopyTo(QBackingStore& store, const Strip& strip) const;

  QVarLengthArray<Strip, 32> strips_;
  QVarLengthArray<QRect, 128> parts_;  ///< of the strips, in pixels of their widgets
};

}  // namespace velk
