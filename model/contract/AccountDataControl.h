#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/contract/BaseAccountData.h"
#include "model/contract/BasePositionData.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Code.h"

namespace margindesk {

// The first level of the account tree: one account field.
class TAccountDataNode : public TDataNode {
 public:
  explicit TAccountDataNode(std::int32_t attribute) : TDataNode(nullptr), FAttribute(attribute) {}
  std::string GetKey() const override { return IntegerToText(FAttribute); }
  std::int32_t GetAttribute() const noexcept { return FAttribute; }

 private:
  std::int32_t FAttribute;
};

// The second level: that field in one currency; an empty currency is the account's total row.
class TAccountDataValueNode : public TDataNode {
 public:
  TAccountDataValueNode(TAccountDataNode* attributeNode, TCode currency)
      : TDataNode(attributeNode), FAttribute(attributeNode->GetAttribute()), FCurrency(currency) {}
  std::string GetKey() const override { return FCurrency.Text(); }
  std::int32_t GetAttribute() const noexcept { return FAttribute; }
  TCode GetCurrency() const noexcept { return FCurrency; }

 private:
  std::int32_t FAttribute;
  TCode FCurrency;
};

// The third level: a currency's figure converted, under the total.
class TConvertAccountDataValueNode : public TDataNode {
 public:
  TConvertAccountDataValueNode(TAccountDataValueNode* valueNode, TCode currency)
      : TDataNode(valueNode), FAttribute(valueNode->GetAttribute()), FCurrency(currency) {}
  std::string GetKey() const override { return FCurrency.Text(); }
  std::int32_t GetAttribute() const noexcept { return FAttribute; }
  TCode GetCurrency() const noexcept { return FCurrency; }

 private:
  std::int32_t FAttribute;
  TCode FCurrency;
};

// The account tree's base: it owns the nodes and keeps the column list, the account, its currencies and the
// sub-accounts of a master account, and listens to the host's accounts and currencies.
//
// What a cell shows:
// - an attribute row the account's total row, or the filter currency's data, in the conversion currency;
// - a value row its currency's data in that currency, or the total row in the conversion currency;
// - a converted row its currency's data in the conversion currency.
// Converting multiplies by the ratio of the amount's own currency (the total row is in the base currency
// already) and divides by the conversion currency's ratio, unless that is 0. A cell's value is the amount in
// its own currency; only a converted row's value is the converted amount. While the aggregate flag is set,
// the figures are those of the master and its sub-accounts together.
class TCustomAccountInfoDataControl : public TCustomTreeDataControl {
 public:
  // columnSection: the language section that defines custom columns ("" for none).
  TCustomAccountInfoDataControl(TComponent* owner, std::string_view columnSection);
  ~TCustomAccountInfoDataControl() override;

  using TCustomTreeDataControl::GetDisplayValue;
  using TCustomTreeDataControl::GetValue;

  std::int32_t GetCount() override;          // rows of the first level
  void Changed() override;                   // rebuilds the currency rows, then calls the change event
  const TColumnList* GetColList() override;  // null: the columns belong to the view
  TVariant GetValue(std::int32_t row, std::int32_t column) override;  // of the first level
  std::string GetDisplayValue(std::int32_t row, std::int32_t column) override;
  bool GetRowValue(std::int32_t row, const void*& value) override;     // a TDataNode of the first level
  bool GetColValue(std::int32_t column, const void*& value) override;  // a TColumnInfo
  TDataNode* GetParentNode(TDataNode* node) override;
  TDataNode* GetNode(std::int32_t index) override;
  TDataNode* GetChildNode(TDataNode* node, std::int32_t index) override;
  std::int32_t GetChildNodeCount(TDataNode* node) override;
  TDataNode* GetRootNode() override;
  TVariant GetValue(TDataNode* node, std::int32_t column) override;
  std::string GetDisplayValue(TDataNode* node, std::int32_t column) override;
  void SetColumnList(const TColumnList& columns) override;
  void ConfigUpdate(void* sender, void* data) override;

