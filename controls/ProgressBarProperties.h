#pragma once

#include <string>

#include "controls/Color.h"
#include "controls/EditProperties.h"

namespace margindesk {

// A bar behind a text, for a figure in percent: full at 100. It starts in the begin colour; what reaches
// beyond the overload value is drawn as overloaded.
class TProgressBarProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  const std::string& GetText() const noexcept { return FText; }
  void SetText(std::string text) { FText = std::move(text); }  // of the cell that is asked for next

  TColor FBeginColor = kColorNone;
  double FOverloadValue = 80;  // percent

 private:
  std::string FText;
};

}  // namespace margindesk
