#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "host/book/BookTables.h"
#include "host/services/HostContents.h"
#include "model/contract/Constdef.h"

namespace margindesk {

// Which columns of the book hold which facts, for reads and for writes alike.

constexpr std::size_t At(TTable table, std::string_view column) { return BookTable(table).Column(column); }

// A number column and the member that it fills.
template <class TFacts>
struct TNumberColumn {
  std::size_t FColumn;
  double TFacts::*FNumber;
};

inline constexpr TNumberColumn<TPositionFacts> kPositionNumbers[] = {
    {At(TTable::kPositions, "holding_quantity"), &TPositionFacts::FHoldingQuantity},
    {At(TTable::kPositions, "excluded_quantity"), &TPositionFacts::FExcludedQuantity},
    {At(TTable::kPositions, "completed_buy_amount"), &TPositionFacts::FCompletedBuyAmount},
    {At(TTable::kPositions, "completed_sell_amount"), &TPositionFacts::FCompletedSellAmount},
    {At(TTable::kPositions, "pl_first_part"), &TPositionFacts::FPLFirstPart},
    {At(TTable::kPositions, "pl_second_part"), &TPositionFacts::FPLSecondPart},
    {At(TTable::kPositions, "realized_pl"), &TPositionFacts::FRealizedPL},
    {At(TTable::kPositions, "bod_quantity"), &TPositionFacts::FBODQuantity},
    {At(TTable::kPositions, "voucher_quantity"), &TPositionFacts::FVoucherQuantity},
    {At(TTable::kPositions, "today_buy_quantity"), &TPositionFacts::FTodayBuyQuantity},
    {At(TTable::kPositions, "today_sell_quantity"), &TPositionFacts::FTodaySellQuantity},
    {At(TTable::kPositions, "quantity"), &TPositionFacts::FQuantity},
    {At(TTable::kPositions, "covered_quantity"), &TPositionFacts::FCoveredQuantity},
    {At(TTable::kPositions, "average_price"), &TPositionFacts::FAveragePrice},
    {At(TTable::kPositions, "buy_average_price"), &TPositionFacts::FBuyAveragePrice},
    {At(TTable::kPositions, "sell_average_price"), &TPositionFacts::FSellAveragePrice},
};

inline constexpr TNumberColumn<TMarginFacts> kMarginNumbers[] = {
    {At(TTable::kMargins, "initial_ratio"), &TMarginFacts::FInitialRatio},
    {At(TTable::kMargins, "maintenance_ratio"), &TMarginFacts::FMaintenanceRatio},
    {At(TTable::kMargins, "minimum_ratio"), &TMarginFacts::FMinimumRatio},
    {At(TTable::kMargins, "lending_ratio"), &TMarginFacts::FLendingRatio},
    {At(TTable::kMargins, "initial_lot"), &TMarginFacts::FInitialLot},
    {At(TTable::kMargins, "maintenance_lot"), &TMarginFacts::FMaintenanceLot},
    {At(TTable::kMargins, "initial_spread_lot"), &TMarginFacts::FInitialSpreadLot},
    {At(TTable::kMargins, "maintenance_spread_lot"), &TMarginFacts::FMaintenanceSpreadLot},
};

inline constexpr TNumberColumn<TOrderFacts> kOrderNumbers[] = {
    {At(TTable::kOrders, "price"), &TOrderFacts::FPrice},
    {At(TTable::kOrders, "quantity"), &TOrderFacts::FQuantity},
    {At(TTable::kOrders, "filled_quantity"), &TOrderFacts::FFilledQuantity},
    {At(TTable::kOrders, "hold_amount"), &TOrderFacts::FHoldAmount},
};

inline constexpr TNumberColumn<TFillFacts> kFillNumbers[] = {
    {At(TTable::kFills, "price"), &TFillFacts::FPrice},
    {At(TTable::kFills, "quantity"), &TFillFacts::FQuantity},
    {At(TTable::kFills, "charge"), &TFillFacts::FCharge},
};

// A choice column that holds a number's name, and the numbers of its choices in their order. An empty value
// is 0.
struct TOrderChoice {
  std::size_t FColumn;
  std::int32_t TOrderFacts::*FNumber;
  std::span<const std::string_view> FNames;
  std::int32_t FFirst;  // the choices count up from here
};

inline constexpr TOrderChoice kOrderChoices[] = {
    {At(TTable::kOrders, "side"), &TOrderFacts::FSide, kBookOrderSides, kSideBuy},
    {At(TTable::kOrders, "open_close"), &TOrderFacts::FOpenClose, kBookOpenCloses, kOpenCloseOpen},
    {At(TTable::kOrders, "principal"), &TOrderFacts::FPrincipal, kBookPrincipals, kPrincipalClient},
};

}  // namespace margindesk
