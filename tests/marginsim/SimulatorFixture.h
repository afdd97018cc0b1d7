#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/services/ClientOrderRecord.h"
#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/OrderRules.h"
#include "model/contract/OrderActionManager.h"
#include "tests/accountinfo/AccountTreeFixture.h"
#include "tests/support/DelegatingAdapters.h"

namespace margindesk {

// The host's accounts with simulations: under a key, an account's figures are those of another account.
class TSimulatingAccounts : public TDelegatingAccountAdapter {
 public:
  const TCustomAccount* GetAccount(TCode account, bool load) const override {
    const TCustomAccount* inner = TDelegatingAccountAdapter::GetAccount(account, load);
    return inner == nullptr ? nullptr : &FAccounts.try_emplace(account, *inner, *this).first->second;
  }
  void RegisterSimulateListener(TCode account, THandler handler, const void* owner, TCode previous) override {
    TDelegatingAccountAdapter::RegisterSimulateListener(account, handler, owner, previous);
    FListeners += previous.Text() + ">" + account.Text() + " ";
  }

  std::map<std::string, std::string> FSimulations;  // "A1/key": the other account
  std::string FListeners;

 private:
  class TAccount : public TDelegatingAccount {
   public:
    TAccount(const TCustomAccount& inner, const TSimulatingAccounts& accounts)
        : TDelegatingAccount(inner), FAccounts(accounts) {}
    const TCustomAccountData* GetSimulatedAccountData(std::string_view key, TCode currency) const override {
      const auto found = FAccounts.FSimulations.find(GetAccountID().Text() + "/" + std::string(key));
      if (found == FAccounts.FSimulations.end()) return nullptr;
      return FAccounts.GetAccount(TCode(found->second), false)->GetCurrencyData(currency);
    }

   private:
    const TSimulatingAccounts& FAccounts;
  };

  mutable std::map<TCode, TAccount, TCodeTextLess> FAccounts;
};

// Takes down what it is asked, and answers as it is told to.
class TOrderActions : public TCustomOrderActionManager {
 public:
  bool CheckOrderAction(const TCustomClientOrder& order, std::int32_t action, bool showMessage) override {
    FAsked += (showMessage ? "check " : "quietly ") + Describe(order, action) + "\n";
    return FAnswer;
  }
  bool TakeOrderAction(const TClientOrderList* orders, TCustomClientOrder& order, std::int32_t action,
                       bool flag) override {
    FAsked += (flag ? "take " : "later ") + Describe(order, action);
    for (std::size_t i = 0; orders != nullptr && i < orders->size(); ++i)
      FAsked += " [" + Describe(*(*orders)[i], 0) + "]";
    FAsked += "\n";
    FKeys.push_back(static_cast<TClientOrderRecord&>(order).GetSimulationKey());
    if (FAnswer) static_cast<TClientOrderRecord&>(order).SetOrderID(FNextID);
    return FAnswer;
  }

  bool FAnswer = true;
  std::string FNextID = "K1";
  std::string FAsked;              // a line each: what, action, account, symbol, side, quantity@price ...
  std::vector<std::string> FKeys;  // the simulation keys that came

 private:
  static std::string Describe(const TCustomClientOrder& clientOrder, std::int32_t action) {
    const auto& order = static_cast<const TClientOrderRecord&>(clientOrder);
    std::string text = IntegerToText(action) + " " + order.GetAccount().Text();
    if (order.GetSymbol().IsEmpty()) return text;
    text += " " + order.GetSymbol().Text() + " " + IntegerToText(order.GetSide()) + " " +
            FloatToText(order.GetQuantity()) + "@" + FloatToText(order.GetPrice());
    for (const std::int32_t code : {order.GetOpenClose(), order.GetPrincipal(), order.GetStatus()})
      text += " " + IntegerToText(code);
    return text + order.GetExtraField("AllCheckFlag");
  }
};

struct TOpenSimulator : TMarginSimulatorDataControl {
  TOpenSimulator() : TMarginSimulatorDataControl(nullptr) {
    SetOnChange(MakeDataChangeEvent<&TOpenSimulator::Count>(this));
  }
  using TMarginSimulatorDataControl::GetAccountCurrencyData;
  using TMarginSimulatorDataControl::GetAccountCurrencyDisplayData;
  using TMarginSimulatorDataControl::GetTotalCompBuy;
  using TMarginSimulatorDataControl::GetTotalCompSell;
  using TMarginSimulatorDataControl::GetTotalMarketValue;
  using TMarginSimulatorDataControl::GetTotalPL;
  using TMarginSimulatorDataControl::GetTotalUnrelizePL;
  using TMarginSimulatorDataControl::SetAccount;

  void Count(TBaseDataControl* /*sender*/) { ++FChanges; }
  void Simulate() {
    SetAccountInfoMode(TAccountInfoMode::aimSimulate);
    SimulateOrder();
  }

  int FChanges = 0;
};

// Account A1 with a position of 3 AAA; SIM holds the figures of a simulation of it. Over the counter, FFF is
// a fund and BBB a bond.
class Simulator : public AccountTree {
 protected:
  Simulator() {
    for (const char* account : {"A1", "A2", "SIM"}) AddAccount(account);
    AddFigures("A1", "", {{TFigure::kCashBalance, 1000}});
    AddFigures("A1", "HKD", {{TFigure::kCashBalance, 220}});
    AddFigures("A1", "USD", {{TFigure::kCashBalance, 100}});
    AddFigures("SIM", "", {{TFigure::kCashBalance, 900}, {TFigure::kOwnTotalPL, 3}});
    AddFigures("SIM", "USD",
               {{TFigure::kCashBalance, 90}, {TFigure::kOwnTotalPL, 8}, {TFigure::kOwnUnrealizedPL, 6}});
    AddPosition("A1", "AAA", 3);
    AddOverTheCounter("FFF", kProductTypeFund);
    AddOverTheCounter("BBB", kProductTypeBond);
    for (const char* symbol : {"FFF", "BBB"}) FindReferenceItem(Code(symbol));
    FHost.RunLoop();
    FControl = std::make_unique<TOpenSimulator>();
    FControl->SetAccount(Code("A1"));
  }

  void AddOverTheCounter(std::string_view symbol, std::int32_t type) {
    TProductFacts facts;
    facts.FSymbol = Code(symbol);
    facts.FExchange = Code("OTC");
    facts.FCurrency = Code("USD");
    facts.FProductType = type;
    facts.FOverTheCounter = true;
    facts.FMinimum = 10000;
    facts.FIncrement = 5000;
    FHost.Data().SetProduct(facts);
  }

  void AddOrder(std::string_view symbol, std::int32_t side, double price, double quantity,
                std::int32_t status = kStatusCompleted) {
    FControl->AddSimulateOrder(Code(symbol), side, price, quantity, 0, 0, status);
  }

  TSimulatingAccounts FAdapter;
  TServiceScope<TCustomAccountAdapter> FAdapterScope{FAdapter};
  TOrderActions FActions;
  TServiceScope<TCustomOrderActionManager> FActionsScope{FActions};
  std::unique_ptr<TOpenSimulator> FControl;
};

}  // namespace margindesk
