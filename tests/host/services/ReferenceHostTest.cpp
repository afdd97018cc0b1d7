#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/AccountAdapter.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

TEST(ReferenceHostTest, AHostThatGoesOrCannotStartPutsBackTheOneBefore) {
  {
    TTestBook book;
    book.Account("outer");
    const TTestHost outer(book);
    {
      const TTestHost inner;
      EXPECT_EQ(TCustomAccountAdapter::GetInstance().GetAccount(TCode("outer")), nullptr);
    }
    TReferenceHostOptions options;
    options.FLanguageDirectory = "no such folder";
    EXPECT_THROW(TReferenceHost(THostContents(), options), TLanguageFileError);
    EXPECT_NE(TCustomAccountAdapter::GetInstance().GetAccount(TCode("outer")), nullptr);
  }
  EXPECT_FALSE(TCustomAccountAdapter::HasInstance());
  EXPECT_FALSE(THostFunctions::HasInstance());
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
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(handler, &owner);
  TCustomTimerControl::GetInstance().AddTimerHandler(&owner, handler);
  TCustomGlobalChannelManager::GetInstance().AddChannelHandler(104, handler, &owner);
  accounts.AddAccountInfoLoadHandler(handler, &owner);
  accounts.RegisterMonitorInfoListener(account, handler, &owner);
  accounts.RegisterSimulateListener(account, handler, &owner, TCode());
  positions.AddPositionMarketDataHandler(handler, &owner);
  positions.RegisterPositionListener(account, handler, &owner, TCode());
  positions.RegisterSubAccountPositionListener(account, handler, &owner);
  currencies.AddCurrencyListHandler(handler, &owner);
  currencies.AddCurrencyRatioHandler(handler, &owner);
  currencies.AddMultiCurrencyInfoHandler(handler, &owner);
  TCustomSubscribeAdapter::GetInstance().AddSymbolHandler(item, handler, &owner);
  EXPECT_EQ(host.CountRegistrations(), 13U);
  EXPECT_EQ(host.CountRegistrationsOf(&owner), 13U);
  EXPECT_EQ(host.CountRegistrationsOf(&other), 0U);
  const auto subscriptions = host.GetSubscriptions();
  EXPECT_EQ(subscriptions.size(), 13U);
  EXPECT_EQ(subscriptions[1], (TSubscriptionCount{"channels", "104", 1}));
  EXPECT_THAT(subscriptions, testing::Contains(TSubscriptionCount{"positions", "A1", 1}));

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

TEST(OrderTest, ARemarkSaysWhatIsSpecialAboutAnOrderOverTheCounter) {
  TTestBook book;
  for (const auto& [symbol, type] : {std::pair("fund", 10), {"bond", 6}, {"listed bond", 6}}) {
    TProductFacts& facts = book.Product(symbol, "HKD", 10);
    facts.FProductType = type;
    facts.FOverTheCounter = facts.FSymbol != TCode("listed bond");
  }
  const TTestHost host(book);
  auto& adapter = TCustomOrderAdapter::GetInstance();
  const auto order = adapter.NewClientOrder();
  for (const auto& [symbol, side, remark] : {std::tuple("fund", 0, "Fund Subscription"),
                                             {"fund", 1, "Fund Redemption"},
                                             {"bond", 1, "OTC Bond"},
                                             {"listed bond", 0, ""}}) {
    order->SetSymbol(TCode(symbol));
    order->SetSide(side);
    EXPECT_EQ(adapter.GetRemarkText(*order), remark) << symbol;
  }
}

}  // namespace
}  // namespace margindesk
