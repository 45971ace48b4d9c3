#pragma once

#include <QDialog>
#include <memory>

#include "i18n/translation.h"
#include "instruments/setup/separators.h"
#include "platform/dialogs/dialogs.h"

namespace Ui {
class Intermittent;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends now and then.
class Intermittent : public QDialog {
  Q_OBJECT

 public:
  Intermittent(const Separators& separators, Dialogs& dialogs, const Translation& translation,
               QWidget* parent = nullptr);
  ~Intermittent() override;

  const Separators& Chosen() const;

 private:
  std::unique_ptr<Ui::Intermittent> ui_;
};

}  // namespace velk
