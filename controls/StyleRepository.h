#pragma once

#include <vector>

#include "controls/Color.h"
#include "controls/Control.h"

namespace margindesk {

// How cells are painted.
class TStyle : public TControl {
 public:
  using TControl::TControl;

  TColor GetColor() const noexcept { return FColor; }  // of the background
  void SetColor(TColor color) { Assign(FColor, color); }
  TColor GetTextColor() const noexcept { return FTextColor; }
  void SetTextColor(TColor color) { Assign(FTextColor, color); }

 private:
  TColor FColor = kColorNone;
  TColor FTextColor = kColorNone;
};

// The styles of a form, known by their component names.
class TStyleRepository : public TControl {
 public:
  using TControl::TControl;

  const std::vector<TStyle*>& GetStyles() const noexcept { return FStyles; }
  void AddStyle(TStyle* style) { FStyles.push_back(style); }  // a component of the form

 private:
  std::vector<TStyle*> FStyles;
};

}  // namespace margindesk
