#pragma once

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

// A plain text.
class TTextEditProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;
};

}  // namespace margindesk
