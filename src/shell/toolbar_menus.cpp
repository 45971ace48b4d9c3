#include "shell/toolbar_menus.h"

#include <QAction>
#include <QMdiArea>
#include <QMenu>
#include <QToolBar>

#include "shell/main_form.h"

namespace velk {

ToolbarMenus::ToolbarMenus(MainForm& form) : form_(form) {
  PopUp("Edit", "mnuEdit");
  PopUp("Tools", "mnuTools");
  MakeReachableByKeyboard();
}

void ToolbarMenus::PopUp(const char* key, const char* menu) {
  form_.Table().Bind(key, [this, key, menu] {
    const QWidget* below = form_.Toolbar().widgetForAction(form_.Button(key));
    form_.MenuItem(menu)->menu()->popup(below->mapToGlobal(below->rect().bottomLeft()));
  });
}

void ToolbarMenus::MakeReachableByKeyboard() {
  for (QAction* action : form_.Toolbar().actions()) {
    const bool indicates =
        action->objectName() == QLatin1String("connect") || action->objectName() == QLatin1String("disconnect");
    if (!indicates && !action->isSeparator()) form_.Toolbar().widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
  }
  // Graph windows keep the tabulator to themselves.
  form_.Table().Bind("mnuViewGoToToolBar", [this] { SwitchFocus(); });
}

void ToolbarMenus::SwitchFocus() {
  // As after a tabulator: the frame around the button that has the keyboard is drawn.
  form_.setAttribute(Qt::WA_KeyboardFocusChange);
  const QWidget* keyboard = form_.focusWidget();
  auto* logo = form_.findChild<QWidget*>(QStringLiteral("CompanyLogo"));
  if (form_.Toolbar().isAncestorOf(keyboard) || keyboard == logo)
    return form_.GraphArea().setFocus(Qt::OtherFocusReason);
  if (!form_.Toolbar().isVisible()) {
    if (logo->isVisible()) logo->setFocus(Qt::TabFocusReason);
    return;
  }
  for (QAction* action : form_.Toolbar().actions()) {
    QWidget* button = form_.Toolbar().widgetForAction(action);
    if (!action->isVisible() || !action->isEnabled() || button->focusPolicy() == Qt::NoFocus) continue;
    return button->setFocus(Qt::TabFocusReason);
  }
}

}  // namespace velk
