#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "model/contract/ColumnInfo.h"

namespace margindesk {

// Field identifiers of the catalogue, named after the column keys.
inline constexpr std::int32_t kFieldSymbol = 0;
inline constexpr std::int32_t kFieldNetValue = 1;
inline constexpr std::int32_t kFieldAccount = 10;
inline constexpr std::int32_t kFieldSide = 11;
inline constexpr std::int32_t kFieldUser = 13;
inline constexpr std::int32_t kFieldAccountName = 21;
inline constexpr std::int32_t kFieldCurrency = 23;
inline constexpr std::int32_t kFieldMarginLevel = 31;
inline constexpr std::int32_t kFieldBODUpdateTime = 33;
inline constexpr std::int32_t kFieldQty = 95;
inline constexpr std::int32_t kFieldFxRatio = 104;
inline constexpr std::int32_t kFieldTradingLimit = 155;
inline constexpr std::int32_t kFieldCashBalance = 156;
inline constexpr std::int32_t kFieldBODTradingLimit = 185;
inline constexpr std::int32_t kFieldBODCashBalance = 186;
inline constexpr std::int32_t kFieldRealizedPL = 189;
inline constexpr std::int32_t kFieldLotLimit = 194;
inline constexpr std::int32_t kFieldBodLotLimit = 195;
inline constexpr std::int32_t kFieldForthComeLimit = 196;
inline constexpr std::int32_t kFieldTotalPortfolio = 405;
inline constexpr std::int32_t kFieldDTL = 431;
inline constexpr std::int32_t kFieldBODDTL = 432;
inline constexpr std::int32_t kFieldCutLoss = 445;
inline constexpr std::int32_t kFieldUnrealizedPL = 446;
inline constexpr std::int32_t kFieldMarginLimit = 449;
inline constexpr std::int32_t kFieldBODWebTL = 467;
inline constexpr std::int32_t kFieldWebTL = 468;
inline constexpr std::int32_t kFieldAvailableBal = 469;
inline constexpr std::int32_t kFieldTodayBuyQty = 479;
inline constexpr std::int32_t kFieldTodaySellQty = 480;
inline constexpr std::int32_t kFieldInterest = 526;
inline constexpr std::int32_t kFieldInitialMargin = 604;
inline constexpr std::int32_t kFieldMaintenanceMargin = 606;
inline constexpr std::int32_t kFieldPL = 607;
inline constexpr std::int32_t kFieldHoldFund = 626;
inline constexpr std::int32_t kFieldWithdrawableCashBalance = 700;
inline constexpr std::int32_t kFieldTotalSellAmount = 990;
inline constexpr std::int32_t kFieldTotalBuyAmount = 991;
inline constexpr std::int32_t kFieldMarginCall = 996;
inline constexpr std::int32_t kFieldMarketValue = 998;
inline constexpr std::int32_t kFieldCoveredQty = 1105;
inline constexpr std::int32_t kFieldCreditLimitDDS = 1205;
inline constexpr std::int32_t kFieldPurchasingPower = 1206;
inline constexpr std::int32_t kFieldVoucherQty = 1302;
inline constexpr std::int32_t kFieldCharges = 1502;
inline constexpr std::int32_t kFieldEquity = 1503;
inline constexpr std::int32_t kFieldRPQ = 3409;
inline constexpr std::int32_t kFieldCIES = 3602;
inline constexpr std::int32_t kFieldBODQty = 9014;
inline constexpr std::int32_t kFieldCashInOut = 9018;
inline constexpr std::int32_t kFieldCreditLimit = 9028;
inline constexpr std::int32_t kFieldGrossTradingLimit = 10000;
inline constexpr std::int32_t kFieldDebitInt = 10001;
inline constexpr std::int32_t kFieldCreditInt = 10002;
inline constexpr std::int32_t kFieldOptionValue = 10003;
inline constexpr std::int32_t kFieldMarginingBasis = 10004;
inline constexpr std::int32_t kFieldPositionIsolation = 10005;
inline constexpr std::int32_t kFieldMarginMethod = 10006;
inline constexpr std::int32_t kFieldMaxMargin = 10007;
inline constexpr std::int32_t kFieldAggregated = 10008;
inline constexpr std::int32_t kFieldOnlineStatus = 10009;
inline constexpr std::int32_t kFieldMarginClass = 10010;
inline constexpr std::int32_t kFieldDayTradeStatus = 10011;
inline constexpr std::int32_t kFieldNetTradedAmount = 10012;
inline constexpr std::int32_t kFieldPendBuyAmount = 10013;
inline constexpr std::int32_t kFieldMarginableValue = 10014;
inline constexpr std::int32_t kFieldStatus = 10015;

// The first of the period rows, one an exchange, that the "Status" column becomes.
inline constexpr std::int32_t kFirstPeriodField = 15015;

// A custom column's identifier is its number in the language files plus this.
inline constexpr std::int32_t kFirstCustomField = 100000;

// The language section that defines custom columns, and the name of the property that says whether one is
// numeric.
inline constexpr std::string_view kCustomColumnSection = "Columns_AccountInfo";
inline constexpr std::string_view kCustomColumnType = "Type";

// The account columns that are shown where none are configured, as a key list.
inline constexpr std::string_view kDefaultAccountColumns =
    "TradingLimit,CashBalance,BODTradingLimit,BODCashBalance,CashIn/Out,Charges,Equity,MarginCall";

// One figure of the catalogue. The back-office key is the one under which the formula map explains the
// figure; empty for none.
struct TCatalogueRow {
  std::string_view FKey;
  std::int32_t FId;
  std::string_view FResourceKey;
  std::int32_t FWidth;  // pixels at 100 % scale
  bool FNumeric;
  std::string_view FBackOfficeKey;
};

// The whole catalogue in the order of the lookup: account columns, then position columns, with "Status" among
// these.
std::span<const TCatalogueRow> GetCatalogue() noexcept;

// The row of a column key without regard to case, or null. Old back-office keys are not column keys.
const TCatalogueRow* FindCatalogueRow(std::string_view key) noexcept;

// Whether the row is shown in the account tree; the others are meant for the position grid.
bool IsAccountColumn(const TCatalogueRow& row) noexcept;

// A new column description of a row, in the row's own letter case.
std::unique_ptr<TColumnInfo> CreateCatalogueColumn(const TCatalogueRow& row);

// The current column key for a key of the older configuration format, without regard to case; any other key
// comes back as it is. Some old keys are recognised and yet stay as they are, so a configuration that names
// them loses the column: wanted, the fields they named are not offered to old configurations.
std::string_view ConvertColumnKey(std::string_view key) noexcept;

// A configured key list with its old keys converted. A key whose converted form already stands in the list
// stays unconverted, so that a field named under both keys is shown once. The empty list stays empty.
std::string ConvertConfigSetting(std::string_view value);

// Splits a key list at every comma and makes a column of each key; unknown and empty keys are passed over, a
// key given twice makes two.
void AppendCatalogueColumns(std::string_view keyList, TColumnList& columns);

// Puts the reserved column "TradingLimit" first where an account column list lacks it.
void EnsureReservedColumn(TColumnList& columns);

// Appends the custom columns that the language files define, in the order of the section.
void AppendCustomColumns(TColumnList& columns);

// Whether a custom column of that number holds figures: its type is set and is not "string" in any letter
// case.
bool IsNumericCustomColumn(std::string_view number);

}  // namespace margindesk
