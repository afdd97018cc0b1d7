// The position grid's base: what it listens to, and when its rows are built anew.
#include "host/framework/AveragePrice.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

TPositionViewDataControl::TPositionViewDataControl(TComponent* owner)
    : TCustomPositionDataControl(owner),
      FOrderItem(TCustomOrderAdapter::GetInstance().NewClientOrder()),
      FAveragePrices(std::make_unique<TAveragePriceStyle>(TAveragePriceStyle::Read())),
      FAlive(std::make_shared<bool>(true)) {
  using TSelf = TPositionViewDataControl;
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(MakeHandler<&TSelf::ConfigUpdate>(this), this);
  TCustomCurrencyAdapter::GetInstance().AddCurrencyRatioHandler(
      MakeHandler<&TSelf::CurrencyRatioUpdate>(this), this);
  TCustomAccountAdapter::GetInstance().AddAccountInfoLoadHandler(
      MakeHandler<&TSelf::AccountInfoLoadUpdate>(this), this);
  TCustomPositionAdapter::GetInstance().AddPositionMarketDataHandler(
      MakeHandler<&TSelf::PositionMarketDataUpdate>(this), this);
}

TPositionViewDataControl::~TPositionViewDataControl() {
  auto& positions = TCustomPositionAdapter::GetInstance();
  if (FAggregate) positions.UnregisterSubAccountPositionListener(FAccount, this);
  positions.UnregisterPositionListener(FAccount, this);
  positions.RemovePositionMarketDataHandler(this);
  TCustomAccountAdapter::GetInstance().RemoveAccountInfoLoadHandler(this);
  TCustomCurrencyAdapter::GetInstance().RemoveCurrencyRatioHandler(this);
  TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(this);
}

void TPositionViewDataControl::Changed() {
  InitAggregateAccountList();
  RefreshDataList();
  NotifyChange();
}

void TPositionViewDataControl::SetAccount(TCode account) {
  if (account == FAccount) return;
  const THandler handler = MakeHandler<&TPositionViewDataControl::PositionUpdate>(this);
  auto& positions = TCustomPositionAdapter::GetInstance();
  positions.RegisterPositionListener(account, handler, this, FAccount);
  if (FAggregate) positions.RegisterSubAccountPositionListener(account, handler, this, FAccount);
  FAccount = account;
  Changed();
}

void TPositionViewDataControl::SetAggregate() {
  auto& positions = TCustomPositionAdapter::GetInstance();
  FAggregate = !FAggregate;
  if (FAggregate) {
    positions.RegisterSubAccountPositionListener(
        FAccount, MakeHandler<&TPositionViewDataControl::PositionUpdate>(this), this);
  } else {
    positions.UnregisterSubAccountPositionListener(FAccount, this);
  }
  Changed();
}

void TPositionViewDataControl::SetConvertCurrency(TCode currency) {
  if (currency == FConvertCurrency) return;
  FConvertCurrency = currency;
  NotifyChange();
}

void TPositionViewDataControl::SetFilterCurrency(TCode currency) {
  if (currency == FFilterCurrency) return;
  FFilterCurrency = currency;
  Changed();
}

void TPositionViewDataControl::SetShowChinaConnect(std::string_view currency) {
  const TCode side(currency);
  if (side == FSideCurrency) return;
  FSideCurrency = side;
  Changed();
}

void TPositionViewDataControl::ConfigUpdate(void* /*sender*/, void* /*data*/) {
  *FAveragePrices = TAveragePriceStyle::Read();
  NotifyChange();
}

void TPositionViewDataControl::CurrencyRatioUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

void TPositionViewDataControl::SpreadUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

void TPositionViewDataControl::ProductMarginRatioUpdate(void* /*sender*/, void* /*data*/) { NotifyChange(); }

void TPositionViewDataControl::PositionUpdate(void* /*sender*/, void* data) {
  const auto* positions = static_cast<const TAccountPositionMap*>(data);
  if (positions != nullptr && !CheckNeedUpdatePosition(*positions)) return;
  RefreshDataList();
  NotifyChange();
}

void TPositionViewDataControl::PositionMarketDataUpdate(void* /*sender*/, void* data) {
  if (FRowKeys.empty()) return;
  const auto* positions = static_cast<const TAccountPositionMap*>(data);
  const auto concerns = [this, positions](TCode account) {
    const auto changed = positions->find(account);
    return changed != positions->end() && NamesShownSymbol(changed->second);
  };
  bool concerned = positions == nullptr || concerns(FAccount);
  for (auto sub = FSubAccounts.begin(); !concerned && sub != FSubAccounts.end(); ++sub) {
    concerned = concerns(sub->first);
  }
  if (concerned) NotifyChange();
}

void TPositionViewDataControl::AccountInfoLoadUpdate(void* sender, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts != nullptr && accounts->contains(FAccount)) {
    Changed();
  } else {
    SubAccountLoadUpdate(sender, data);
  }
}

void TPositionViewDataControl::SubAccountLoadUpdate(void* /*sender*/, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts == nullptr || CheckNeedUpdateSubAccountList(*accounts)) Changed();
}

}  // namespace margindesk
