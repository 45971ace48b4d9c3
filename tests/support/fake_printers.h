#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/errors.h"
#include "platform/printing/system_printers.h"
#include "support/surface_recording.h"

namespace velk {

/// A recorded sheet in millimetres, whose letters are 1 wide and 2 high.
class SheetRecording : public SurfaceRecording {
 public:
  SheetRecording() : SurfaceRecording(210, 297) {}
  double TextWidth(std::string_view text) const override { return SurfaceRecording::TextWidth(text) / 100; }
  double TextHeight(std::string_view) const override { return 2; }
};

/// What a printer was given.
struct PrintedDocument {
  std::string printer;
  std::string title;
  int pages = 1;
  bool ended = false;
  SheetRecording page;
};

/// A printer whose documents can be looked at.
class RecordingPrinter : public Printer {
 public:
  RecordingPrinter(std::shared_ptr<PrintedDocument> document, const Paper& sheet)
      : document_(std::move(document)), sheet_(sheet) {}

  Paper Sheet() const override { return sheet_; }
  double DotsPerInch() const override { return 600; }
  Surface& Begin(const std::string& title, Unit) override {
    document_->title = title;
    return document_->page;
  }
  void NewPage() override { ++document_->pages; }
  void End() override {
    if (failsAtEnd) throw RuntimeError(ErrorNumber::DeviceUnavailable);
    document_->ended = true;
  }

  bool failsAtEnd = false;

 private:
  std::shared_ptr<PrintedDocument> document_;
  Paper sheet_;
};

/// Printers of a system that a test makes up.
class FakePrinters : public SystemPrinters {
 public:
  std::vector<std::string> Names() const override { return names; }
  std::string Default() const override { return preset; }
  std::unique_ptr<Printer> Make(const std::string& name) const override {
    documents.push_back(std::make_shared<PrintedDocument>());
    documents.back()->printer = name;
    auto printer = std::make_unique<RecordingPrinter>(documents.back(), sheet);
    printer->failsAtEnd = fails;
    return printer;
  }

  std::vector<std::string> names{"Office", "Cabin"};
  std::string preset = "Cabin";
  Paper sheet;
  bool fails = false;
  mutable std::vector<std::shared_ptr<PrintedDocument>> documents;
};

}  // namespace velk
