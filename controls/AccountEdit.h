#pragma once

#include <string>

#include "controls/Control.h"

namespace margindesk {

// An account box. The host's account editor writes the chosen account into the hint; the text is what a
// person typed.
class TAccountEdit : public TControl {
 public:
  using TControl::TControl;

  const std::string& GetText() const noexcept { return FText; }
  void SetText(std::string text) { FText = std::move(text); }
  const std::string& GetHint() const noexcept { return FHint; }
  void SetHint(std::string hint) { FHint = std::move(hint); }

 private:
  std::string FText;
  std::string FHint;
};

}  // namespace margindesk
