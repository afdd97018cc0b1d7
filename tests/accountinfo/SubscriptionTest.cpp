// What the control asks the host to keep it informed of, and that nothing of it is left behind.
#include "tests/accountinfo/AccountTreeFixture.h"
#include "tests/support/DelegatingAdapters.h"

namespace margindesk {
namespace {

using TLog = std::vector<std::string>;

class TLoggingAccounts : public TDelegatingAccountAdapter {
 public:
  explicit TLoggingAccounts(TLog& log) : FLog(log) {}
  void RegisterMonitorInfoListener(TCode account, THandler handler, const void* owner,
                                   TCode previous) override {
    FLog.push_back("monitor " + account.Text());
    TDelegatingAccountAdapter::RegisterMonitorInfoListener(account, handler, owner, previous);
  }
  void UnregisterMonitorInfoListener(TCode account, const void* owner) override {
    FLog.push_back("no monitor " + account.Text());
    TDelegatingAccountAdapter::UnregisterMonitorInfoListener(account, owner);
  }
  void SubscribeAccountOnlineStatus(TCode account) override { FLog.push_back("online " + account.Text()); }
  void UnsubscribeAccountOnlineStatus(TCode account) override {
    FLog.push_back("no online " + account.Text());
  }

 private:
  TLog& FLog;
};

class TLoggingPositions : public TDelegatingPositionAdapter {
 public:
  explicit TLoggingPositions(TLog& log) : FLog(log) {}
  void RegisterPositionListener(TCode account, THandler handler, const void* owner, TCode previous) override {
    FLog.push_back("positions " + previous.Text() + ">" + account.Text());
    TDelegatingPositionAdapter::RegisterPositionListener(account, handler, owner, previous);
  }
  void RegisterSubAccountPositionListener(TCode master, THandler handler, const void* owner,
                                          TCode previous) override {
    FLog.push_back("subs " + master.Text());
    TDelegatingPositionAdapter::RegisterSubAccountPositionListener(master, handler, owner, previous);
  }
  void UnregisterSubAccountPositionListener(TCode master, const void* owner) override {
    FLog.push_back("no subs " + master.Text());
    TDelegatingPositionAdapter::UnregisterSubAccountPositionListener(master, owner);
  }

 private:
  TLog& FLog;
};

class AccountTreeSubscriptions : public AccountTree {
 protected:
  AccountTreeSubscriptions() {
    AddAccount("M1", "", 1);
    AddAccount("S1", "M1");
    AddAccount("S2", "M1");
    AddAccount("A1");
    for (const char* account : {"M1", "S1", "S2", "A1"}) AddFigures(account, "", {});
    FHost.Publish();
  }

  TLog TakeLog() { return std::exchange(FLog, {}); }

