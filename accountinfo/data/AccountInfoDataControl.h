#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/contract/AccountDataControl.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

// The data control behind the account information tree: it builds the rows from the column list, keeps the
// subscriptions that the columns need, and computes every figure from the host's records. No figure is
// cached: the tree asks again at every repaint.
//
// Amounts are in the currency of the data they come from; totals over every currency are in the base
// currency.
class TAccountInfoDataControl : public TCustomAccountInfoDataControl {
 public:
  explicit TAccountInfoDataControl(TComponent* owner);
  ~TAccountInfoDataControl() override;

  using TCustomAccountInfoDataControl::GetDisplayValue;
  using TCustomAccountInfoDataControl::GetValue;

  TVariant GetValue(TDataNode* node, std::int32_t column) override;
  std::string GetDisplayValue(TDataNode* node, std::int32_t column) override;
  void SetColumnList(const TColumnList& columns) override;
  void SetAggregate() override;

  // The three-level layout: attribute rows show the account's total, and the currencies that are no rows of
  // their own stand converted under the total row. Set once, before the columns.
  void SetShow3LvInfo(bool show) noexcept { FIsShow3LvInfo = show; }

 protected:
  // Operations of the base.
  void SetAccount(TCode account) override;
  std::string GetResourceHeader(std::int32_t field) override;
  TVariant GetAccountCurrencyData(const TCustomAccountData* data, std::int32_t field) override;
  std::string GetAccountCurrencyDisplayData(const TCustomAccountData* data, std::int32_t field,
                                            bool flag) override;
  void InitCurrencyNode() override;
  TVariant GetAggregatedAccountCurrencyData(const TCustomAccountData* data, std::int32_t field) override;

  // Notifications and totals, in slot order.
  virtual void PositionUpdate(void* sender, void* data);            // data: TAccountPositionMap*
  virtual void PositionMarketDataUpdate(void* sender, void* data);  // data: TAccountPositionMap*
  virtual double GetTotalMarketValue(TCode currency);  // an empty currency: all, in the base currency
  virtual double GetTotalCompBuy(TCode currency);
  virtual double GetTotalCompSell(TCode currency);
  virtual double GetTotalPL(TCode currency);
  virtual double GetTotalUnrelizePL(TCode currency);
  virtual double GetTotalRelizePL(TCode currency);
  virtual bool GetMarginLevel(const TCustomAccountData* data,
                              double& level);  // percent; false: none, level untouched
  // Whether a position counts under a filter currency (empty: all), and its currency.
  virtual bool IsMyCurrency(const TCustomPositionData& position, TCode filter, TCode& currency);
  virtual bool IsCalculateCurrency(TCode filter, TCode currency);
  virtual void SubscribeOnlineStatus();
  virtual void UnSubscribeOnlineStatus();
  virtual void AccountInfoLoadUpdate(void* sender, void* data);  // data: TAccountMap*
  virtual void SubscribeMonitorInfo();
  virtual void UnSubscribeMonitorInfo();
  virtual double GetMarginableValue(const TCustomAccountData& data);
  virtual TVariant GetAccountTotalDataValue(const TCustomAccount* account, std::int32_t field);
  virtual std::string GetAccountTotalDataDisplayValue(const TCustomAccount* account, std::int32_t field);
  virtual bool CheckNeedUpdateSubAccountList(const TAccountMap& accounts);
  virtual bool IsSubAccountPositionUpdate(const TAccountPositionMap& positions);

  std::string GetDayTradeStatus(std::int32_t status) const;
  // The trading period of an exchange by the positions that the last position total read.
  std::string GetPeriod(TCode exchange) const;

 private:
  // Rows.
  void AddAttributeNode(std::int32_t field);
  void AddValueNodes(TCode currency);
  void AddConvertNodes(TCode currency);
  bool HasValueRows(std::int32_t field) const;
  std::string GetCurrencyCaption(TCode currency) const;

  // Which fields are what.
  bool IsPeriodField(std::int32_t field) const { return FPeriodAttrExchList.contains(field); }
  bool IsTextCustomField(std::int32_t field) const;
  bool IsAccountTotalField(std::int32_t field) const;
  TVariant GetInitialValue(std::int32_t field) const;

  // Figures of one currency.
  const TCustomAccount* GetSelectedAccount() const;
  const TCustomAccountData* GetChinaConnectData(const TCustomAccountData& data) const;
  TVariant ReadField(const TCustomAccountData& source, const TCustomAccountData& data, std::int32_t field);
  double GetNetPL(const TCustomAccountData& data);
  std::string GetMarginingBasisText() const;
  std::string GetAggregatedText() const;
  std::string GetCIESText() const;

  // Totals.
  template <class TAmount>
  double SumPositions(TCode currency, TAmount amount);
  template <class TAmount>
  double SumPositionList(TCode currency, TAmount amount);
  static TCode GetReferenceCurrency(const TCustomPositionData& position);
  TVariant GetTotalOverCurrencies(const TCustomAccount& account, std::int32_t field);
  TVariant GetTotalMarginLevel(const TCustomAccount& account);
  const TCustomAccountData* GetLinkedTotalRow(const TCustomAccount& account) const;

  // Margin level and marginable value.
  double GetMarginLevelNumerator(const TCustomAccountData& data, std::optional<double>& totalPL);
  const TCustomAccountData* GetSubAccountData(const TCustomAccount& subAccount, TCode currency) const;
  struct TMarginable {
    double FCreditLimit = 0;
    double FAmount = 0;
  };
  void AddMarginable(const TCustomAccountData& data, const std::string& creditLimitKey, TMarginable& sums);

  TPositionMap FPositionList;
  bool FNeedSubscribeOnlineStatus = false;
  bool FNeedLoadMonitorInfo = false;
  std::unique_ptr<std::vector<TCode>> FParserList;
  bool FIsShow3LvInfo = false;
  bool FIsNetEquityMargin = false;
  std::int32_t FMarginLevelMode = 0;
  bool FApplyDDSPL = false;
  std::map<std::int32_t, TCode> FPeriodAttrExchList;

  // The rules of the fields that are not plain reads, by field: see AccountInfoDataControlFigures.cpp.
  friend struct TFigureRules;
};

// These two run for every position of every total. Defined here, they are expanded where the positions are
// walked, behind a check that no derived class has its own.
[[gnu::always_inline]] inline bool TAccountInfoDataControl::IsMyCurrency(const TCustomPositionData& position,
                                                                         TCode filter, TCode& currency) {
  const TCustomProduct* product = TCustomMarketAdapter::GetInstance().GetProduct(position.GetSymbol());
  currency = product == nullptr ? TCode() : product->GetCurrency();
  if (currency.IsEmpty()) [[unlikely]] {
    currency = GetReferenceCurrency(position);
    if (currency.IsEmpty()) return false;
  }
  return IsCalculateCurrency(filter, currency);
}

[[gnu::always_inline]] inline bool TAccountInfoDataControl::IsCalculateCurrency(TCode filter,
                                                                                TCode currency) {
  if (!filter.IsEmpty()) return currency.SameText(filter);
  return !TCustomCurrencyAdapter::GetInstance().IsCurrencyExcluded(currency);
}

}  // namespace margindesk
