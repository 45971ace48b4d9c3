#pragma once

#include <QWidget>

#include "shell/panel_label.h"

namespace velk {

/// A panel of the status bar around its label. A text that takes as much room as the one before moves nothing else: a
/// label that stands in the bar by itself has the whole window laid out anew with each sample.
class StatusPanel : public QWidget {
  Q_OBJECT

 public:
  /// Takes the label over.
  explicit StatusPanel(PanelLabel* label);

  PanelLabel& Label() const { return *label_; }
  /// Digits that differ are on the screen with the next ShowChanges.
  void ShowText(const QString& text);
  bool HasChanges() const { return label_->HasChanges(); }
  void ShowChanges(WindowStrips& strips) { label_->ShowChanges(strips); }

  QSize sizeHint() const override { return room_; }
  QSize minimumSizeHint() const override { return least_; }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void FollowLabel();

  PanelLabel* label_;
  QSize room_;
  QSize least_;
  QFont letters_;                  ///< of the label, of which a style sheet's change tells only the label
  bool digitsKeepPlaces_ = false;  ///< those of the text, in these letters
};

}  // namespace velk
