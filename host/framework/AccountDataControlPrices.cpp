// Profit and loss from prices, for the positions that store none, and the China Connect side of an account.
#include "host/framework/PositionFigures.h"
#include "model/contract/AccountDataControl.h"
#include "model/contract/MarketAdapter.h"

namespace margindesk {

void TCustomAccountInfoDataControl::UpdateChinaConnectFlag() {
  FChinaConnect = IsChinaConnectSide(FFilterCurrency);
}

bool TCustomAccountInfoDataControl::GetAvgPrice(const TCustomPositionData& position, double& price) {
  return ReadAveragePrice(position, price);
}

double TCustomAccountInfoDataControl::GetPLPrice(const TCustomPositionData& position) {
  return ReckonPLPrice(*this, position);
}

double TCustomAccountInfoDataControl::GetPL(const TCustomPositionData& position) {
  double average = 0;
  return GetAvgPrice(position, average) ? ReckonPL(position, GetPLPrice(position), average) : 0;
}

bool TCustomAccountInfoDataControl::IsMarketOpen(TCode exchange) {
  return TCustomMarketAdapter::GetInstance().IsExchangeOpen(exchange);
}

double TCustomAccountInfoDataControl::GetMiddleOne(double a, double b, double c) {
  return MiddleOfThree(a, b, c);
}

}  // namespace margindesk
