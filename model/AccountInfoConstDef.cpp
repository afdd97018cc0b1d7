#include "model/AccountInfoConstDef.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "model/CommaText.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr auto kCatalogue = std::to_array<TCatalogueRow>({
    {"Account", kFieldAccount, "Res_Account", 80, false, "OMS_ACCOUNT"},
    {"User", kFieldUser, "Res_User", 80, false, "OMS_USER_ID"},
    {"AccountName", kFieldAccountName, "Res_AccountName", 150, false, "OMS_NAME"},
    {"Currency", kFieldCurrency, "Res_Currency", 50, false, "OMS_CURRENCY"},
    {"FxRatio", kFieldFxRatio, "Res_FxRatio", 50, true, "OMS_CONVERSION_RATIO"},
    {"TradingLimit", kFieldTradingLimit, "Res_TradingLimit", 80, true, "OMS_TRADE_LIMIT"},
    {"CashBalance", kFieldCashBalance, "Res_CashBalance", 80, true, "OMS_CASH_BALANCE"},
    {"BODTradingLimit", kFieldBODTradingLimit, "Res_BODTradingLimit", 80, true, "OMS_BOD_TRADE_LIMIT"},
    {"BODCashBalance", kFieldBODCashBalance, "Res_BODCashBalance", 80, true, "OMS_BOD_CASH_BALANCE"},
    {"PL", kFieldPL, "Res_PL", 80, true, "OMS_PL"},
    {"UnrealizedPL", kFieldUnrealizedPL, "Res_UnrealizedPL", 80, true, "OMS_UNREALIZEDPL"},
    {"RealizedPL", kFieldRealizedPL, "Res_RealizedPL", 80, true, "OMS_REALIZED_PL"},
    {"CashIn/Out", kFieldCashInOut, "Res_CashInOut", 80, true, "OMS_DEPOSIT_WITHDRAWAL"},
    {"I.Margin", kFieldInitialMargin, "Res_I_Margin", 80, true, "OMS_REQUIREDMARGIN"},
    {"M.Margin", kFieldMaintenanceMargin, "Res_M_Margin", 80, true, "OMS_MNTMARGIN"},
    {"Charges", kFieldCharges, "Res_Charges", 80, true, "OMS_TOTAL_CHARGES"},
    {"Equity", kFieldEquity, "Res_Equity", 80, true, "OMS_NET_EQUITY"},
    {"CutLoss", kFieldCutLoss, "Res_CutLossAmt", 80, true, "OMS_CUTLOSS"},
    {"CreditLimit", kFieldCreditLimit, "Res_CreditLimit", 80, true, "OMS_CREDITLIMIT_RISKMAN"},
    {"CreditLimit(DDS)", kFieldCreditLimitDDS, "Res_CreditLimit", 80, true, "OMS_CREDITLIMIT"},
    {"MarginCall", kFieldMarginCall, "Res_MarginCall", 80, true, "OMS_MARGINCALL"},
    {"PurchasingPower", kFieldPurchasingPower, "Res_PurchasingPower", 80, true, "OMS_PURCHASINGPOWER"},
    {"TotalPortfolio", kFieldTotalPortfolio, "Res_TotalPortfolio", 80, true, "OMS_TOTALPORTFOLIO"},
    {"TotalBuyAmount", kFieldTotalBuyAmount, "Res_TotalBuy", 80, true, "OMS_TOTALCOMPB"},
    {"TotalSellAmount", kFieldTotalSellAmount, "Res_TotalSell", 80, true, "OMS_TOTALCOMPS"},
    {"WithdrawableCashBalance", kFieldWithdrawableCashBalance, "Res_WithdrawCB", 80, true,
     "OMS_WITHDRAWABLECASH_BAL"},
    {"MarginLevel", kFieldMarginLevel, "Res_MarginLevel", 80, false, "OMS_MARGIN_LEVEL"},
    {"MarketValue", kFieldMarketValue, "Res_MarketValue", 80, false, "OMS_MKTVAL"},
    {"BODWebTL", kFieldBODWebTL, "Res_InternetBodTL", 150, true, "OMS_BOD_WEBTRADELIMIT"},
    {"WebTL", kFieldWebTL, "Res_InternetTL", 150, true, "OMS_WEBTRADELIMIT"},
    {"RPQ", kFieldRPQ, "Res_AccountRPQ", 150, false, "OMS_RPQ_LEVEL"},
    {"CIES", kFieldCIES, "Res_CIES", 150, false, "OMS_CIES"},
    {"HoldFund", kFieldHoldFund, "Res_HoldFund", 80, true, "OMS_HOLD_FUND"},
    {"GrossTradingLimit", kFieldGrossTradingLimit, "Res_GrossTradingLimit", 80, true,
     "OMS_GROSS_TRADINGLIMIT"},
    {"MarginLimit", kFieldMarginLimit, "Res_MarginLimit", 80, true, "OMS_MARGINLIMIT"},
    {"AvailableBal", kFieldAvailableBal, "Res_AvailBalance", 80, true, "OMS_ACCT_AVAILABLEB"},
    {"DebitInt", kFieldDebitInt, "Res_DebitInterest", 80, true, "OMS_INTEREST_DEBIT"},
    {"CreditInt", kFieldCreditInt, "Res_CreditInterest", 80, true, "OMS_INTEREST_CREDIT"},
    {"OptionValue", kFieldOptionValue, "Res_OptionValue_AcctInfo", 80, true, "OMS_OPTIONVALUE"},
    {"MarginingBasis", kFieldMarginingBasis, "Res_MarginingBasis", 80, false, "OMS_MARGININGBASIS"},
    {"PositionIsolation", kFieldPositionIsolation, "Res_PositionIsolation", 80, false,
     "OMS_POSITIONISOLATION"},
    {"MarginMethod", kFieldMarginMethod, "Res_MarginMethod", 80, false, "OMS_MARGINMETHOD"},
    {"MaxMargin", kFieldMaxMargin, "Res_MaxMargin", 80, false, "OMS_MAXMARGIN"},
    {"ForthComeLimit", kFieldForthComeLimit, "Res_ForthComeLimit", 80, false, "OMS_FORTH_C_LIMIT"},
    {"BodLotLimit", kFieldBodLotLimit, "Res_BodLotLimit", 80, false, "OMS_BOD_LOT_LIMIT"},
    {"LotLimit", kFieldLotLimit, "Res_LotLimit", 80, false, "OMS_LOT_LIMIT"},
    {"NetValue", kFieldNetValue, "Res_NetValue", 80, false, "OMS_NETAV"},
    {"BODDTL", kFieldBODDTL, "Res_InitTransLimit", 80, false, "OMS_BOD_DAILY_TLIMIT"},
    {"DTL", kFieldDTL, "Res_AvailTransLimit", 80, false, "OMS_DAILY_TLIMIT"},
    {"Aggregated", kFieldAggregated, "Res_AggregatedStatus", 80, false, ""},
    {"OnlineStatus", kFieldOnlineStatus, "Res_Online_Status", 80, false, ""},
    {"BODUpdateTime", kFieldBODUpdateTime, "Res_BODUpdateTime", 80, false, ""},
    {"MarginClass", kFieldMarginClass, "Res_MarginClass", 80, false, ""},
    {"DayTradeStatus", kFieldDayTradeStatus, "Res_DayTrade_Status", 80, false, ""},
    {"Interest", kFieldInterest, "Res_Interest", 80, false, ""},
    {"NetTradedAmount", kFieldNetTradedAmount, "Res_NetTradedAmount", 80, false, "OMS_NETTRADEDAMOUNT"},
    {"PendBuyAmount", kFieldPendBuyAmount, "Res_PendBuyAmount", 80, false, "OMS_PENDBUYAMOUNT"},
    {"MarginableValue", kFieldMarginableValue, "Res_MarginableValue", 80, false, "OMS_MARGINABLEVALUE"},
    {"Symbol", kFieldSymbol, "Res_Symbol", 60, false, ""},
    {"BODQty", kFieldBODQty, "Res_BODQty", 70, true, ""},
    {"VoucherQty", kFieldVoucherQty, "Res_Voucher", 70, true, ""},
    {"TodayBuyQty", kFieldTodayBuyQty, "Res_TodayBuyQty", 70, true, ""},
    {"TodaySellQty", kFieldTodaySellQty, "Res_TodaySellQty", 70, true, ""},
    {"Qty", kFieldQty, "Res_PositionQty", 70, true, ""},
    {"CoveredQty", kFieldCoveredQty, "Res_Covered", 70, true, ""},
    {"Status", kFieldStatus, "Res_Period", 80, false, ""},
    {"Side", kFieldSide, "Res_LSSide", 70, false, ""},
});

