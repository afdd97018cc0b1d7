#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/BaseOrderData.h"
#include "model/contract/Positiondatacontrol.h"

namespace margindesk {

class TAveragePriceStyle;

// The data control of a position grid in a view: the positions of one account as rows in the order of their
// keys, and the actions on them. It listens to the host from its making until it goes.
//
// Columns are field identifiers of the catalogue and the position prices of Constdef.h. Quantities are in
// units and amounts in the product's currency; the ratio and the converted columns are in the conversion
// currency. A value is at full precision; a column that is not known or has no figure is unassigned and "".
//
// An action looks its position up again when it is taken, and once more after a question, so that it closes
// what is held then and not what the row showed; what changed meanwhile never makes an order larger.
class TPositionViewDataControl : public TCustomPositionDataControl, public TRowKeys {
 public:
  explicit TPositionViewDataControl(TComponent* owner);
  ~TPositionViewDataControl() override;

  std::int32_t GetCount() override;
  void Changed() override;                   // builds the rows anew, then calls the change event
  const TColumnList* GetColList() override;  // null: the columns belong to the view
  TVariant GetValue(std::int32_t row, std::int32_t column) override;
  std::string GetDisplayValue(std::int32_t row, std::int32_t column) override;
  bool GetRowValue(std::int32_t row, const void*& value) override;  // a TCustomPositionData
  bool GetColValue(std::int32_t column, const void*& value) override;

  void ConfigUpdate(void* sender, void* data) override;
  void PositionUpdate(void* sender, void* data) override;            // null data: all of them
  void PositionMarketDataUpdate(void* sender, void* data) override;  // costs nothing for other symbols
  void SetAccount(TCode account) override;
  void SpreadUpdate(void* sender, void* data) override;
  // What is held, less what may not be sold: excluded units, and of a long position those that cover a short
  // one and those held as paper. Never negative.
  double GetAvailableQty(const TCustomPositionData& position) override;
  void SetConvertCurrency(TCode currency) override;
  void CurrencyRatioUpdate(void* sender, void* data) override;
  bool CheckClosePositionQty(std::int32_t row) override;
  bool CheckClosePositionQty(const TCustomPositionData& position) override;
  void CloseToBest(std::int32_t row) override;
  void CloseToLast(std::int32_t row) override;
  void CloseToMarket(std::int32_t row) override;
  void CloseAllPositions() override;              // the rows that are shown, at market
  void AddToFavorite(std::int32_t row) override;  // to the user's list of watched symbols
  void CopyOrder(std::int32_t row) override;      // hands the row as an order to the linked views
  bool Watchable(std::int32_t row) override;      // the symbol is not watched yet
  void RefreshDataList() override;                // the rows, without the change event
  bool IsDisplayPosition(const TCustomPositionData& position) override;  // not one that is 0 everywhere
  void ProductMarginRatioUpdate(void* sender, void* data) override;
  bool GetAcceptValue(const TCustomPositionData& position, TCode currency, double& value) override;
  bool GetProductMargin(const TCustomPositionData& position, double& value) override;
  void AccountInfoLoadUpdate(void* sender, void* data) override;    // null data: all of them
  double GetLastQty(const TCustomPositionData& position) override;  // held now, negative when short
  std::int32_t GetPrincipalType(const TCustomPositionData& position) override;
  double GetConstractSize(const TCustomPositionData& position) override;
  // Rounded as the user wants averages of its side; the profit and loss is reckoned from the average in full.
  bool GetAvgPrice(const TCustomPositionData& position, double& price) override;
  double GetPL(const TCustomPositionData& position) override;  // from prices, 0 where one is missing
  double GetPLPrice(const TCustomPositionData& position) override;
  bool IsMarketOpen(TCode exchange) override;
  double GetMiddleOne(double a, double b, double c) override;
  void SubAccountLoadUpdate(void* sender, void* data) override;  // data: TAccountMap*; null: all of them
  void InitAggregateAccountList() override;
  bool CheckNeedUpdateSubAccountList(const TAccountMap& accounts) override;
  void ClearAggregateData() override;
  bool CheckNeedUpdatePosition(const TAccountPositionMap& positions) override;
  void SetFilterCurrency(TCode currency) override;  // empty: every currency
  double GetTotalMarketValue() override;
  double GetTotalAcceptValue() override;
  void SetAggregate() override;
  void SetShowChinaConnect(std::string_view currency) override;
  bool GetAccountInfo(std::string& info) override;

  virtual void CopySymbol(std::int32_t row);  // hands the row's symbol to the linked views

  std::string GetRowKey(std::int32_t row) const override;
  std::int32_t FindRow(std::string_view key) const override;

  TCode GetAccount() const noexcept { return FAccount; }
  TCode GetConvertCurrency() const noexcept { return FConvertCurrency; }
  bool IsAggregate() const noexcept { return FAggregate; }

 protected:
  std::vector<std::string> FRowKeys;               // position keys in display order
  TPositionMap FPositions;                         // the positions by key
  std::unique_ptr<TCustomClientOrder> FOrderItem;  // carries an account or a symbol to another view
  std::int64_t FLinkValue = 0;                     // views that share it follow each other

 private:
  enum class TCloseAt { kBest, kLast, kMarket };

  const TCustomPositionData* GetRowPosition(std::int32_t row) const;  // null out of range
  bool IsOwnAccount(TCode account) const;
  bool IsOnShownSide(const TCustomPositionData& position) const;
  bool NamesShownSymbol(const TPositionMap& positions) const;
  void MergeSubAccountPositions();
  template <class TAmount>
  double SumRows(TAmount amount);

  void ClosePosition(std::int32_t row, TCloseAt at);
  std::unique_ptr<TCustomClientOrder> MakeCloseOrder(const TCustomPositionData& position, double price,
                                                     TCloseAt at);
  bool MayClose(const std::string& question);  // false too when the control went while the user was asked
  bool OffersOrderOption(const TCustomPositionData& position, std::string_view option) const;

  TCode FAccount;
  TCode FConvertCurrency;  // empty: the base currency
  TCode FFilterCurrency;
  TCode FSideCurrency;  // CNY asks for the side of the exchange link
  bool FAggregate = false;
  TAccountMap FSubAccounts;                               // empty while not aggregated
  std::vector<const TCustomPositionData*> FRowPositions;  // one a row; FPositions keeps them
  std::vector<bool> FShownSymbols;                        // by the number of the code
  std::unique_ptr<TAveragePriceStyle> FAveragePrices;
  std::shared_ptr<bool> FAlive;  // goes with the control
};

}  // namespace margindesk
