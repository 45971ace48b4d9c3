#pragma once

#include <QDialog>
#include <QPointer>
#include <concepts>
#include <optional>
#include <type_traits>
#include <typeindex>
#include <utility>
#include <vector>

#include "base/scope.h"
#include "i18n/translation.h"
#include "platform/dialogs/dialogs.h"

namespace velk {

class WindowHost;

/// A window whose answer is read once it is left.
template <class Window>
concept Answering = requires(const Window& window) {
  window.Answer();
};

/// Opens every window and dialog of the program, and owns their parent, language, life and nesting. A window is
/// constructed as `Window(host, values...)`: it takes host.Parent() as its parent and shows itself in host.Words().
///
///   if (const auto choices = host.Ask<HardwareSettings>(question)) ...      O.K. gives window.Answer()
///   host.Show<Alarms>(session);                                             closing it is all
///   host.Open<HelpWindow>().ShowTopic(number);                              stays open beside the main window
///
/// Dialogs stand under the rules of the boxes (platform/dialogs): samples go on behind them, and they are left without
/// an answer at the end of the program. A parent that is destroyed takes them along, which gives no answer either.
class WindowHost {
 public:
  /// Both outlive the host.
  WindowHost(Dialogs& dialogs, const Translation& translation) : dialogs_(dialogs), translation_(translation) {}
  ~WindowHost() { CloseAll(); }
  WindowHost(const WindowHost&) = delete;
  WindowHost& operator=(const WindowHost&) = delete;

  /// The main window, over which the first dialog stands.
  void SetParent(QWidget* parent) { parent_ = parent; }
  /// What a dialog that is opened now stands over: the topmost dialog or box, else the main window.
  QWidget* Parent() const;
  Dialogs& Boxes() const { return dialogs_; }
  const Translation& Words() const { return translation_; }

  /// Runs a dialog and gives what it answers once it is accepted; nothing where it is left otherwise.
  template <Answering Window, class... Values>
  auto Ask(Values&&... values) {
    return Run<Window>(true, std::forward<Values>(values)...);
  }

  /// Runs a dialog whose closing is the answer, however it is closed: gives what it answers, where it has an answer.
  template <class Window, class... Values>
  auto Show(Values&&... values) {
    if constexpr (Answering<Window>) {
      return Run<Window>(false, std::forward<Values>(values)...);
    } else {
      if (dialogs_.IsEnding()) return;
      const QPointer<Window> window = new Window(*this, std::forward<Values>(values)...);
      const OnLeaving left([&] { delete window; });
      RunModal(window.data());
    }
  }

  /// The one window of its kind that blocks nothing, in front: made by the first call, and again where it was deleted.
  template <class Window, class... Values>
  Window& Open(Values&&... values) {
    auto* window = static_cast<Window*>(Find(typeid(Window)));
    if (!window) {
      window = new Window(*this, std::forward<Values>(values)...);
      open_.push_back({typeid(Window), window});
    }
    BringToFront(*window);
    return *window;
  }

  /// The window of a kind that Open has made, shown or not; null where there is none.
  template <class Window>
  Window* Opened() const {
    return static_cast<Window*>(Find(typeid(Window)));
  }

  /// Deletes what Open has made, the last first.
  void CloseAll();

 private:
  struct OpenWindow {
    std::type_index kind;
    QPointer<QWidget> window;
  };

  template <Answering Window, class... Values>
  auto Run(bool accepted, Values&&... values) {
    std::optional<std::decay_t<decltype(std::declval<const Window&>().Answer())>> answer;
    if (dialogs_.IsEnding()) return answer;
    // Watched: the parent may be destroyed while the dialog stands, and takes it along.
    const QPointer<Window> window = new Window(*this, std::forward<Values>(values)...);
    const OnLeaving left([&] { delete window; });
    const bool wasAccepted = RunModal(window.data());
    if (window && (wasAccepted || (!accepted && !dialogs_.IsEnding()))) answer = window->Answer();
    return answer;
  }

  /// Runs the dialog's event loop; whether it was accepted and is still there.
  bool RunModal(const QPointer<QDialog>& dialog);
  QWidget* Find(std::type_index kind) const;
  static void BringToFront(QWidget& window);

  Dialogs& dialogs_;
  const Translation& translation_;
  QPointer<QWidget> parent_;
  std::vector<OpenWindow> open_;  ///< in the order of their opening
};

}  // namespace velk
