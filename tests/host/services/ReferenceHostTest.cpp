#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/AccountAdapter.h"
#include "model/contract/Baseview.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ReferenceHostTest, AHostThatGoesPutsBackTheOneBefore) {
  EXPECT_FALSE(TCustomAccountAdapter::HasInstance());
  {
    TTestBook outerBook;
    outerBook.Account("outer");
    const TTestHost outer(outerBook);
    {
      TTestBook innerBook;
      innerBook.Account("inner");
      const TTestHost inner(innerBook);
      EXPECT_NE(TCustomAccountAdapter::GetInstance().GetAccount(TCode("inner")), nullptr);
      EXPECT_EQ(TCustomAccountAdapter::GetInstance().GetAccount(TCode("outer")), nullptr);
    }
    EXPECT_NE(TCustomAccountAdapter::GetInstance().GetAccount(TCode("outer")), nullptr);
  }
  EXPECT_FALSE(TCustomAccountAdapter::HasInstance());
  EXPECT_FALSE(TCustomOrderActionManager::HasInstance());
  EXPECT_FALSE(THostFunctions::HasInstance());
}

TEST(ReferenceHostTest, AHostThatCannotStartLeavesNothingInstalled) {
  TReferenceHostOptions options;
  options.FLanguageDirectory = "no such folder";
  EXPECT_THROW(TReferenceHost(THostContents(), options), TLanguageFileError);
  EXPECT_FALSE(TCustomConfigManager::HasInstance());
}

TEST(ReferenceHostTest, EveryRegistrationIsCountedForItsOwnerUntilItEnds) {
  TTestHost host;
  const TCode account("A1");
  const int owner = 0, other = 0;
  TRecorder recorder;
  const THandler handler = recorder.Plain();
  TCustomSubItem* item = TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode("5"), "PRCDDS");
  auto& accounts = TCustomAccountAdapter::GetInstance();
  auto& positions = TCustomPositionAdapter::GetInstance();
  auto& currencies = TCustomCurrencyAdapter::GetInstance();
  EXPECT_EQ(host.CountRegistrations(), 0U) << "the host's own do not count";
  std::size_t expected = 0;
  const auto expectOneMore = [&] {
    ++expected;
    EXPECT_EQ(host.CountRegistrations(), expected);
    EXPECT_EQ(host.CountRegistrationsOf(&owner), expected);
  };
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(handler, &owner);
  expectOneMore();
  TCustomTimerControl::GetInstance().AddTimerHandler(&owner, handler);
  expectOneMore();
  TCustomGlobalChannelManager::GetInstance().AddChannelHandler(104, handler, &owner);
  expectOneMore();
  accounts.AddAccountInfoLoadHandler(handler, &owner);
  expectOneMore();
  accounts.RegisterMonitorInfoListener(account, handler, &owner);
  expectOneMore();
  accounts.RegisterSimulateListener(account, handler, &owner, TCode());
  expectOneMore();
  positions.AddPositionMarketDataHandler(handler, &owner);
  expectOneMore();
  positions.RegisterPositionListener(account, handler, &owner, TCode());
  expectOneMore();
  positions.RegisterSubAccountPositionListener(account, handler, &owner);
  expectOneMore();
  currencies.AddCurrencyListHandler(handler, &owner);
  expectOneMore();
  currencies.AddCurrencyRatioHandler(handler, &owner);
  expectOneMore();
  currencies.AddMultiCurrencyInfoHandler(handler, &owner);
  expectOneMore();
  TCustomSubscribeAdapter::GetInstance().AddSymbolHandler(item, handler, &owner);
  expectOneMore();
  EXPECT_EQ(host.CountRegistrationsOf(&other), 0U);

  TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(&owner);
  TCustomTimerControl::GetInstance().RemoveTimerHandler(&owner);
  TCustomGlobalChannelManager::GetInstance().RemoveChannelHandler(104, &owner);
  accounts.RemoveAccountInfoLoadHandler(&owner);
  accounts.UnregisterMonitorInfoListener(account, &owner);
  accounts.RegisterSimulateListener(TCode(), handler, &owner, account);
  positions.RemovePositionMarketDataHandler(&owner);
  positions.UnregisterPositionListener(account, &owner);
  positions.UnregisterSubAccountPositionListener(account, &owner);
  currencies.RemoveCurrencyListHandler(&owner);
  currencies.RemoveCurrencyRatioHandler(&owner);
  currencies.RemoveMultiCurrencyInfoHandler(&owner);
  TCustomSubscribeAdapter::GetInstance().RemoveSymbolHandlers(item, &owner);
  EXPECT_EQ(host.CountRegistrations(), 0U);
}

