#pragma once

#include <cstdint>
#include <string>

#include "model/contract/BaseAccountData.h"
#include "model/contract/BasePositionData.h"
#include "model/contract/Basedatacontrol.h"
#include "model/contract/Code.h"

namespace margindesk {

// The base of every grid of positions. Rows are in display order; a row out of range does nothing, answers
// false or 0. Operations are in slot order.
class TCustomPositionDataControl : public TBaseDataControl {
 public:
  using TBaseDataControl::TBaseDataControl;

  virtual void ConfigUpdate(void* sender, void* data) = 0;
  virtual void PositionUpdate(void* sender, void* data) = 0;            // data: TAccountPositionMap*
  virtual void PositionMarketDataUpdate(void* sender, void* data) = 0;  // data: TAccountPositionMap*
  virtual void SetAccount(TCode account) = 0;
  virtual void SpreadUpdate(void* sender, void* data) = 0;
  virtual double GetAvailableQty(const TCustomPositionData& position) = 0;  // units that may be closed
  virtual void SetConvertCurrency(TCode currency) = 0;  // of the converted columns and the totals
  virtual void CurrencyRatioUpdate(void* sender, void* data) = 0;
  // Whether anything of the position may be closed.
  virtual bool CheckClosePositionQty(std::int32_t row) = 0;
  virtual bool CheckClosePositionQty(const TCustomPositionData& position) = 0;
  // Closing orders for the available quantity: at the best price of the other side, at the last price, at
  // market. Confirmed first where the user wants to be asked.
  virtual void CloseToBest(std::int32_t row) = 0;
  virtual void CloseToLast(std::int32_t row) = 0;
  virtual void CloseToMarket(std::int32_t row) = 0;
  virtual void CloseAllPositions() = 0;
  virtual void AddToFavorite(std::int32_t row) = 0;
  virtual void CopyOrder(std::int32_t row) = 0;
  virtual bool Watchable(std::int32_t row) = 0;
  virtual void RefreshDataList() = 0;
  virtual bool IsDisplayPosition(const TCustomPositionData& position) = 0;
  virtual void ProductMarginRatioUpdate(void* sender, void* data) = 0;
  // What the position may be lent against, in `currency`, and its margin in the product's. False: not known.
  virtual bool GetAcceptValue(const TCustomPositionData& position, TCode currency, double& value) = 0;
  virtual bool GetProductMargin(const TCustomPositionData& position, double& value) = 0;
  virtual void AccountInfoLoadUpdate(void* sender, void* data) = 0;  // data: TAccountMap*
  virtual double GetLastQty(const TCustomPositionData& position) = 0;
  virtual std::int32_t GetPrincipalType(
      const TCustomPositionData& position) = 0;                              // as a client order's principal
  virtual double GetConstractSize(const TCustomPositionData& position) = 0;  // units a contract
  virtual bool GetAvgPrice(const TCustomPositionData& position, double& price) = 0;
  virtual double GetPL(const TCustomPositionData& position) = 0;
  virtual double GetPLPrice(const TCustomPositionData& position) = 0;
  virtual bool IsMarketOpen(TCode exchange) = 0;
  virtual double GetMiddleOne(double a, double b, double c) = 0;
  virtual void SubAccountLoadUpdate(void* sender, void* data) = 0;
  virtual void InitAggregateAccountList() = 0;
  virtual bool CheckNeedUpdateSubAccountList(const TAccountMap& accounts) = 0;
  virtual void ClearAggregateData() = 0;
  virtual bool CheckNeedUpdatePosition(const TAccountPositionMap& positions) = 0;
  virtual void SetFilterCurrency(TCode currency) = 0;
  // Over the rows that are shown, in the conversion currency.
  virtual double GetTotalMarketValue() = 0;
  virtual double GetTotalAcceptValue() = 0;
  virtual void SetAggregate() = 0;  // toggles: the sub-accounts' positions too, or not
  virtual void SetShowChinaConnect(std::string_view currency) = 0;  // CNY: the linked side while that is on
  virtual bool GetAccountInfo(std::string& info) = 0;  // the account's name; false without an account
};

}  // namespace margindesk
