#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "host/book/Figures.h"
#include "model/contract/Code.h"

namespace margindesk {

// What the host holds in memory, as plain values: the book is read into these and they are given to THostData
// whole. A number of 0 stands for none where the comment says so.

using TFigures = std::array<double, kFigureCount>;  // by TFigure

struct TCurrencyFacts {
  TCode FCurrency;
  double FRatio = 1;       // brings an amount into the base currency; above 0
  bool FExcluded = false;  // left out of every total
  bool FBase = false;      // one currency of the host is the base currency

  friend bool operator==(const TCurrencyFacts&, const TCurrencyFacts&) = default;
};

struct TExchangeFacts {
  TCode FExchange;
  bool FChinaConnect = false;
  bool FOpen = false;                        // trades now
  std::optional<std::int32_t> FPeriodOrder;  // its place among the exchanges whose trading period is shown

  friend bool operator==(const TExchangeFacts&, const TExchangeFacts&) = default;
};

struct TProductFacts {
  TCode FSymbol;
  std::string FName;
  TCode FExchange;
  TCode FCurrency;
  std::int32_t FProductType = 0;
  double FLotSize = 1;
  double FContractSize = 1;     // what one unit is worth at a price of one, in the product's currency
  double FPriceMultiplier = 0;  // 0 for none
  bool FOverTheCounter = false;
  double FMinimum = 0;    // of an order over the counter; 0 for none
  double FIncrement = 0;  // of such an order; 0 for none
  TCode FMarketCode;
  TCode FUnderlying;      // of a derivative
  double FStrike = 0;     // of an option or warrant
  char FOptionRight = 0;  // 'C' call, 'P' put, 0 for no option
  bool FListed = true;    // in the market's product list; otherwise only its subscription item knows it
  std::string FExpiry;    // the last day of a derivative or bond, as 2027-01-28; empty for none

  friend bool operator==(const TProductFacts&, const TProductFacts&) = default;
};

// Prices of one symbol in the product's currency; 0 for none.
struct TPriceFacts {
  double FLast = 0;
  double FBid = 0;
  double FAsk = 0;
  double FPreviousClose = 0;
  double FReference = 0;

  friend bool operator==(const TPriceFacts&, const TPriceFacts&) = default;
};

struct TAccountFacts {
  TCode FAccount;
  std::string FName;
  std::string FUser;
  std::string FType;                        // "S" stock, "F" futures
  TCode FMaster;                            // of a sub-account
  std::optional<std::int32_t> FMasterType;  // of a master account alone
  std::int32_t FMarginType = 0;
  std::string FMobile;
  std::string FEmail;
  std::int32_t FStatusFlags = 0;
  std::string FBODUpdateTime;
  std::string FMarginClass;
  std::int32_t FDayTradeStatus = 0;
  bool FOnline = false;
  std::string FPositionIsolation;  // a word of the language files' Host section
  std::string FMarginMethod;       // another
  std::map<std::string, std::string, std::less<>> FAttributes;
  std::map<std::string, std::string, std::less<>> FCustomValues;  // by custom field key
  std::map<std::string, std::vector<std::pair<TCode, double>>, std::less<>> FCustomBalances;  // by that key
  TCode FChinaConnectAccount;  // the linked account

  friend bool operator==(const TAccountFacts&, const TAccountFacts&) = default;
};

// One account's figures in one currency; an empty currency is the total row.
struct TFigureFacts {
  TCode FAccount;
  TCode FCurrency;
  bool FSeparateRow = false;
  TFigures FFigures{};
  std::map<std::int32_t, std::string> FCustomFigures;  // by the number of the custom column

  friend bool operator==(const TFigureFacts&, const TFigureFacts&) = default;
};

struct TPositionFacts {
  TCode FAccount;
  std::string FKey;  // empty: the symbol
  TCode FSymbol;
  double FHoldingQuantity = 0;
  double FExcludedQuantity = 0;
  double FCompletedBuyAmount = 0;
  double FCompletedSellAmount = 0;
  double FPLFirstPart = 0;
  double FPLSecondPart = 0;
  double FRealizedPL = 0;
  bool FPriceBased = false;
  bool FShort = false;
  double FBODQuantity = 0;
  double FVoucherQuantity = 0;
  double FTodayBuyQuantity = 0;
  double FTodaySellQuantity = 0;
  double FQuantity = 0;
  double FCoveredQuantity = 0;
  double FAveragePrice = 0;
  double FBuyAveragePrice = 0;
  double FSellAveragePrice = 0;

