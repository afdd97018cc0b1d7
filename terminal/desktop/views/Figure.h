#pragma once

#include <QString>

#include "model/contract/Formatter.h"
#include "terminal/desktop/Text.h"

namespace margindesk {

// A figure as the user wants its kind (kFormat...) shown, grouped by thousands.
inline QString ShowFigure(double value, std::int32_t kind, TCode symbol = {}) {
  return ToQt(TCustomFormatter::GetInstance().FormatValue(value, kind, symbol, true));
}

// Likewise a price, of which 0 is none.
inline QString ShowPrice(double price, TCode symbol) {
  return price == 0 ? QStringLiteral("–") : ShowFigure(price, kFormatPrice, symbol);
}

inline QString ShowAmount(double amount) { return ShowFigure(amount, kFormatAmount); }

}  // namespace margindesk
