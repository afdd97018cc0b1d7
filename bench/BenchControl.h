#pragma once

#include "accountinfo/data/AccountInfoDataControl.h"

namespace margindesk {

// The six position totals, as a table to loop over.
class TBenchControl : public TAccountInfoDataControl {
 public:
  TBenchControl() : TAccountInfoDataControl(nullptr) {}

  using TAccountInfoDataControl::AccountInfoLoadUpdate;
  using TAccountInfoDataControl::GetTotalCompBuy;
  using TAccountInfoDataControl::GetTotalMarketValue;
  using TAccountInfoDataControl::SetAccount;

  double GetSixTotals(TCode currency) {
    return GetTotalMarketValue(currency) + GetTotalCompBuy(currency) + GetTotalCompSell(currency) +
           GetTotalPL(currency) + GetTotalRelizePL(currency) + GetTotalUnrelizePL(currency);
  }
};

}  // namespace margindesk
