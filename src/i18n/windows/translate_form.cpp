#include "i18n/windows/translate_form.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "base/text_qt.h"

namespace velk {

namespace {

/// What stands for a caption differs from control to control; one that has none is passed over.
void SetCaption(QWidget& control, const QString& text) {
  if (auto* label = qobject_cast<QLabel*>(&control)) return label->setText(text);
  if (auto* button = qobject_cast<QAbstractButton*>(&control)) return button->setText(text);
  if (auto* group = qobject_cast<QGroupBox*>(&control)) return group->setTitle(text);
  if (auto* menu = qobject_cast<QMenu*>(&control)) return menu->setTitle(text);
  if (auto* edit = qobject_cast<QLineEdit*>(&control)) return edit->setPlaceholderText(text);
  if (qobject_cast<QToolBar*>(&control) || qobject_cast<QDockWidget*>(&control)) control.setWindowTitle(text);
}

void SetCaption(QAction& item, const QString& text) {
  item.setText(text);
}

bool IsFormOfItsOwn(const QWidget& widget) {
  return qobject_cast<const QMdiSubWindow*>(&widget) || (widget.isWindow() && !qobject_cast<const QMenu*>(&widget));
}

/// A toolbar's button shows what its action says, and takes it over again with each change of it.
bool FollowsItsAction(const QWidget& widget) {
  const auto* button = qobject_cast<const QToolButton*>(&widget);
  return button && button->defaultAction();
}

class FormTranslation {
 public:
  FormTranslation(QWidget& form, const clsLanguages& languages)
      : form_(form), name_(FromQt(form.objectName())), languages_(languages) {}

  void Apply() {
    if (const auto text = languages_.Caption(name_ + "_" + name_)) form_.setWindowTitle(ToQt(*text));
    ApplyToControls(form_);
  }

 private:
  template <class Control>
  void ApplyTo(Control& control, const std::string& name) {
    if (const auto text = languages_.Caption(name_ + "_" + name)) SetCaption(control, ToQt(*text));
    if (const auto text = languages_.Caption(name_ + "_T_" + name)) control.setToolTip(ToQt(*text));
  }

  void ApplyToControls(const QObject& parent) {
    for (QObject* child : parent.children()) {
      const std::string name = FromQt(child->objectName());
      if (auto* item = qobject_cast<QAction*>(child)) ApplyTo(*item, name);
      auto* control = qobject_cast<QWidget*>(child);
      if (!control || IsFormOfItsOwn(*control) || FollowsItsAction(*control)) continue;
      ApplyTo(*control, name);
      if (auto* toolbar = qobject_cast<QToolBar*>(control)) ApplyToButtons(*toolbar);
      ApplyToControls(*control);
    }
  }

  void ApplyToButtons(const QToolBar& toolbar) {
    int index = 0;
    for (QAction* button : toolbar.actions())
      ApplyTo(*button, FromQt(toolbar.objectName()) + "_" + std::to_string(++index));
  }

  QWidget& form_;
  const std::string name_;
  const clsLanguages& languages_;
};

}  // namespace

void TranslateForm(QWidget& form, const Translation& translation) {
  if (!translation.Languages.IsEmpty()) FormTranslation(form, translation.Languages).Apply();
}

}  // namespace velk