struct TOldKey {
  std::string_view FOldKey;
  std::string_view FKey;  // empty: recognised, but kept as it is
};

// The old configuration format's keys. They do not follow the back-office keys of the catalogue: wanted.
constexpr auto kOldKeys = std::to_array<TOldKey>({
    {"OMS_NAME", "AccountName"},
    {"OMS_USER_ID", "User"},
    {"OMS_TRADE_LIMIT", "TradingLimit"},
    {"OMS_CREDITLIMIT", "CreditLimit"},
    {"OMS_MAXMARGIN", "MaxMargin"},
    {"OMS_PL", "PL"},
    {"OMS_BOD_TRADE_LIMIT", "BODTradingLimit"},
    {"OMS_BOD_CASH_BALANCE", "BODCashBalance"},
    {"OMS_Net_Equity", "Equity"},
    {"OMS_REQUIREDMARGIN", "I.Margin"},
    {"OMS_MNTMARGIN", "M.Margin"},
    {"OMS_MARGINCALL", "MarginCall"},
    {"OMS_N_MARGINCALL", "MarginCall"},
    {"OMS_FORTH_C_LIMIT", ""},
    {"OMS_BOD_LOT_LIMIT", ""},
    {"OMS_LOT_LIMIT", ""},
    {"OMS_NETAV", ""},
    {"OMS_BOD_DAILY_TLIMIT", ""},
    {"OMS_DAILY_TLIMIT", ""},
    {"OMS_CASH_BALANCE", "CashBalance"},
    {"OMS_DEPOSIT_WITHDRAWAL", "CashIn/Out"},
    {"OMS_BOD_WEBTRADELIMIT", "BODWebTL"},
    {"OMS_TotalInHKD", ""},
    {"OMS_WEBTRADELIMIT", "WebTL"},
    {"OMS_CUTLOSS", "CutLoss"},
    {"OMS_MARGIN_LEVEL", "MarginLevel"},
    {"OMS_TOTAL_CHARGES", "Charges"},
    {"OMS_STATUS", "Status"},
    {"OMS_AGGREGATED", "Aggregated"},
    {"OMS_ONLINESTATUS", "OnlineStatus"},
    {"OMS_BODUPDATETIME", ""},
    {"OMS_MARGINCLASS", ""},
    {"OMS_DAYTRADEMARGIN", ""},
    {"OMS_InTerestAccurl", ""},
    {"OMS_WITHDRAWABLECASH_BAL", "AvailableBal"},
    {"OMS_OPTIONVALUE", "OptionValue"},
    {"OMS_MARGININGBASIS", "MarginingBasis"},
    {"OMS_POSITIONISOLATION", "PositionIsolation"},
    {"OMS_MARGINMETHOD", "MarginMethod"},
    {"SYMBOL", "Symbol"},
    {"Prev", "BODQty"},
    {"Vouc", "VoucherQty"},
    {"Buy", "TodayBuyQty"},
    {"Sell", "TodaySellQty"},
    {"Net", "Qty"},
    {"Covered", "CoveredQty"},
    {"L/S", "Side"},
});

}  // namespace

