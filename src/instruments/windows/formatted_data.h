#pragma once

#include <QDialog>
#include <memory>

#include "i18n/languages.h"
#include "i18n/translator.h"
#include "instruments/separators.h"
#include "platform/dialogs.h"

namespace Ui {
class FormattedData;
}

namespace velk {

/// Edits what divides the lines of an instrument that sends by itself.
class FormattedData : public QDialog {
  Q_OBJECT

 public:
  FormattedData(const Separators& separators, Dialogs& dialogs, const clstranslation& translator,
                const clsLanguages& languages, QWidget* parent = nullptr);
  ~FormattedData() override;

  const Separators& Chosen() const;

 private:
  std::unique_ptr<Ui::FormattedData> ui_;
};

}  // namespace velk