TEST(ReferenceHostTest, AViewIsOpenedAndHeardByWhatTheFrontRegistered) {
  TTestHost host;
  EXPECT_FALSE(OpenCustomView(nullptr, 602, 0, nullptr, false, false));
  SendViewNotify(nullptr, 1024);
  std::vector<std::int32_t> calls;
  host.Calls().SetViewOpener(
      [&calls](void*, std::int32_t viewID, std::int32_t, const TBaseData*, bool, bool) {
        calls.push_back(viewID);
        return viewID == 602;
      });
  host.Calls().SetViewSink([&calls](TFrame*, std::int32_t code) { calls.push_back(code); });
  EXPECT_TRUE(OpenCustomView(nullptr, 602, 0, nullptr, false, false));
  EXPECT_FALSE(OpenCustomView(nullptr, 620, 0, nullptr, false, false));
  SendViewNotify(nullptr, 1026);
  EXPECT_THAT(calls, ElementsAre(602, 620, 1026));
}

TEST(OrderTest, AnOrderKeepsWhatWasSetAndACopyIsItsOwn) {
  const TTestHost host;
  auto& adapter = TCustomOrderAdapter::GetInstance();
  const auto order = adapter.NewClientOrder();
  order->SetAccount(TCode("A1"));
  order->SetSymbol(TCode("700"));
  order->SetQuantity(200);
  order->SetPrice(400.2);
  order->SetSide(1);
  order->SetStatus(3);
  const auto copy = adapter.NewClientOrder();
  copy->Assign(*order);
  order->Reset();
  EXPECT_TRUE(order->GetAccount().IsEmpty());
  EXPECT_EQ(order->GetQuantity(), 0);
  EXPECT_EQ(adapter.GetSideText(*order), "Buy");
  EXPECT_EQ(adapter.GetStatusText(*order), "");
  EXPECT_EQ(copy->GetAccount(), TCode("A1"));
  EXPECT_EQ(copy->GetSymbol(), TCode("700"));
  EXPECT_EQ(copy->GetQuantity(), 200);
  EXPECT_EQ(copy->GetPrice(), 400.2);
  EXPECT_EQ(adapter.GetSideText(*copy), "Sell");
  EXPECT_EQ(adapter.GetStatusText(*copy), "Completed");
  copy->SetStatus(1);
  EXPECT_EQ(adapter.GetStatusText(*copy), "Pending");
  EXPECT_EQ(copy->GetOrderID(), "");
}

TEST(OrderTest, ARemarkSaysWhatIsSpecialAboutAnOrderOverTheCounter) {
  TTestBook book;
  book.Product("fund", "HKD", 10).Type(10).OverTheCounter();
  book.Product("bond", "HKD", 99).Type(6).OverTheCounter(1000, 1000);
  book.Product("listed bond", "HKD", 99).Type(6);
  const TTestHost host(book);
  auto& adapter = TCustomOrderAdapter::GetInstance();
  const auto remark = [&adapter](std::string_view symbol, std::int32_t side) {
    const auto order = adapter.NewClientOrder();
    order->SetSymbol(TCode(symbol));
    order->SetSide(side);
    return adapter.GetRemarkText(*order);
  };
  EXPECT_EQ(remark("fund", 0), "Fund Subscription");
  EXPECT_EQ(remark("fund", 1), "Fund Redemption");
  EXPECT_EQ(remark("bond", 1), "OTC Bond");
  EXPECT_EQ(remark("listed bond", 0), "");
  EXPECT_EQ(remark("unknown", 0), "");
}

TEST(OrderTest, NoOrderActionIsTakenAndTheUserIsToldSo) {
  const TTestHost host;
  auto& manager = TCustomOrderActionManager::GetInstance();
  const auto order = TCustomOrderAdapter::GetInstance().NewClientOrder();
  EXPECT_FALSE(manager.CheckOrderAction(*order, 1, false));
  EXPECT_THAT(host.Messages(), IsEmpty());
  EXPECT_FALSE(manager.CheckOrderAction(*order, 1, true));
  EXPECT_FALSE(manager.TakeOrderAction(nullptr, *order, 1, false));
  EXPECT_THAT(host.Messages(),
              ElementsAre("This terminal does not take orders.", "This terminal does not take orders."));
  EXPECT_EQ(order->GetOrderID(), "");
}

}  // namespace
}  // namespace margindesk
