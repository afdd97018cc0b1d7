#include <random>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/book/Book.h"
#include "host/services/BookChange.h"
#include "host/services/HostContentsOfBook.h"
#include "model/contract/AccountAdapter.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/engine/EngineBook.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

// Counts what it is told, as a view would be.
struct TListener {
  void Take(void* /*sender*/, void* data) {
    ++FCalls;
    FAccounts = *static_cast<TAccountMap*>(data);
  }
  void Listen(std::string_view account) {
    TCustomAccountAdapter::GetInstance().RegisterSimulateListener(
        TCode(account), MakeHandler<&TListener::Take>(this), this, TCode());
  }
  void Leave(std::string_view account) {
    TCustomAccountAdapter::GetInstance().UnregisterSimulateListener(TCode(account), this);
  }

  int FCalls = 0;
  TAccountMap FAccounts;
};

std::string Simulate(TReferenceHost& host, std::string_view account, const std::vector<TOrderFacts>& orders,
                     const std::vector<bool>& completed,
                     TClientOrderRecord&& carrier = TClientOrderRecord()) {
  TClientOrderList list;
  for (std::size_t i = 0; i < orders.size(); ++i) {
    list.push_back(ClientOrderOf(orders[i], completed[i] ? kStatusCompleted : kStatusPending));
  }
  carrier.SetAccount(TCode(account));
  const std::string refusal = host.Engine().Simulate(&list, carrier);
  EXPECT_EQ(refusal, "");
  return carrier.GetOrderID();
}

// Random figures, positions and orders over the small market.
class TRandomCase {
 public:
  explicit TRandomCase(unsigned seed) : FRandom(seed) {
    FBook.FChinaConnect = Chance(0.3);
    FBook.Account("L").FMarginType = 1;
    TAccountFacts& account = FBook.FAccounts[1];
    account.FMarginType = Chance(0.7) ? 1 : 0;
    account.FType = Chance(0.4) ? "F" : "S";
    account.FChinaConnectAccount = TCode("L");
    for (auto& [symbol, prices] : FBook.FPrices) {
      const double shift = std::round(prices.FLast * Between(-0.05, 0.05) * 100) / 100;
      if (Chance(0.5)) prices.FLast += shift;
    }
    for (const char* currency : {"", "CNY"}) FBook.Figures("L", currency);
    if (Chance(0.5)) FBook.Figures("A", "CNY").FSeparateRow = Chance(0.5);
    for (TFigureFacts& row : FBook.FFigures) {
      for (double& figure : row.FFigures) figure = Chance(0.8) ? Between(-1e6, 1e6) : 0;
      TEngineBook::Limit(row, 1e9 + Between(0, 1e8));
    }
    for (const char* currency : {"", "HKD", "USD"}) {
      FBook.FConsolidated.push_back(FBook.Figures("M", currency));
      FBook.FFigures.pop_back();
    }
    for (const TProductFacts& product : TEngineBook().FProducts) {
      if (product.FProductType == 7 || Chance(0.4)) continue;
      const bool twoRows = Chance(0.2);
      for (int i = 0; i <= (twoRows ? 1 : 0); ++i) Hold(product, i);
    }
  }

  const TEngineBook& Book() const { return FBook; }

  TOrderFacts NextOrder(bool completed) {
    const TProductFacts& product = FBook.FProducts[Pick(FBook.FProducts.size())];
    const TPriceFacts& prices =
        FBook.FPrices[static_cast<std::size_t>(&product - FBook.FProducts.data())].second;
    const bool buy = Chance(0.5);
    TOrderFacts order = OrderFor("A", product.FSymbol.Text(), buy ? kSideBuy : kSideSell, 0,
                                 product.FLotSize * static_cast<double>(1 + Pick(9)));
    if (product.FProductType == kProductTypeBond) order.FQuantity = 100000;
    order.FPrice = completed ? (buy ? prices.FAsk : prices.FBid)
                   : buy     ? prices.FBid * 0.7
                             : prices.FAsk * 1.3;
    if (product.FProductType == kProductTypeFund && buy) {
      order.FPrice = 1000 + static_cast<double>(Pick(5000));
      order.FQuantity = 1;
    }
    return order;
  }

  bool Chance(double share) { return Between(0, 1) < share; }
  std::size_t Pick(std::size_t count) { return FRandom() % count; }

 private:
  double Between(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(FRandom);
  }

  void Hold(const TProductFacts& product, int row) {
    const bool derivative = product.FProductType == 2 || product.FProductType == 3;
    const double sign = derivative && Chance(0.5) ? -1 : 1;
    TPositionFacts& position =
        FBook.Position("A", product.FSymbol.Text(), sign * product.FLotSize * static_cast<double>(Pick(30)));
    if (row > 0 || Chance(0.1)) position.FKey = product.FSymbol.Text() + " paper";
    position.FAveragePrice = Between(1, 200);
    if (Chance(0.3)) position.FCoveredQuantity = std::min(2.0, std::abs(position.FHoldingQuantity));
    if (Chance(0.3)) FBook.Position("B", product.FSymbol.Text(), -5);
  }

