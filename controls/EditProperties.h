#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "controls/Color.h"
#include "controls/Control.h"
#include "controls/Geometry.h"

namespace margindesk {

// What edits or draws a cell: a column has one for its cells, and a form may choose another one for each
// cell.
class TEditProperties : public TControl {
 public:
  using TControl::TControl;

  TAlignment FAlignment = TAlignment::Left;
  bool FReadOnly = false;
};

class TTextEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;
};

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

class TSpinEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  double FMinimum = std::numeric_limits<double>::lowest();
  double FMaximum = std::numeric_limits<double>::max();
  double FIncrement = 1;
};

// A fixed list to choose from.
class TComboBoxProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  std::vector<std::string> FItems;
};

// Buttons in a cell; without text where it says so.
class TButtonEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  bool FButtonsOnly = false;
  std::int32_t FImageIndex = -1;  // in the form's image list; -1 for none
};

// A text with a panel that drops down.
class TPopupEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  TControl* FPopupControl = nullptr;  // null: nothing drops down
  std::int32_t FPopupWidth = 0;       // pixels
  std::int32_t FPopupHeight = 0;
};

// The edit properties of a form that several cells share, known by their component names.
class TEditRepository : public TControl {
 public:
  using TControl::TControl;

  const std::vector<TEditProperties*>& GetItems() const noexcept { return FItems; }
  void AddItem(TEditProperties* item) { FItems.push_back(item); }  // a component of the form

 private:
  std::vector<TEditProperties*> FItems;
};

}  // namespace margindesk
