// Preloaded into the program by tests that work it with a mouse on a display: tells where its controls are and what
// they show. The program itself knows nothing of being looked at, and nothing is changed in it. Each line of the
// standard input is a question, and each line of the standard output its answer, empty where there is none:
//
//   place PATH             x y width height of a control that is seen, in pixels of the screen
//   handle PATH            the same of the handle of a bar
//   groove PATH            the same of the way of the handle
//   property PATH NAME     a property of an object as a text
//   look PATH              a number that is another one where the control looks different on the screen
//   picture FILE           saves what the screen shows
//   list                   all that can be worked by now, see listing.h
//
// A path is names of objects or of their classes from a window down, as "MainForm/Pause"; with ":2" the second of that
// name from the top of the screen down, as "GraphFormNew:2/VScroll1".

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QSocketNotifier>
#include <QStyleOptionSlider>
#include <QToolBar>
#include <QVariant>
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <utility>

#include "listing.h"

namespace {

bool IsNamed(const QObject& object, const QString& name) {
  return object.objectName() == name ||
         QString::fromLatin1(object.metaObject()->className()).section(QStringLiteral("::"), -1) == name;
}

/// A menu stands for its item, which may be there while the menu itself hangs up.
bool IsSeen(QObject* object) {
  const auto* widget = qobject_cast<QWidget*>(object);
  return widget == nullptr || widget->isVisible() || qobject_cast<QMenu*>(object) != nullptr;
}

QRect OnScreen(const QWidget& widget, const QRect& part) {
  return {widget.mapToGlobal(part.topLeft()), part.size()};
}

QRect PlaceOf(QAction& action) {
  for (QObject* where : action.associatedObjects()) {
    if (auto* bar = qobject_cast<QToolBar*>(where)) {
      const QWidget* button = bar->widgetForAction(&action);
      if (button != nullptr && button->isVisible()) return OnScreen(*button, button->rect());
    }
    auto* menu = qobject_cast<QMenu*>(where);
    if (menu != nullptr && menu->isVisible()) return OnScreen(*menu, menu->actionGeometry(&action));
    auto* bar = qobject_cast<QMenuBar*>(where);
    if (bar != nullptr && bar->isVisible()) return OnScreen(*bar, bar->actionGeometry(&action));
  }
  return {};
}

QRect PlaceOf(QObject* object) {
  if (auto* menu = qobject_cast<QMenu*>(object)) return PlaceOf(*menu->menuAction());
  if (auto* action = qobject_cast<QAction*>(object)) return PlaceOf(*action);
  const auto* widget = qobject_cast<QWidget*>(object);
  return widget == nullptr ? QRect() : OnScreen(*widget, widget->rect());
}

/// The object of a step of a path: the n-th one that is named so among those below `from`, or among all windows. The
/// order of children is that in which windows were raised.
QObject* Step(QObject* from, const QString& step) {
  const QString name = step.section(QLatin1Char(':'), 0, 0);
  QObjectList below;
  if (from != nullptr) below = from->findChildren<QObject*>();
  for (QWidget* window : from == nullptr ? QApplication::topLevelWidgets() : QWidgetList()) {
    below.append(window);
    below.append(window->findChildren<QObject*>());
  }
  QObjectList found;
  for (QObject* object : std::as_const(below))
    if (IsNamed(*object, name) && IsSeen(object)) found.append(object);
  const auto above = [](QObject* a, QObject* b) {
    const QRect placeA = PlaceOf(a), placeB = PlaceOf(b);
    return std::pair(placeA.y(), placeA.x()) < std::pair(placeB.y(), placeB.x());
  };
  std::stable_sort(found.begin(), found.end(), above);
  return found.value(std::max(step.section(QLatin1Char(':'), 1).toInt(), 1) - 1);
}

QObject* Find(const QString& path) {
  QObject* found = nullptr;
  for (const QString& step : path.split(QLatin1Char('/'))) {
    found = Step(found, step);
    if (found == nullptr) return nullptr;
  }
  return found;
}

/// A part of a bar: its style alone knows where that is.
QRect PartOf(QObject* object, QStyle::SubControl scrollBar, QStyle::SubControl slider) {
  auto* bar = qobject_cast<QAbstractSlider*>(object);
  if (bar == nullptr) return {};
  QStyleOptionSlider option;
  option.initFrom(bar);
  option.orientation = bar->orientation();
  option.minimum = bar->minimum();
  option.maximum = bar->maximum();
  option.sliderPosition = option.sliderValue = bar->value();
  option.singleStep = bar->singleStep();
  option.pageStep = bar->pageStep();
  if (bar->orientation() == Qt::Horizontal) option.state |= QStyle::State_Horizontal;
  const bool scrolls = qobject_cast<QScrollBar*>(bar) != nullptr;
  const QRect part = bar->style()->subControlRect(scrolls ? QStyle::CC_ScrollBar : QStyle::CC_Slider, &option,
                                                  scrolls ? scrollBar : slider, bar);
  return OnScreen(*bar, part);
}

QString TextOf(const QRect& place) {
  if (!place.isValid()) return {};
  return QStringLiteral("%1 %2 %3 %4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
}

QPixmap Screen() {
  return QGuiApplication::primaryScreen()->grabWindow(0);
}

QString LookOf(const QRect& place) {
  if (!place.isValid()) return {};
  const QImage image = Screen().copy(place).toImage().convertToFormat(QImage::Format_RGB32);
  return QString::number(qHashBits(image.constBits(), static_cast<std::size_t>(image.sizeInBytes())));
}

QString Answer(const QStringList& words) {
  const QString& question = words[0];
  const QString& about = words.value(1);
  if (question == QLatin1String("list")) return Listing();
  if (question == QLatin1String("picture")) return Screen().save(about) ? about : QString();
  QObject* object = Find(about);
  if (object == nullptr) return {};
  if (question == QLatin1String("place")) return TextOf(PlaceOf(object));
  if (question == QLatin1String("handle"))
    return TextOf(PartOf(object, QStyle::SC_ScrollBarSlider, QStyle::SC_SliderHandle));
  if (question == QLatin1String("groove"))
    return TextOf(PartOf(object, QStyle::SC_ScrollBarGroove, QStyle::SC_SliderGroove));
  if (question == QLatin1String("look")) return LookOf(PlaceOf(object));
  if (question == QLatin1String("property")) return object->property(words.value(2).toLatin1().constData()).toString();
  return {};
}

void Listen() {
  qunsetenv("LD_PRELOAD");  // programs that this one starts have no questions of their own
  auto* questions = new QSocketNotifier(0, QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(questions, &QSocketNotifier::activated, questions, [questions] {
    std::string line;
    if (!std::getline(std::cin, line)) return questions->setEnabled(false);
    const QString answer = Answer(QString::fromStdString(line).split(QLatin1Char(' ')));
    std::printf("%s\n", answer.section(QLatin1Char('\n'), 0, 0).toUtf8().constData());
    std::fflush(stdout);
  });
}

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Listen)