  std::mt19937 FRandom;
  TEngineBook FBook;
};

std::vector<TFigures> FiguresOf(const THostData& data, TCode account) {
  std::vector<TFigures> figures;
  const TAccountRecord* record = data.FindAccount(account);
  figures.push_back(record->FFigures.Find(TCode())->GetFacts().FFigures);
  for (const TCode currency : record->FFigures.GetCurrencies()) {
    figures.push_back(record->FFigures.Find(currency)->GetFacts().FFigures);
  }
  return figures;
}

TEST(SimulationTest, SimulatedFiguresAreThoseOfTheSameOrdersTakenForRealToTheLastBit) {
  TTestHost host;
  TListener listener;
  listener.Listen("A");
  std::size_t cases = 0;
  std::size_t ordersInAll = 0;
  for (unsigned seed = 1; cases < 1200 && seed < 3000; ++seed) {
    TRandomCase random(seed);
    host.Data().Replace(random.Book());
    std::vector<TOrderFacts> orders;
    std::vector<bool> completed;
    for (std::size_t i = 1 + random.Pick(8); i > 0; --i) {
      const bool fills = random.Chance(0.6);
      const TOrderFacts facts = random.NextOrder(fills);
      const auto order = ClientOrderOf(facts);
      if (!host.Engine().Place(*order, kActionOrder).empty()) continue;  // such as a sale of what is not held
      const TOrderState state = host.Data().FindOrder(order->GetOrderID())->FState;
      orders.push_back(facts);
      completed.push_back(state == TOrderState::kFilled);
      ASSERT_TRUE(completed.back() == fills || facts.FSymbol == TCode("FUND")) << seed;
    }
    if (orders.empty()) continue;
    const std::vector<TFigures> real = FiguresOf(host.Data(), TCode("A"));
    const std::vector<TFigures> realLinked = FiguresOf(host.Data(), TCode("L"));
    const std::vector<TCode> currencies = host.Data().FindAccount(TCode("A"))->FFigures.GetCurrencies();

    host.Data().Replace(random.Book());
    const std::vector<TFigures> untouched = FiguresOf(host.Data(), TCode("A"));
    host.Data().TakeChanges();
    const std::string key = Simulate(host, "A", orders, completed);
    EXPECT_FALSE(host.Data().HasChanges());
    EXPECT_EQ(FiguresOf(host.Data(), TCode("A")), untouched);
    const TAccountRecord* account = host.Data().FindAccount(TCode("A"));
    ASSERT_EQ(account->GetSimulatedAccountData(key, TCode()), nullptr)
        << "not before the request has returned";
    host.RunLoop();
    const auto simulated = [&](const TAccountRecord* record, TCode currency) {
      const auto* data =
          static_cast<const TAccountDataRecord*>(record->GetSimulatedAccountData(key, currency));
      return data == nullptr ? TFigures{} : data->GetFacts().FFigures;
    };
    ASSERT_EQ(simulated(account, TCode()), real[0]) << seed;
    for (std::size_t i = 0; i < currencies.size(); ++i)
      ASSERT_EQ(simulated(account, currencies[i]), real[i + 1]) << seed;
    if (random.Book().FChinaConnect) {
      const TAccountRecord* linked = host.Data().FindAccount(TCode("L"));
      ASSERT_EQ(simulated(linked, TCode()), realLinked[0]) << seed;
      ASSERT_EQ(simulated(linked, TCode("CNY")), realLinked[1]) << seed;
    }
    ++cases;
    ordersInAll += orders.size();
  }
  EXPECT_GE(cases, 1000U);
  EXPECT_GT(ordersInAll, 3 * cases);
  EXPECT_EQ(static_cast<std::size_t>(listener.FCalls), cases);
  listener.Leave("A");
}

TEST(SimulationTest, EachAskerKeepsItsNewestSimulationUntilNobodyListens) {
  TTestHost host{TEngineBook()};
  TListener listener;
  listener.Listen("A");
  const TCustomAccount& account = *TCustomAccountAdapter::GetInstance().GetAccount(TCode("A"));
  const auto known = [&](const std::string& key) {
    return account.GetSimulatedAccountData(key, TCode("USD")) != nullptr;
  };
  TClientOrderRecord carriers[2];  // of two views
  const auto simulate = [&](std::size_t view) {
    carriers[view].Reset();
    return Simulate(host, "A", {OrderFor("A", "AA", kSideBuy, 20, 1)}, {true}, std::move(carriers[view]));
  };
  const std::string other = simulate(0);
  std::string key;
  for (int i = 0; i < 5; ++i) {
    host.RunLoop();
    const std::string before = std::exchange(key, simulate(1));
    host.RunLoop();
    EXPECT_TRUE(known(other) && known(key));
    EXPECT_FALSE(known(before));
  }
  EXPECT_TRUE(listener.FAccounts.contains(TCode("A")));
  const std::string late = simulate(1);
  listener.Leave("A");
  EXPECT_FALSE(known(other) || known(key));
  host.RunLoop();
  EXPECT_FALSE(known(late)) << "asked for by a view that has gone";
}

