#pragma once

#include <QDialog>
#include <memory>

#include "i18n/windows/window_host.h"
#include "instruments/setup/separators.h"

namespace Ui {
class Intermittent;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends now and then.
class Intermittent : public QDialog {
  Q_OBJECT

 public:
  Intermittent(WindowHost& host, const Separators& separators);
  ~Intermittent() override;

  const Separators& Answer() const;

 private:
  std::unique_ptr<Ui::Intermittent> ui_;
};

}  // namespace velk
