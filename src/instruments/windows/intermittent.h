#pragma once

#include <QDialog>
#include <memory>

#include "i18n/languages.h"
#include "i18n/translator.h"
#include "instruments/separators.h"
#include "platform/dialogs.h"

namespace Ui {
class Intermittent;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends now and then.
class Intermittent : public QDialog {
  Q_OBJECT

 public:
  Intermittent(const Separators& separators, Dialogs& dialogs, const clstranslation& translator,
               const clsLanguages& languages, QWidget* parent = nullptr);
  ~Intermittent() override;

  const Separators& Chosen() const;

 private:
  std::unique_ptr<Ui::Intermittent> ui_;
};

}  // namespace velk
