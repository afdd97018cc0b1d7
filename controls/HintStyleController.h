#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "controls/Control.h"
#include "controls/Geometry.h"

namespace margindesk {

// A font by its height: negative pixels of the characters at 96 pixels an inch, as -11 for 8 points.
struct TFont {
  std::string FName;
  std::int32_t FHeight = 0;

  void SetPointSize(std::int32_t points) noexcept { FHeight = -(points * 96 + 36) / 72; }
  std::int32_t GetPointSize() const noexcept { return (-FHeight * 72 + 48) / 96; }
  friend bool operator==(const TFont&, const TFont&) = default;
};

// How hints look.
struct THintStyle {
  TFont FFont;         // of the text
  TFont FCaptionFont;  // of the line above it

  friend bool operator==(const THintStyle&, const THintStyle&) = default;
};

// Shows one hint at a time, away from the controls' own hints.
class THintStyleController : public TControl {
 public:
  using TControl::TControl;

  const THintStyle& GetStyle() const noexcept { return FStyle; }
  void SetStyle(THintStyle style) { Assign(FStyle, std::move(style)); }

  // point: of the screen.
  void ShowHint(TPoint point, std::string_view caption, std::string_view text) {
    FPoint = point;
    FHintCaption = caption;
    FHintText = text;
    FShowing = true;
    Updated();
  }
  void HideHint() { Assign(FShowing, false); }

  bool IsShowing() const noexcept { return FShowing; }
  TPoint GetPoint() const noexcept { return FPoint; }  // of the last hint
  const std::string& GetHintCaption() const noexcept { return FHintCaption; }
  const std::string& GetHintText() const noexcept { return FHintText; }

 private:
  THintStyle FStyle;
  bool FShowing = false;
  TPoint FPoint;
  std::string FHintCaption;
  std::string FHintText;
};

}  // namespace margindesk
