#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "platform/drawing/retained_surface.h"
#include "platform/drawing/units.h"

namespace velk {

/// A surface that writes down what it is told, a line a call: "line 966 0 966 1800 000000 w1". Its text is
/// 100 units a character wide and 200 high, its pixels are those of 96 dots an inch.
class SurfaceRecording : public RetainedSurface {
 public:
  SurfaceRecording(double width, double height) : width_(width), height_(height) {}

  double Width() const override { return width_; }
  double Height() const override { return height_; }
  int PixelHeight() const override { return static_cast<int>(height_ / kTwipsPerPixel); }
  void Resize(double width, double height) {
    width_ = width;
    height_ = height;
  }

  void Cls() override { calls.emplace_back("cls"); }
  void SetPenWidth(double pixels) override { penWidth_ = pixels; }
  void Line(double x1, double y1, double x2, double y2, std::int32_t colour) override {
    calls.push_back("line " + Number(x1) + " " + Number(y1) + " " + Number(x2) + " " + Number(y2) + Pen(colour));
  }
  void Circle(double x, double y, double radius, std::int32_t colour) override {
    calls.push_back("circle " + Number(x) + " " + Number(y) + " " + Number(radius) + Pen(colour));
  }
  void Fill(double x, double y, double width, double height, std::int32_t colour) override {
    calls.push_back("fill " + Number(x) + " " + Number(y) + " " + Number(width) + " " + Number(height) + " " +
                    Hex(colour));
  }
  void Picture(double x, double y, double width, double height, const PictureRows& picture) override {
    calls.push_back("picture " + Number(x) + " " + Number(y) + " " + Number(width) + " " + Number(height) + " of " +
                    std::to_string(picture.width) + "x" + std::to_string(picture.height));
  }
  void SetFont(const TextFont& font) override {
    calls.push_back("font '" + font.family + "' " + Number(font.points) + (font.bold ? " bold" : ""));
  }
  void Print(double x, double y, std::string_view text, std::int32_t colour) override {
    calls.push_back("print " + Number(x) + " " + Number(y) + " '" + std::string(text) + "' " + Hex(colour));
  }
  double TextWidth(std::string_view text) const override {
    int characters = 0;
    for (const char c : text) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return 100.0 * characters;
  }
  double TextHeight(std::string_view) const override { return 200; }
  void ScrollUp(int pixels) override { calls.push_back("scroll " + std::to_string(pixels)); }
  /// What was drawn on the other one stands here as if it had been drawn here.
  void CopyFrom(const RetainedSurface& other) override {
    const auto& from = dynamic_cast<const SurfaceRecording&>(other);
    Resize(from.width_, from.height_);
    calls = from.calls;
  }

  std::vector<std::string> calls;

 private:
  static std::string Number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
  }
  static std::string Hex(std::int32_t colour) {
    char text[16];
    std::snprintf(text, sizeof text, "%06X", static_cast<unsigned>(colour));
    return text;
  }
  std::string Pen(std::int32_t colour) const { return " " + Hex(colour) + " w" + Number(penWidth_); }

  double width_;
  double height_;
  double penWidth_ = 1;
};

}  // namespace velk