std::span<const TCatalogueRow> GetCatalogue() noexcept { return kCatalogue; }

const TCatalogueRow* FindCatalogueRow(std::string_view key) noexcept {
  const auto row = std::ranges::find_if(kCatalogue, [key](const TCatalogueRow& candidate) {
    return SameTextIgnoringCase(candidate.FKey, key);
  });
  return row == kCatalogue.end() ? nullptr : &*row;
}

bool IsAccountColumn(const TCatalogueRow& row) noexcept {
  constexpr auto kPositionFields =
      std::to_array<std::int32_t>({kFieldSymbol, kFieldBODQty, kFieldVoucherQty, kFieldTodayBuyQty,
                                   kFieldTodaySellQty, kFieldQty, kFieldCoveredQty, kFieldSide});
  return std::ranges::find(kPositionFields, row.FId) == kPositionFields.end();
}

std::unique_ptr<TColumnInfo> CreateCatalogueColumn(const TCatalogueRow& row) {
  return TColumnInfo::AddColumn(row.FId, row.FResourceKey, row.FWidth, row.FKey, row.FNumeric);
}

std::string_view ConvertColumnKey(std::string_view key) noexcept {
  const auto old = std::ranges::find_if(
      kOldKeys, [key](const TOldKey& candidate) { return SameTextIgnoringCase(candidate.FOldKey, key); });
  return old == kOldKeys.end() || old->FKey.empty() ? key : old->FKey;
}

