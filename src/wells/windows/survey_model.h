#pragma once

#include "i18n/translation.h"
#include "platform/windows/cell_model.h"
#include "wells/survey_grid.h"
#include "wells/well_units.h"

namespace velk {

/// The rows of a survey as the toolkit shows them; units stand below the headings.
class SurveyModel : public CellModel {
 public:
  /// All outlive the model.
  SurveyModel(const SurveyGrid& grid, const WellUnits& units, const Translation& words, EnterText enter);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

  /// The grid has changed. What is selected stays.
  void ShowAnew();
  QString RemarkOn(const QModelIndex& cell) const override;

 protected:
  QString TextOf(const QModelIndex& cell) const override;
  /// The whole row; its first cell carries the mark.
  bool IsFault(const QModelIndex& cell) const override;
  bool IsRemarkable(const QModelIndex& cell) const override;

 private:
  QString Text(const OperatorText& text) const;

  const SurveyGrid& grid_;
  const WellUnits& units_;
  const Translation& words_;
  int rows_;  ///< that the views know of
};

}  // namespace velk
