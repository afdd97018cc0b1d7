#include "host/engine/OrderEngine.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <vector>

#include "host/book/BookError.h"
#include "host/engine/OrderCheck.h"
#include "host/services/ClientOrderRecord.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/Icommon.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

constexpr std::uint64_t kFirstOrder = 10000001;

TOrderFacts FactsOf(const TClientOrderRecord& order) {
  TOrderFacts facts;
  facts.FAccount = order.GetAccount();
  facts.FSymbol = order.GetSymbol();
  facts.FSide = order.GetSide();
  facts.FPrice = order.GetPrice();
  facts.FQuantity = order.GetQuantity();
  facts.FOpenClose = order.GetOpenClose();
  facts.FPrincipal = order.GetPrincipal();
  facts.FMarket = order.GetExtraField(kOrderTypeField) == kOrderTypeMarket;
  return facts;
}

// The price at which the market takes an order now; none while it does not.
std::optional<double> MarketPriceOf(const THostData& data, const TSymbolFacts& facts,
                                    const TOrderFacts& order) {
  const TProductFacts& product = facts.FProduct;
  const TExchangeFacts* exchange = data.FindExchange(product.FExchange);
  if (exchange == nullptr || !exchange->FOpen) return std::nullopt;
  const bool buy = order.FSide == kSideBuy;
  if (product.FOverTheCounter && product.FProductType == kProductTypeFund) {
    const double price = facts.GetPrice();
    return price > 0 ? std::optional(price) : std::nullopt;
  }
  const double quote = buy ? facts.FPrices.FAsk : facts.FPrices.FBid;
  if (!(quote > 0)) return std::nullopt;
  if (!order.FMarket && (buy ? order.FPrice < quote : order.FPrice > quote)) return std::nullopt;
  return quote;
}

// Buys before sells; of one side market orders, then the better price. Whoever came first stays so.
bool ComesBefore(const TOrderFacts* a, const TOrderFacts* b) {
  if (a->FSide != b->FSide) return a->FSide < b->FSide;
  if (a->FMarket != b->FMarket) return a->FMarket;
  return a->FSide == kSideBuy ? a->FPrice > b->FPrice : a->FPrice < b->FPrice;
}

// The identifiers are whole numbers; 0 for one that came from elsewhere.
std::uint64_t NumberOf(const std::string& orderID) {
  std::uint64_t number = 0;
  const char* const end = orderID.data() + orderID.size();
  const auto [at, error] = std::from_chars(orderID.data(), end, number);
  return error == std::errc() && at == end ? number : 0;
}

}  // namespace

TOrderEngine::TOrderEngine(THostData& data, TAccountAdapter& accounts, TUiLoop& loop, TBookWriter writer,
                           TClock clock)
    : FData(data), FSimulations(data, accounts, loop), FWriter(std::move(writer)), FClock(std::move(clock)) {}

std::string TOrderEngine::Check(const TCustomClientOrder& order, std::int32_t action) const {
  const auto* record = dynamic_cast<const TClientOrderRecord*>(&order);
  if (record == nullptr) return GetErrorText("DCORDER016");
  return FindOrderFault({FData, FactsOf(*record), action});
}

std::string TOrderEngine::Place(TCustomClientOrder& order, std::int32_t action) {
  auto* record = dynamic_cast<TClientOrderRecord*>(&order);
  if (record == nullptr) return GetErrorText("DCORDER016");
  if (!record->GetOrderID().empty()) return GetErrorText("DCORDER017", {record->GetOrderID()});
  TOrderFacts facts = FactsOf(*record);
  if (std::string fault = FindOrderFault({FData, facts, action}); !fault.empty()) return fault;
  facts.FOrderID = NextOrderID();
  facts.FEntered = FormatNow();

  TLedger ledger(FData, facts.FAccount);
  bool booked = false;
  if (const auto price = MarketPriceOf(FData, *FindSymbolFacts(FData, facts.FSymbol), facts)) {
    booked = Fill(ledger, facts, *price);
  } else {
    ledger.Reserve(facts);
    booked = Book(ledger, facts, nullptr);
  }
  if (!booked) return GetErrorText("DCORDER018", {FBookFault});
  record->SetOrderID(facts.FOrderID);
  return {};
}

bool TOrderEngine::Fill(TLedger& ledger, TOrderFacts order, double price) {
  TDeal deal = DealOf(*FindSymbolFacts(FData, order.FSymbol), order);
  deal.FPrice = price;
  TFillFacts fill;
  fill.FCharge = ledger.ApplyFill(order, deal);
  fill.FFillID = order.FOrderID + '-' + std::to_string(FData.GetFills(order.FOrderID).size() + 1);
  fill.FOrderID = order.FOrderID;
  fill.FPrice = deal.FPrice;
  fill.FQuantity = deal.FQuantity;
  fill.FTime = FormatNow();
  order.FFilledQuantity = order.FQuantity;
  order.FState = TOrderState::kFilled;
  return Book(ledger, order, &fill);
}

