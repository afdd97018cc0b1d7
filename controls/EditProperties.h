#pragma once

#include "controls/Control.h"
#include "controls/Geometry.h"

namespace margindesk {

class TCellEditor;

// What edits or draws a cell: a column has one for its cells, and a form may choose another one for each
// cell.
class TEditProperties : public TControl {
 public:
  using TControl::TControl;

  TAlignment FAlignment = TAlignment::Left;
  bool FReadOnly = false;
  bool FAllowEmpty = true;  // a cell may be left without a value
  // Of the editor that is open with these properties: its value changed, whoever changed it; its list or
  // panel is about to drop down.
  TEvent<TCellEditor&> FOnChange;
  TEvent<TCellEditor&> FOnPopup;
};

// A plain text.
class TTextEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;
};

}  // namespace margindesk