  friend bool operator==(const TPositionFacts&, const TPositionFacts&) = default;
};

// The prices of a market from the lower limit to the upper one move in ticks; both are real prices.
struct TSpreadBandFacts {
  TCode FMarketCode;
  double FLowerLimit = 0;
  double FUpperLimit = 0;
  double FTick = 0;

  friend bool operator==(const TSpreadBandFacts&, const TSpreadBandFacts&) = default;
};

// An order option that an exchange offers ("Open", "Close", "Client", "House", "RT"), in their order.
struct TOrderOptionFacts {
  TCode FExchange;
  std::string FOption;

  friend bool operator==(const TOrderOptionFacts&, const TOrderOptionFacts&) = default;
};

// What a position in a symbol needs as margin: ratios of its market value (of the underlying's value for a
// short option), or amounts a contract in the product's currency. 0 for none.
struct TMarginFacts {
  TCode FSymbol;
  double FInitialRatio = 0;
  double FMaintenanceRatio = 0;
  double FMinimumRatio = 0;  // of a short option: the least, of the underlying's value or the strike's
  double FLendingRatio = 0;  // of the market value: what a holding may be lent against
  double FInitialLot = 0;    // a contract
  double FMaintenanceLot = 0;
  double FInitialSpreadLot = 0;  // a pair of opposite contracts on one underlying
  double FMaintenanceSpreadLot = 0;

  friend bool operator==(const TMarginFacts&, const TMarginFacts&) = default;
};

// What an exchange charges for a fill, in the product's currency: the rate of the amount and so much a unit,
// but not less than the minimum.
struct TChargeFacts {
  TCode FExchange;
  double FRate = 0;
  double FPerUnit = 0;
  double FMinimum = 0;

  friend bool operator==(const TChargeFacts&, const TChargeFacts&) = default;
};

enum class TOrderState { kResting, kFilled, kCancelled };

// An order that was placed.
struct TOrderFacts {
  std::string FOrderID;
  TCode FAccount;
  TCode FSymbol;
  std::int32_t FSide = 0;      // kSideBuy, kSideSell
  double FPrice = 0;           // real price; 0 for a market order
  double FQuantity = 0;        // units
  double FFilledQuantity = 0;  // units
  std::int32_t FOpenClose = 0;
  std::int32_t FPrincipal = 0;
  bool FMarket = false;
  TOrderState FState = TOrderState::kResting;
  std::string FEntered;    // UTC, "2027-01-28T09:30:00.123Z"
  double FHoldAmount = 0;  // what it holds of the trading limit while it rests, in the product's currency

  friend bool operator==(const TOrderFacts&, const TOrderFacts&) = default;
};

// An order's execution.
struct TFillFacts {
  std::string FFillID;
  std::string FOrderID;
  double FPrice = 0;
  double FQuantity = 0;
  double FCharge = 0;  // in the product's currency
  std::string FTime;   // as TOrderFacts::FEntered

  friend bool operator==(const TFillFacts&, const TFillFacts&) = default;
};

// The keys of custom fields by table and field, found without making a text.
struct TTableFieldLess {
  using is_transparent = void;
  using TPair = std::pair<std::string_view, std::string_view>;
  bool operator()(const TPair& a, const TPair& b) const noexcept { return a < b; }
};
using TCustomFieldKeys = std::map<std::pair<std::string, std::string>, std::string, TTableFieldLess>;

struct THostContents {
  bool FMultiCurrency = true;
  bool FChinaConnect = false;
  std::vector<TCurrencyFacts> FCurrencies;  // in the order in which they are shown
  std::vector<TExchangeFacts> FExchanges;
  std::vector<TProductFacts> FProducts;
  std::vector<std::pair<TCode, TPriceFacts>> FPrices;
  std::vector<TAccountFacts> FAccounts;
  std::vector<TFigureFacts> FFigures;       // an account's currencies are shown in this order
  std::vector<TFigureFacts> FConsolidated;  // of master accounts
  std::vector<TPositionFacts> FPositions;
  TCustomFieldKeys FCustomFieldKeys;
  std::vector<TSpreadBandFacts> FSpreadBands;  // a market's bands ascending and without gaps
  std::vector<TOrderOptionFacts> FOrderOptions;
  std::vector<TMarginFacts> FMargins;
  std::vector<TChargeFacts> FCharges;
  std::vector<TOrderFacts> FOrders;  // in the order of entry
  std::vector<TFillFacts> FFills;    // likewise

  friend bool operator==(const THostContents&, const THostContents&) = default;
};

}  // namespace margindesk