  TLog FLog;
  TLoggingAccounts FAccounts{FLog};
  TLoggingPositions FPositions{FLog};
  TServiceScope<TCustomAccountAdapter> FAccountScope{FAccounts};
  TServiceScope<TCustomPositionAdapter> FPositionScope{FPositions};
};

TEST_F(AccountTreeSubscriptions, FollowTheColumnsAndTheAccountAndNothingElse) {
  TOpenControl control;
  SetColumns(control, "OnlineStatus,MarginClass");
  EXPECT_EQ(TakeLog(), TLog{});  // without an account there is nothing to follow

  control.SetAccount(Code("M1"));
  EXPECT_EQ(TakeLog(), (TLog{"positions >M1", "online M1", "monitor M1"}));
  control.SetAccount(Code("M1"));
  EXPECT_EQ(TakeLog(), TLog{});

  control.SetAccount(Code("A1"));
  EXPECT_EQ(TakeLog(), (TLog{"positions M1>A1", "no online M1", "online A1", "no monitor M1", "monitor A1"}));

  SetColumns(control, "DayTradeStatus");  // still needs the monitor
  EXPECT_EQ(TakeLog(), (TLog{"no online A1"}));
  SetColumns(control, "CashBalance");
  EXPECT_EQ(TakeLog(), (TLog{"no monitor A1"}));
  SetColumns(control, "MarginClass,OnlineStatus");
  EXPECT_EQ(TakeLog(), (TLog{"online A1", "monitor A1"}));

  control.SetAccount(TCode());
  EXPECT_EQ(TakeLog(), (TLog{"positions A1>", "no online A1", "no monitor A1"}));
}

TEST_F(AccountTreeSubscriptions, SubAccountsAreFollowedWhileAggregatedAndRenewedForTheSameAccount) {
  TOpenControl control;
  control.SetAccount(Code("M1"));
  TakeLog();
  control.SetAggregate();
  EXPECT_EQ(TakeLog(), (TLog{"subs M1"}));
  control.SetAccount(Code("M1"));
  EXPECT_EQ(TakeLog(), (TLog{"subs M1"}));
  control.SetAccount(Code("A1"));
  EXPECT_EQ(TakeLog(), (TLog{"positions M1>A1", "no subs M1", "subs A1"}));
  control.SetAggregate();
  EXPECT_EQ(TakeLog(), (TLog{"no subs A1"}));
}

TEST_F(AccountTreeSubscriptions, ASubAccountsPositionsRefreshTheViewOnlyWhileAggregated) {
  TOpenControl control;
  control.SetAccount(Code("M1"));
  control.FChanges = 0;
  AddPosition("S1", "AAA", 5);
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 0);
  control.SetAggregate();
  control.FChanges = 0;
  AddPosition("S2", "AAA", 5);
  FHost.Publish();
  EXPECT_GE(control.FChanges, 1);
  control.FChanges = 0;
  AddPosition("A1", "UUU", 5);
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 0);

  // A price reaches the views of its holders and no other.
  AddProduct("AAA", "HKX", "HKD", 11);
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 1);
  AddProduct("UUU", "USX", "USD", 11);
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 1);
}

TEST_F(AccountTreeSubscriptions, APositionUpdateWithoutAnAccountAlwaysTellsTheView) {
  TOpenControl control;
  control.PositionUpdate(nullptr, nullptr);
  EXPECT_EQ(control.FChanges, 1);
  control.SetAccount(Code("A1"));
  control.FChanges = 0;
  control.PositionUpdate(nullptr, nullptr);
  EXPECT_EQ(control.FChanges, 0);
}

TEST_F(AccountTreeSubscriptions, ANewSubAccountIsTakenIntoTheGroup) {
  TOpenControl control;
  control.SetAccount(Code("M1"));
  control.SetAggregate();
  AddAccount("S3", "M1");
  AddFigures("S3", "", {});
  const TAccountMap loaded{{Code("S3"), FHost.Data().FindAccount(Code("S3"))}};
  EXPECT_TRUE(control.CheckNeedUpdateSubAccountList(loaded));
  EXPECT_TRUE(control.GetSubAccounts().contains(Code("S3")));
  const TAccountMap other{{Code("A1"), FHost.Data().FindAccount(Code("A1"))}};
  EXPECT_FALSE(control.CheckNeedUpdateSubAccountList(other));
  FHost.Publish();
  control.FChanges = 0;
  AddFigures("S3", "", {{TFigure::kCashBalance, 1}});  // a sub-account alone
  FHost.Publish();
  EXPECT_EQ(control.FChanges, 1);
  AddAccount("S3");  // leaves the group
  FHost.Publish();
  EXPECT_FALSE(control.GetSubAccounts().contains(Code("S3")));
  control.SetAggregate();
  AddAccount("S3", "M1");
  EXPECT_FALSE(control.CheckNeedUpdateSubAccountList(loaded));  // not while it stands alone
}

TEST_F(AccountTreeSubscriptions, NothingIsRegisteredAnyMoreOnceTheControlIsGone) {
  {
    TOpenControl control;
    SetColumns(control, "OnlineStatus,MarginClass,Status");
    control.SetAccount(Code("M1"));
    control.SetAggregate();
    EXPECT_GT(FHost.CountRegistrationsOf(&control), 0U);
    TakeLog();
  }
  EXPECT_EQ(TakeLog(), (TLog{"no subs M1", "no online M1", "no monitor M1"}));
  EXPECT_EQ(FHost.CountRegistrations(), 0U);
}

}  // namespace
}  // namespace margindesk
