#pragma once

#include <map>
#include <string>

#include "model/main_view.h"

namespace velk::test {

/// A main window that remembers what it was told.
class RecordingView : public MainView {
 public:
  void SetPanel(int panel, const OperatorText& text) override { panels[panel] = text.English(); }
  void ShowData(const OperatorText& text, bool warning) override {
    data = text.English();
    dataWarns = warning;
  }
  void ShowRecording(const OperatorText& text, const OperatorText& toolTip) override {
    recording = text.English();
    recordingTip = toolTip.English();
  }
  void SetMenuEnabled(std::string_view item, bool enabled) override { menuEnabled[std::string(item)] = enabled; }
  void ShowStatus(const MessageText& status) override { statuses.emplace_back(status.english); }
  void SetMenuCaption(std::string_view item, const OperatorText& caption) override {
    menuCaption[std::string(item)] = caption.English();
  }
  void SetButtonImage(std::string_view key, int number) override { images[std::string(key)] = number; }
  int ButtonImage(std::string_view key) const override {
    const auto found = images.find(std::string(key));
    return found == images.end() ? 0 : found->second;
  }
  void SetButtonVisible(std::string_view key, bool visible) override { buttonVisible[std::string(key)] = visible; }
  void SetButtonEnabled(std::string_view key, bool enabled) override { buttonEnabled[std::string(key)] = enabled; }
  void SetButtonToolTip(std::string_view key, const OperatorText& text) override {
    toolTips[std::string(key)] = text.English();
  }
  void ShowSpeed(int shown) override { speed = shown; }
  void ResetCaption() override { ++captionResets; }
  void SetHourglass(bool on) override { hourglass = on; }
  void Repaint() override { ++repaints; }
  void ShowDue() override { ++dueShown; }
  void Beep() override { ++beeps; }

  std::map<int, std::string> panels;
  std::map<std::string, bool> menuEnabled, buttonVisible, buttonEnabled;
  std::map<std::string, std::string> menuCaption, toolTips;
  std::map<std::string, int> images;
  std::vector<std::string> statuses;
  std::string data, recording, recordingTip;
  bool dataWarns = false;
  int speed = 0;
  int captionResets = 0;
  int repaints = 0;
  int dueShown = 0;
  int beeps = 0;
  bool hourglass = false;
};

}  // namespace velk::test
