#include "shell/toolbar_menus.h"

#include <QAction>
#include <QMdiArea>
#include <QMenu>
#include <QShortcut>
#include <QToolBar>

#include "instruments/table/protocols.h"
#include "shell/main_form.h"
#include "shell/not_built.h"

namespace velk {

ToolbarMenus::ToolbarMenus(MainForm& form, const Session& session) : form_(form), session_(session) {
  PopUp("Edit", "mnuEdit");
  PopUp("Tools", "mnuTools");
  QObject::connect(form_.MenuItem("mnuTools")->menu(), &QMenu::aboutToShow, &form_, [this] { mnuTools_Click(); });
  MakeReachableByKeyboard();
}

void ToolbarMenus::mnuTools_Click() {
  const auto allow = [this](const char* item, bool hasWork) {
    form_.MenuItem(item)->setEnabled(hasWork && form_.RuleAllows(item) && IsBuilt(item));
  };
  allow("mnuToolsRemove", session_.NumberOfFormulae >= 1);
  allow("mnuToolsInclude", session_.NumberOfFormulae >= 1);
  allow("mnuToolsReset", ProtocolOf(session_).hasCommands);
}

void ToolbarMenus::PopUp(const char* key, const char* menu) {
  QAction* button = form_.Button(key);
  QObject::connect(button, &QAction::triggered, &form_, [this, button, menu] {
    const QWidget* below = form_.Toolbar().widgetForAction(button);
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
  auto* shortcut = new QShortcut(Qt::Key_F6, &form_);
  QObject::connect(shortcut, &QShortcut::activated, &form_, [this] { SwitchFocus(); });
  // A chord: a key that was hit by accident must not end a recording.
  GiveKey("RecordToDB", Qt::CTRL | Qt::Key_R);
  GiveKey("Alarms", Qt::Key_F8);
}

/// The key works in all of the window, also while the toolbar is hidden.
void ToolbarMenus::GiveKey(const char* key, const QKeySequence& shortcut) {
  form_.Button(key)->setShortcut(shortcut);
  form_.addAction(form_.Button(key));
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
