// The actions of the position grid: closing orders, and what it hands to other views.
#include <algorithm>
#include <array>
#include <cmath>

#include "host/framework/PositionRowKey.h"
#include "model/AccountInfoConstDef.h"
#include "model/CommaText.h"
#include "model/ResourceText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Formatter.h"
#include "model/contract/GlobalChannelManager.h"
#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/Positionviewdatacontrol.h"

namespace margindesk {

namespace {

constexpr std::string_view kWatchListKey = "WatchList";  // a comma text of symbols

bool IsShort(const TCustomPositionData& position) { return position.GetHoldingQuantity() < 0; }

std::int32_t ClosingSideOf(const TCustomPositionData& position) {
  return IsShort(position) ? kSideBuy : kSideSell;
}

// A position as it is at the moment of asking, and what keeps it. Null when it has gone.
struct TCurrentPosition {
  TPositionMap FKeeper;
  const TCustomPositionData* FPosition = nullptr;

  TCurrentPosition(TCode account, std::string_view rowKey) {
    TCustomPositionAdapter::GetInstance().GetPositionList(account, FKeeper);
    FPosition = FKeeper.Find(PositionKeyOf(rowKey));
  }
};

bool SendOrder(TCustomClientOrder& order) {
  auto& actions = TCustomOrderActionManager::GetInstance();
  return actions.CheckOrderAction(order, kActionOrder, true) &&
         actions.TakeOrderAction(nullptr, order, kActionOrder, true);
}

void ShowMessage(std::string_view text) { TCustomMessageBoxCtrl::GetInstance().ShowMessage(text); }

std::string FormatQuantity(double quantity, TCode symbol) {
  return TCustomFormatter::GetInstance().FormatValue(quantity, kFormatQuantity, symbol, true);
}

std::vector<std::string> ReadWatchList() {
  const auto& config = TCustomConfigManager::GetInstance();
  return SplitCommaText(config.ReadString(config.GetUserSection(), kWatchListKey));
}

}  // namespace

double TPositionViewDataControl::GetAvailableQty(const TCustomPositionData& position) {
  double bound = std::abs(position.GetExcludedQuantity());
  if (!IsShort(position)) {
    bound += position.GetDataValue(kFieldCoveredQty).AsFloatOr(0);
    bound += position.GetDataValue(kFieldVoucherQty).AsFloatOr(0);
  }
  return std::max(std::abs(position.GetHoldingQuantity()) - bound, 0.0);
}

bool TPositionViewDataControl::CheckClosePositionQty(const TCustomPositionData& position) {
  return GetAvailableQty(position) > kZeroTolerance;
}

bool TPositionViewDataControl::CheckClosePositionQty(std::int32_t row) {
  const TCustomPositionData* position = GetRowPosition(row);
  return position != nullptr && CheckClosePositionQty(*position);
}

bool TPositionViewDataControl::OffersOrderOption(const TCustomPositionData& position,
                                                 std::string_view option) const {
  const TCustomSubItem* item = position.GetReferenceItem();
  if (item == nullptr) return false;
  const auto& orders = TCustomOrderAdapter::GetInstance();
  const TCode exchange = item->GetFieldCode(kItemExchange);
  for (std::int32_t i = 0; i < orders.GetOrderOptionCount(exchange); ++i) {
    if (SameTextIgnoringCase(orders.GetOrderOption(exchange, i), option)) return true;
  }
  return false;
}

std::int32_t TPositionViewDataControl::GetPrincipalType(const TCustomPositionData& position) {
  return OffersOrderOption(position, "Client") ? kPrincipalClient : 0;
}

std::unique_ptr<TCustomClientOrder> TPositionViewDataControl::MakeCloseOrder(
    const TCustomPositionData& position, double price, TCloseAt at) {
  auto order = TCustomOrderAdapter::GetInstance().NewClientOrder();
  order->SetAccount(position.GetAccountID());
  order->SetSymbol(position.GetSymbol());
  order->SetSide(ClosingSideOf(position));
  order->SetPrice(price);
  order->SetQuantity(GetAvailableQty(position));
  order->SetOpenClose(OffersOrderOption(position, "Close") ? kOpenCloseClose : 0);
  order->SetPrincipal(GetPrincipalType(position));
  if (at == TCloseAt::kMarket) order->SetExtraField(kOrderTypeField, kOrderTypeMarket);
  return order;
}

bool TPositionViewDataControl::MayClose(const std::string& question) {
  const auto& config = TCustomConfigManager::GetInstance();
  if (!config.ReadBool(config.GetUserSection(), "ConfirmationClosePosition")) return true;
  const std::weak_ptr<bool> alive = FAlive;
  return TCustomMessageBoxCtrl::GetInstance().ShowConfirmation(question) == kConfirmationYes &&
         !alive.expired();
}

void TPositionViewDataControl::ClosePosition(std::int32_t row, TCloseAt at) {
  struct TWay {
    std::string_view FCaptionKey;
    std::int32_t FPriceToSell;  // a field of the reference item; 0 for a market order
    std::int32_t FPriceToBuy;
  };
  static constexpr std::array<TWay, 3> kWays = {{{"Res_Close_Best", kItemBid, kItemAsk},
                                                 {"Res_Close_Last", kItemLast, kItemLast},
                                                 {"Res_Close_Market", 0, 0}}};
  const TWay& way = kWays[static_cast<std::size_t>(at)];
  const TCustomPositionData* shown = GetRowPosition(row);
  if (shown == nullptr) return;
  const TCode account = shown->GetAccountID();
  const std::string key = FRowKeys[static_cast<std::size_t>(row)];
  const TCurrentPosition before(account, key);
  const TCustomPositionData* position = before.FPosition;
  if (position == nullptr || !CheckClosePositionQty(*position)) {
    ShowMessage(GetResourceText("Res_Close_Nothing"));
    return;
  }
  const TCode symbol = position->GetSymbol();
  const TCustomSubItem* item = position->GetReferenceItem();
  const std::int32_t priceField = IsShort(*position) ? way.FPriceToBuy : way.FPriceToSell;
  const double price = item == nullptr || priceField == 0 ? 0 : item->GetFieldFloat(priceField);
  if (priceField != 0 && !(price > 0)) {
    ShowMessage(FillText(GetResourceText("Res_Close_NoPrice"), {symbol.Text()}));
    return;
  }
  const auto order = MakeCloseOrder(*position, price, at);
  const std::string priceText =
      priceField == 0 ? GetResourceText("Res_Price_Market")
                      : TCustomFormatter::GetInstance().FormatValue(price, kFormatPrice, symbol, true);
  const std::string question =
      FillText(GetResourceText("Res_Conf_ClosePosition"),
               {GetResourceText(way.FCaptionKey), TCustomOrderAdapter::GetInstance().GetSideText(*order),
                FormatQuantity(order->GetQuantity(), symbol), symbol.Text(), priceText, account.Text()});
  if (!MayClose(question)) return;
  const TCurrentPosition after(account, key);
  if (after.FPosition == nullptr || !CheckClosePositionQty(*after.FPosition) ||
      IsShort(*after.FPosition) != IsShort(*position)) {
    ShowMessage(GetResourceText("Res_Close_Nothing"));
    return;
  }
  order->SetQuantity(std::min(order->GetQuantity(), GetAvailableQty(*after.FPosition)));
  SendOrder(*order);
}

void TPositionViewDataControl::CloseToBest(std::int32_t row) { ClosePosition(row, TCloseAt::kBest); }

void TPositionViewDataControl::CloseToLast(std::int32_t row) { ClosePosition(row, TCloseAt::kLast); }

void TPositionViewDataControl::CloseToMarket(std::int32_t row) { ClosePosition(row, TCloseAt::kMarket); }

// An order that is refused does not keep the others from being sent: the host has told the user of it.
void TPositionViewDataControl::CloseAllPositions() {
  struct TLine {
    TCode FAccount;
    std::string FKey;
    double FQuantity;  // asked about; signed as the holding
  };
  std::vector<TLine> lines;
  for (std::size_t row = 0; row < FRowPositions.size(); ++row) {
    const TCode account = FRowPositions[row]->GetAccountID();
    const TCurrentPosition current(account, FRowKeys[row]);
    if (current.FPosition == nullptr || !CheckClosePositionQty(*current.FPosition)) continue;
    const double available = GetAvailableQty(*current.FPosition);
    lines.push_back({account, FRowKeys[row], IsShort(*current.FPosition) ? -available : available});
  }
  if (lines.empty()) {
    if (!FAccount.IsEmpty()) ShowMessage(GetResourceText("Res_Close_Nothing"));
    return;
  }
  const std::string count = FormatQuantity(static_cast<double>(lines.size()), TCode());
  if (!MayClose(FillText(GetResourceText("Res_Conf_CloseAll"), {count, FAccount.Text()}))) return;
  const std::weak_ptr<bool> alive = FAlive;
  for (const TLine& line : lines) {
    if (alive.expired()) return;  // the host's answer to an order may close the view
    const TCurrentPosition current(line.FAccount, line.FKey);
    if (current.FPosition == nullptr || IsShort(*current.FPosition) != (line.FQuantity < 0)) continue;
    const auto order = MakeCloseOrder(*current.FPosition, 0, TCloseAt::kMarket);
    order->SetQuantity(std::min(order->GetQuantity(), std::abs(line.FQuantity)));
    if (order->GetQuantity() > kZeroTolerance) SendOrder(*order);
  }
}

void TPositionViewDataControl::CopySymbol(std::int32_t row) {
  const TCustomPositionData* position = GetRowPosition(row);
  if (position == nullptr) return;
  TCustomGlobalChannelManager::GetInstance().PostChannelData(
      kChannelLinkedSymbol, position->GetSymbol().Text(), nullptr, FLinkValue);
}

void TPositionViewDataControl::CopyOrder(std::int32_t row) {
  const TCustomPositionData* position = GetRowPosition(row);
  if (position == nullptr) return;
  FOrderItem->Reset();
  FOrderItem->SetAccount(position->GetAccountID());
  FOrderItem->SetSymbol(position->GetSymbol());
  FOrderItem->SetQuantity(std::abs(position->GetHoldingQuantity()));
  FOrderItem->SetSide(IsShort(*position) ? kSideSell : kSideBuy);
  TCustomGlobalChannelManager::GetInstance().PostChannelData(
      kChannelLinkedOrder, position->GetSymbol().Text(), FOrderItem.get(), FLinkValue);
}

bool TPositionViewDataControl::Watchable(std::int32_t row) {
  const TCustomPositionData* position = GetRowPosition(row);
  if (position == nullptr) return false;
  const std::vector<std::string> watched = ReadWatchList();
  return std::ranges::find(watched, position->GetSymbol().Text()) == watched.end();
}

void TPositionViewDataControl::AddToFavorite(std::int32_t row) {
  if (!Watchable(row)) return;
  std::vector<std::string> symbols = ReadWatchList();
  symbols.push_back(GetRowPosition(row)->GetSymbol().Text());
  auto& config = TCustomConfigManager::GetInstance();
  config.WriteString(config.GetUserSection(), kWatchListKey, JoinCommaText(symbols), true);
}

}  // namespace margindesk
