#pragma once

#include <QColor>

#include "controls/Color.h"

namespace margindesk {

// A control's colour as Qt's; invalid for "the front's own".
inline QColor MakeQtColor(TColor color) {
  if (color == kColorNone) return {};
  return QColor(static_cast<int>(color & 0xFFU), static_cast<int>((color >> 8U) & 0xFFU),
                static_cast<int>((color >> 16U) & 0xFFU));
}

}  // namespace margindesk