TEST(SimulationTest, ARequestThatCannotBeReckonedIsRefused) {
  TTestHost host{TEngineBook()};
  TClientOrderRecord carrier;
  carrier.SetAccount(TCode("A"));
  TClientOrderList list;
  EXPECT_EQ(host.Engine().Simulate(nullptr, carrier), "There is no order to simulate.");
  EXPECT_EQ(host.Engine().Simulate(&list, carrier), "There is no order to simulate.");
  list.push_back(ClientOrderOf(OrderFor("A", "none", kSideBuy, 1, 1), kStatusCompleted));
  EXPECT_THAT(host.Engine().Simulate(&list, carrier), testing::HasSubstr("none"));
  list[0] = ClientOrderOf(OrderFor("A", "AA", kSideBuy, 1e300, 1), kStatusCompleted);
  EXPECT_THAT(host.Engine().Simulate(&list, carrier), testing::HasSubstr("too large"));
  carrier.SetAccount(TCode("nobody"));
  EXPECT_THAT(host.Engine().Simulate(&list, carrier), testing::HasSubstr("nobody"));
  EXPECT_EQ(carrier.GetOrderID(), "");
}

class DemoBookTest : public testing::Test {
 protected:
  TReferenceHostOptions Options() const {
    TReferenceHostOptions options;
    options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
    return options;
  }

  TTemporaryFolder FFolder;
  TBook FBook{FFolder.Path() / "book.db", TStoreMode::kCreate};
};

TEST_F(DemoBookTest, AThousandSimulationsLeaveNoTraceAndAPlacedOrderIsInTheBookAsInMemory) {
  FBook.Import(MARGINDESK_SOURCE_DIR "/resources/demo");
  const TBookTexts before = ExportedTexts(FBook);
  std::string orderID;
  {
    TReferenceHost host(FBook, Options());
    for (int i = 0; i < 1000; ++i) {
      const double lots = 1 + i % 7;
      Simulate(
          host, "10012",
          {OrderFor("10012", "HGIF7", i % 2, 25168, lots), OrderFor("10012", "CGDG7", kSideSell, 86.41, 1)},
          {i % 3 != 0, true});
      host.Loop().RunOnce();
    }
    EXPECT_EQ(ExportedTexts(FBook), before);

    for (const bool rests : {false, true}) {
      const auto order = ClientOrderOf(OrderFor("10012", "HGIF7", kSideSell, rests ? 25500 : 25168, 1));
      EXPECT_EQ(host.Engine().Place(*order, kActionOrder), "");
      orderID = order->GetOrderID();
    }
    EXPECT_NE(ExportedTexts(FBook), before);
    EXPECT_TRUE(FBook.Check().empty());
    const THostData stored(ReadHostContents(FBook));
    EXPECT_EQ(FiguresOf(stored, TCode("10012")), FiguresOf(host.Data(), TCode("10012")));
    EXPECT_EQ(*stored.FindOrder(orderID), *host.Data().FindOrder(orderID));
  }
  TReferenceHost restarted(FBook, Options());
  const auto order = ClientOrderOf(OrderFor("10012", "HGIF7", kSideSell, 25500, 1));
  EXPECT_EQ(restarted.Engine().Place(*order, kActionOrder), "");
  EXPECT_GT(order->GetOrderID(), orderID);
}

TEST_F(DemoBookTest, TwoProgramsOnOneBookLoseNoOrderOfEachOther) {
  FBook.Import(MARGINDESK_SOURCE_DIR "/resources/demo");
  TReferenceHost host(FBook, Options());
  const auto rest = [] { return ClientOrderOf(OrderFor("10012", "HGIF7", kSideSell, 25500, 1)); };
  TBook otherBook(FFolder.Path() / "book.db", TStoreMode::kExisting);
  THostData otherData(ReadHostContents(otherBook));
  TBookChange change;
  change.FOrders.push_back(*otherData.GetOrders().front());
  change.FOrders[0].FOrderID = "10000001";
  WriteBookChange(otherBook, change);

  const auto order = rest();
  EXPECT_THAT(host.Engine().Place(*order, kActionOrder), testing::HasSubstr("another program has changed"));
  host.Loop().RunOnce();
  EXPECT_EQ(host.Engine().Place(*order, kActionOrder), "") << "reckoned from the book as it is now";
  EXPECT_EQ(order->GetOrderID(), "10000002");
  ReadHostContents(otherBook);
  EXPECT_EQ(host.Engine().Place(*rest(), kActionOrder), "") << "another program that only reads";
}

}  // namespace
}  // namespace margindesk