std::string ConvertConfigSetting(std::string_view value) {
  if (value.empty()) return {};
  std::vector<std::string> keys = SplitCommaText(value);
  for (std::string& key : keys) {
    const std::string converted(ConvertColumnKey(key));
    const bool present = std::ranges::any_of(
        keys, [&](const std::string& other) { return SameTextIgnoringCase(other, converted); });
    if (!present) key = converted;
  }
  return JoinCommaText(keys);
}

void AppendCatalogueColumns(std::string_view keyList, TColumnList& columns) {
  while (true) {
    const std::size_t comma = keyList.find(',');
    if (const TCatalogueRow* row = FindCatalogueRow(keyList.substr(0, comma))) {
      columns.push_back(CreateCatalogueColumn(*row));
    }
    if (comma == std::string_view::npos) return;
    keyList.remove_prefix(comma + 1);
  }
}

void EnsureReservedColumn(TColumnList& columns) {
  const bool present =
      std::ranges::any_of(columns, [](const auto& column) { return column->FId == kFieldTradingLimit; });
  if (!present) columns.insert(columns.begin(), CreateCatalogueColumn(*FindCatalogueRow("TradingLimit")));
}

bool IsNumericCustomColumn(std::string_view number) {
  const std::string& type = TCustomLanguageManager::GetInstance().GetSectionKeyValue(
      kCustomColumnSection, number, kCustomColumnType);
  return !type.empty() && !SameTextIgnoringCase(type, "string");
}

void AppendCustomColumns(TColumnList& columns) {
  constexpr std::int32_t kMaxNumber = std::numeric_limits<std::int32_t>::max() - kFirstCustomField;
  std::vector<std::string> keys;
  TCustomLanguageManager::GetInstance().GetSectionKeys(kCustomColumnSection, keys);
  for (const std::string& key : keys) {
    std::int32_t number = 0;
    if (!TryTextToInteger(key, number) || number < 0 || number > kMaxNumber) continue;
    columns.push_back(
        TColumnInfo::AddColumn(kFirstCustomField + number, key, 80, key, IsNumericCustomColumn(key)));
  }
}

}  // namespace margindesk