bool TOrderEngine::Book(const TLedger& ledger, const TOrderFacts& order, const TFillFacts* fill) {
  TBookChange change = ledger.GetChange();
  change.FOrders = {order};
  if (fill != nullptr) change.FFills = {*fill};
  FBookFault.clear();
  if (FWriter) {
    try {
      FWriter(change);
    } catch (const TBookError& error) {
      FBookFault = error.what();
      return false;
    }
  }
  FToldBookFault = false;
  for (const TFigureFacts& facts : change.FFigures) FData.SetFigures(facts);
  for (const TFigureFacts& facts : change.FConsolidated) FData.SetConsolidated(facts);
  for (const TPositionFacts& facts : change.FPositions) FData.UpsertPosition(facts);
  FData.SetOrder(order);
  if (fill != nullptr) FData.AddFill(*fill);
  return true;
}

std::string TOrderEngine::Simulate(const TClientOrderList* orders, TCustomClientOrder& carrier) {
  auto* record = dynamic_cast<TClientOrderRecord*>(&carrier);
  if (record == nullptr) return GetErrorText("DCORDER016");
  if (orders == nullptr || orders->empty()) return GetResourceText("Res_NoOrderSimulate");
  const TCode account = record->GetAccount();
  if (FData.FindAccount(account) == nullptr) return GetErrorText("DCORDER001", {account.Text()});

  TLedger ledger(FData, account);
  for (const auto& order : *orders) {
    const auto* simulated = dynamic_cast<const TClientOrderRecord*>(order.get());
    if (simulated == nullptr || simulated->GetAccount() != account) return GetErrorText("DCORDER016");
    TOrderFacts facts = FactsOf(*simulated);
    facts.FMarket = facts.FMarket || facts.FPrice == 0;
    if (std::string fault = FindOrderFault({FData, facts, kActionSimulate}); !fault.empty()) return fault;
    if (simulated->GetStatus() == kStatusCompleted) {
      ledger.ApplyFill(facts, DealOf(*FindSymbolFacts(FData, facts.FSymbol), facts));
    } else {
      ledger.Reserve(facts);
    }
  }
  std::string key = record->GetSimulationKey().empty() ? CreateNewGUID() : record->GetSimulationKey();
  record->SetOrderID(key);
  FSimulations.Publish(&carrier, account, std::move(key), ledger.GetFigures());
  return {};
}

std::string TOrderEngine::Cancel(TCode account, std::string_view orderID) {
  const TOrderFacts* found = FData.FindOrder(orderID);
  if (found == nullptr || found->FAccount != account) {
    return GetErrorText("DCORDER019", {orderID, account.Text()});
  }
  if (found->FState != TOrderState::kResting) return GetErrorText("DCORDER020", {orderID});
  TOrderFacts order = *found;
  TLedger ledger(FData, account);
  ledger.Release(order);
  order.FState = TOrderState::kCancelled;
  return Book(ledger, order, nullptr) ? std::string() : GetErrorText("DCORDER018", {FBookFault});
}

void TOrderEngine::Match(const TCodeSet& symbols) {
  std::vector<const TOrderFacts*> resting;
  for (const TOrderFacts* order : FData.GetOrders()) {
    if (order->FState == TOrderState::kResting && symbols.Contains(order->FSymbol)) resting.push_back(order);
  }
  std::ranges::stable_sort(resting, &ComesBefore);
  for (const TOrderFacts* found : resting) {
    TOrderFacts order = *found;
    const TSymbolFacts* facts = FindSymbolFacts(FData, order.FSymbol);
    if (facts == nullptr || FData.FindAccount(order.FAccount) == nullptr) continue;
    const auto price = MarketPriceOf(FData, *facts, order);
    if (!price) continue;
    TLedger ledger(FData, order.FAccount);
    ledger.Release(order);
    if (!Fill(ledger, order, *price)) TellBookFault();
  }
}

// Once until a booking goes well again: prices come many a second.
void TOrderEngine::TellBookFault() {
  if (std::exchange(FToldBookFault, true)) return;
  TCustomMessageBoxCtrl::GetInstance().ShowMessage(GetErrorText("DCORDER018", {FBookFault}));
}

std::string TOrderEngine::NextOrderID() {
  for (const TOrderFacts* order : FData.GetOrders()) {
    FLastOrder = std::max(FLastOrder, NumberOf(order->FOrderID));
  }
  FLastOrder = std::max(FLastOrder + 1, kFirstOrder);
  return std::to_string(FLastOrder);
}

std::string TOrderEngine::FormatNow() const {
  const auto now = std::chrono::floor<std::chrono::milliseconds>(FClock());
  const auto day = std::chrono::floor<std::chrono::days>(now);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(now - day);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()), static_cast<int>(time.subseconds().count()));
  return text;
}

}  // namespace margindesk
