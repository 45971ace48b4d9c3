#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "i18n/translation.h"
#include "wells/survey_grid.h"
#include "wells/well_units.h"

namespace velk {

/// The rows of a survey as the toolkit shows them; units stand below the headings.
class SurveyModel : public QAbstractTableModel {
 public:
  /// All outlive the model. `enter` is called with what was typed into a cell.
  SurveyModel(const SurveyGrid& grid, const WellUnits& units, const Translation& words,
              std::function<void(const QModelIndex& cell, const QString& typed)> enter);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The grid has changed. What is selected stays.
  void ShowAnew();
  /// What is wrong with a cell, or remarkable; empty else.
  QString RemarkOn(const QModelIndex& cell) const;

 private:
  QString Text(const OperatorText& text) const;

  const SurveyGrid& grid_;
  const WellUnits& units_;
  const Translation& words_;
  const std::function<void(const QModelIndex&, const QString&)> enter_;
  int rows_;  ///< that the views know of
};

}  // namespace velk
