#pragma once

#include <cstdint>

namespace margindesk {

// The identifiers of an order's columns, in the order grid and in the batch confirmation alike.
inline constexpr std::int32_t kOrderColumnSymbol = 0;
inline constexpr std::int32_t kOrderColumnPrice = 3;
inline constexpr std::int32_t kOrderColumnQuantity = 4;
inline constexpr std::int32_t kOrderColumnStatus = 5;
inline constexpr std::int32_t kOrderColumnAccount = 10;
inline constexpr std::int32_t kOrderColumnSide = 11;
inline constexpr std::int32_t kOrderColumnOpenClose = 12;
inline constexpr std::int32_t kOrderColumnValidity = 25;  // of the order grid: 0 valid, 1 invalid
inline constexpr std::int32_t kOrderColumnRemark = 25;    // of the batch confirmation
inline constexpr std::int32_t kOrderColumnPrincipal = 46;

// The margin simulator among the host's views.
inline constexpr std::int32_t kViewMarginSimulator = 621;

}  // namespace margindesk
