#pragma once

#include <QDialog>
#include <QImage>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "i18n/windows/window_host.h"
#include "imaging/bitmap.h"
#include "imaging/printer_choice.h"
#include "paper/page_composer.h"
#include "platform/dialogs/procedure.h"

class QAbstractButton;

namespace Ui {
class frmPrintGraph;
}

namespace velk {

class PageView;

/// What the window of a page works with; all outlives it.
struct PageAccess {
  Session& session;
  const Platform& platform;
  PrinterChoice& printer;
  bool& autoScaleTime;                 ///< AutoScaleTime, which stays for the next page
  std::function<void()> keepSettings;  ///< what was placed or entered goes to the disk
};

/// The company's picture can't be read.
MessageBox LogoUnreadableBox(const std::string& file);

/// The page of one graph: previewed, printed, saved as a picture.
class frmPrintGraph : public QDialog {
  Q_OBJECT

 public:
  /// The log's times were found in `composer`, and are sound.
  frmPrintGraph(WindowHost& host, const PageAccess& access, PageComposer& composer);
  ~frmPrintGraph() override;

 private:
  using Run = const Statements&;
  void Bind(QAbstractButton* key, void (frmPrintGraph::*work)(Run));
  void RefreshPicture1(const std::function<void()>& change = [] {});
  void Change(Run run, const std::function<void()>& change);
  void Redraw(Run run);
  QImage DrawSheet(double height, double ratio, double points);
  void UpdateKeys();
  void ShowTime(double y);
  double ZoomPercent() const;

  void Print_Click(Run run);
  void Printer_Click(Run run);
  void SaveToFile_Click(Run run);
  void DrawCurves_Click(Run run);
  void Comments_Click(Run run);
  void Logo_Click(Run run);
  void InsertText_Click(Run run);
  void FillPicture3Info();
  void AutoScale_Click(Run run);
  void FullView_Click(Run run);
  void FilesAndTime(bool autoScale);
  bool AskForTimes();
  std::optional<double> AskForTime(const MessageText& prompt, double present);
  void Resize_Click(Run run);
  void ChangeFont_Click(Run run);
  void Copy_Click(Run run);
  void PrintOn(Printer& printer);
  void RunStep(const char* procedure, const std::function<void()>& step);
  Bitmap SheetAsPicture();
  void ConnectPlaces();
  void ShowPlaces();
  void Place(const std::function<void()>& place);
  std::string Family() const;

  std::unique_ptr<Ui::frmPrintGraph> ui_;
  WindowHost& host_;
  const PageAccess access_;
  PageComposer& composer_;
  PageView* view_;
  bool curvesDrawn_ = false;
  bool commentsDrawn_ = false;
  bool drawing_ = false;
  bool marginsTold_ = false;
  int zoom_;  ///< the entry of the list that the page is shown at
};

}  // namespace velk