  virtual void ClearAll();                  // columns and every node
  virtual void ClearAccountCurrencyNode();  // the nodes below the first level
  virtual void SetAccount(TCode account);
  virtual void AccountUpdate(void* sender, void* data);  // data: TAccountMap*
  virtual void MultiCurrencyInfoUpdate(void* sender, void* data);
  virtual void CurrencyListUpdate(void* sender, void* data);
  virtual void CurrencyRatioUpdate(void* sender, void* data);
  virtual std::string GetResourceHeader(std::int32_t field);  // the caption; "" for a field that is no column
  // One field of one currency, unassigned when there is no data or the record does not hold it.
  virtual TVariant GetAccountCurrencyData(const TCustomAccountData* data, std::int32_t field);
  // flag: show a figure of one currency in the conversion currency; the total row is always shown in it.
  virtual std::string GetAccountCurrencyDisplayData(const TCustomAccountData* data, std::int32_t field,
                                                    bool flag);
  virtual void SetCurrency(TCode currency);  // the conversion currency; empty means the base currency
  virtual void InitCurrencyNode();           // builds the rows below the first level; the base knows none
  // The field summed over the master's data and that of each sub-account in the same currency.
  virtual TVariant GetAggregatedAccountCurrencyData(const TCustomAccountData* data, std::int32_t field);
  virtual void InitAggregateAccountList();  // refills the sub-account map
  // Whether the accounts hold a sub-account of the group that is shown.
  virtual bool IsSubAccountUpdate(const TAccountMap& accounts);
  // The account is shown from its side of China Connect while that is on and the filter currency is CNY.
  virtual void UpdateChinaConnectFlag();
  virtual void SetFilterCurr(TCode currency);  // empty: every currency
  // The average price of a position, in the product's currency. False leaves `price` alone: it has none.
  virtual bool GetAvgPrice(const TCustomPositionData& position, double& price);
  // Profit and loss from prices, in the product's currency; 0 where a price is missing.
  virtual double GetPL(const TCustomPositionData& position);
  // The price it is reckoned at: the middle one of bid, last and ask while the exchange trades, else the last
  // price, else the previous close; 0 for none.
  virtual double GetPLPrice(const TCustomPositionData& position);
  virtual bool IsMarketOpen(TCode exchange);                  // whether the exchange trades now
  virtual double GetMiddleOne(double a, double b, double c);  // neither the largest nor the smallest
  virtual void SetAggregate();                                // toggles the aggregate flag

  TCode GetAccount() const noexcept { return FAccount; }
  TCode GetConvertCurrency() const noexcept { return FConvertCurrency; }
  TCode GetFilterCurrency() const noexcept { return FFilterCurrency; }
  bool IsAggregate() const noexcept { return FAggregate; }
  bool GetChinaConnectFlag() const noexcept { return FChinaConnect; }
  const TAccountMap& GetSubAccounts() const noexcept { return FSubAccounts; }
  const std::vector<TDataNode*>& GetRootChildren() const noexcept { return FRootChildren; }

 protected:
  // One field of an account-data record as a cell value: a double, or a text for a text field.
  TVariant GetFieldValue(const TCustomAccountData* data, std::int32_t field) const;

  // Takes a new node into the node list; the node list owns it.
  template <class T>
  T* AddNode(std::unique_ptr<T> node) {
    T* added = node.get();
    FNodes.push_back(std::move(node));
    return added;
  }

  // "%d-%s" of field and currency; the field alone for an empty currency.
  static std::string MakeNodeKey(std::int32_t field, TCode currency);

  // An amount of `currency` (empty: of the total row) in the conversion currency.
  double ToConversionCurrency(double amount, TCode currency) const;

  // The name of a currency in the current language, or its code when it has none.
  static std::string GetCurrencyName(TCode currency);

  TCode FAccount;
  TCode FFilterCurrency;
  TCode FConvertCurrency;
  bool FShowsConvertedRow = false;  // while the text of such a row is being made
  bool FAggregate = false;          // the sub-accounts of a master account are summed with it
  bool FChinaConnect = false;       // the account is shown from its side of the exchange link
  std::int32_t FCurrencyCount = 0;  // of the account, when its rows were built
  TAccountMap FSubAccounts;         // empty while not aggregated
  std::vector<const TColumnInfo*>
      FColumns;  // borrowed, in list order
                 // Nodes by field, and by MakeNodeKey of field and currency; the node list owns them all.
  std::unordered_map<std::int32_t, TAccountDataNode*> FAttributeNodes;
  std::unordered_map<std::string, TAccountDataValueNode*> FValueNodes;
  std::unordered_map<std::string, TConvertAccountDataValueNode*> FConvertNodes;
  std::vector<std::unique_ptr<TDataNode>> FNodes;
  std::vector<TDataNode*> FRootChildren;
  const std::string FColumnSection;

  const std::string& GetNotAvailableText() const;        // in place of figures that do not apply
  const std::string& GetMissingMarginLevelText() const;  // where no margin level can be computed

 private:
  const TCustomAccountData* GetNodeData(const TDataNode* node) const;
};

}  // namespace margindesk
