#include "support/window_texts.h"

#include <QAbstractButton>
#include <QAction>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <map>

#include "base/message_text.h"
#include "i18n/translation.h"
#include "support/program_texts.h"

namespace velk::test {

namespace {

bool IsTheToolkits(const QObject& object) {
  const QString name = object.objectName();
  return name.startsWith("qt_") || name.startsWith("_q_");
}

bool IsWindowInside(const QWidget& widget) {
  return qobject_cast<const QMdiSubWindow*>(&widget) || (widget.isWindow() && !qobject_cast<const QMenu*>(&widget));
}

bool HasLetter(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

QString CaptionOf(const QWidget& control) {
  if (auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
  if (auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
  if (auto* group = qobject_cast<const QGroupBox*>(&control)) return group->title();
  if (auto* menu = qobject_cast<const QMenu*>(&control)) return menu->title();
  if (auto* edit = qobject_cast<const QLineEdit*>(&control)) return edit->placeholderText();
  if (qobject_cast<const QToolBar*>(&control) || qobject_cast<const QDockWidget*>(&control))
    return control.windowTitle();
  return {};
}

class Collector {
 public:
  explicit Collector(const QWidget& window) : form_(window.objectName().toStdString()) {
    Add(window.windowTitle(), &window, {form_ + "_" + form_});
    FromChildrenOf(window);
  }

  std::vector<WindowText> texts;

 private:
  void Add(const QString& text, const QWidget* control, std::vector<std::string> keys, bool isToolTip = false) {
    if (HasLetter(text)) texts.push_back({text, control, std::move(keys), isToolTip});
  }

  void FromChildrenOf(const QWidget& parent) {
    for (const QObject* child : parent.children()) {
      if (auto* item = qobject_cast<const QAction*>(child)) FromItem(*item, parent);
      auto* control = qobject_cast<const QWidget*>(child);
      if (control && !IsWindowInside(*control)) FromControl(*control);
    }
  }

  void FromControl(const QWidget& control) {
    const auto* follower = qobject_cast<const QToolButton*>(&control);
    if (follower && follower->defaultAction()) return;
    if (!IsTheToolkits(control)) {
      const std::string name = control.objectName().toStdString();
      Add(CaptionOf(control), &control, {form_ + "_" + name});
      Add(control.toolTip(), &control, {form_ + "_T_" + name}, true);
      for (const QString& text : {control.statusTip(), control.whatsThis()}) Add(text, &control, {});
    }
    if (auto* toolbar = qobject_cast<const QToolBar*>(&control)) FromButtonsOf(*toolbar);
    if (auto* tabs = qobject_cast<const QTabBar*>(&control))
      for (int i = 0; i < tabs->count(); ++i) Add(tabs->tabText(i), &control, {});
    if (auto* headings = qobject_cast<const QHeaderView*>(&control)) FromHeadings(*headings);
    FromChildrenOf(control);
  }

  void FromHeadings(const QHeaderView& headings) {
    for (int i = 0; headings.model() && i < headings.count(); ++i)
      Add(headings.model()->headerData(i, headings.orientation()).toString(), &headings, {});
  }

  /// A tool tip that nobody set says the same as the text.
  void AddItem(const QAction& item, const QWidget* control, const std::vector<std::string>& names) {
    std::vector<std::string> captions, toolTips;
    for (const std::string& name : names) {
      captions.push_back(form_ + "_" + name);
      toolTips.push_back(form_ + "_T_" + name);
    }
    Add(item.text(), control, captions);
    QString unset = item.text();
    if (item.toolTip() != unset.remove("...").remove('&')) Add(item.toolTip(), control, toolTips, true);
  }

  void FromItem(const QAction& item, const QWidget& parent) {
    const auto* toolbar = qobject_cast<const QToolBar*>(&parent);
    const bool isShownElsewhere =
        item.menu() || (toolbar && (item.text() == toolbar->windowTitle() || toolbar->actions().contains(&item)));
    if (!item.isSeparator() && !isShownElsewhere && !IsTheToolkits(item))
      AddItem(item, nullptr, {item.objectName().toStdString()});
  }

  void FromButtonsOf(const QToolBar& toolbar) {
    int index = 0;
    for (QAction* button : toolbar.actions())
      AddItem(*button, toolbar.widgetForAction(button),
              {toolbar.objectName().toStdString() + "_" + std::to_string(++index), button->objectName().toStdString()});
  }

  const std::string form_;
};

std::string Fault(const WindowText& text, const std::string& what) {
  return (text.keys.empty() ? "(no key)" : text.keys.front()) + " \"" + text.text.toStdString() + "\": " + what;
}

const cLanguagMesg* RowOf(const WindowText& text) {
  for (const std::string& key : text.keys)
    if (const cLanguagMesg* row = RussianWindows().Languages.Find(key)) return row;
  return nullptr;
}

/// Russian texts of the messages, by the English ones.
const std::map<std::string, std::string>& RussianOfMessages() {
  static const auto texts = [] {
    std::map<std::string, std::string> all;
    for (const ProgramText& row : ProgramTexts())
      all[row.english] = RussianWindows().Translator.Translate(row.english, row.number);
    return all;
  }();
  return texts;
}

/// What is wrong with the rows for an English text; empty where it has Russian.
std::string FaultOfRow(const WindowText& text) {
  const std::string english = text.text.toStdString();
  if (RussianOfMessages().contains(english)) return {};
  const cLanguagMesg* row = RowOf(text);
  if (!row) return "has no row in data/captions";
  if (row->English != english) return "its row has the English text \"" + row->English + "\"";
  if (!row->Transelate || row->Text.empty()) return "its row has no Russian";
  return {};
}

/// Whether a name is among `names`, or begins as one of them that ends in "*".
bool IsNamed(const std::string& name, const std::set<std::string>& names) {
  return std::any_of(names.begin(), names.end(), [&](const std::string& each) {
    return each.ends_with('*') ? name.starts_with(each.substr(0, each.size() - 1)) : name == each;
  });
}

void AddKeys(const QString& where, const QStringList& texts, Faults& faults) {
  std::map<QString, QString> owners;
  for (const QString& text : texts) {
    const QString key = QKeySequence::mnemonic(text).toString();
    if (key.isEmpty()) continue;
    const auto [owner, fresh] = owners.emplace(key, text);
    if (!fresh) faults.push_back(QString("%1: %2 and %3").arg(where, owner->second, text).toStdString());
  }
}

QStringList ItemsOf(const QWidget& menu) {
  QStringList texts;
  for (const QAction* item : menu.actions())
    if (item->isVisible()) texts << item->text();
  return texts;
}

}  // namespace

const Translation& RussianWindows() {
  static const auto russian = [] {
    Translation all;
    all.Load(VELK_TRANSLATIONS_DIR, "Russian");
    return all;
  }();
  return russian;
}

std::vector<WindowText> TextsOf(const QWidget& window) {
  return Collector(window).texts;
}

Faults TextsWithoutRussian(const QWidget& window, const std::set<std::string>& composed) {
  Faults faults;
  for (const WindowText& text : TextsOf(window)) {
    if (text.control && IsNamed(text.control->objectName().toStdString(), composed)) continue;
    if (const std::string fault = FaultOfRow(text); !fault.empty()) faults.push_back(Fault(text, fault));
  }
  return faults;
}

Faults TextsLeftInEnglish(const QWidget& window) {
  Faults faults;
  for (const WindowText& text : TextsOf(window)) {
    const std::string shown = text.text.toStdString();
    const cLanguagMesg* row = RowOf(text);
    const auto message = RussianOfMessages().find(shown);
    const bool rowSaysElse = row && row->English == shown && row->Text != shown;
    const bool messageSaysElse = !row && message != RussianOfMessages().end() && message->second != shown;
    if (rowSaysElse || messageSaysElse) faults.push_back(Fault(text, "stayed English"));
  }
  return faults;
}

Faults KeysMarkedTwice(const QWidget& window) {
  Faults faults;
  QStringList inWindow;
  for (const WindowText& text : TextsOf(window)) {
    if (!text.control || text.isToolTip || !text.control->isVisibleTo(&window)) continue;
    const auto* label = qobject_cast<const QLabel*>(text.control);
    const bool answersToKey = qobject_cast<const QAbstractButton*>(text.control) ||
                              qobject_cast<const QGroupBox*>(text.control) || (label && label->buddy());
    if (answersToKey) inWindow << text.text;
  }
  for (const QMenuBar* bar : window.findChildren<QMenuBar*>()) inWindow << ItemsOf(*bar);
  AddKeys(window.objectName(), inWindow, faults);
  for (const QMenu* menu : window.findChildren<QMenu*>())
    if (!qobject_cast<const QMdiSubWindow*>(menu->parent())) AddKeys(menu->objectName(), ItemsOf(*menu), faults);
  return faults;
}

}  // namespace velk::test
