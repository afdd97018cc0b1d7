#pragma once

#include <deque>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "accountinfo/data/AccountInfoDataControl.h"
#include "host/services/HostContents.h"
#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "tests/support/TestHost.h"

namespace margindesk {

inline TCode Code(std::string_view text) { return TCode(text); }

// The data control with its guarded operations open to a test, and a count of how often it told its view.
class TOpenControl : public TAccountInfoDataControl {
 public:
  explicit TOpenControl(TComponent* owner = nullptr) : TAccountInfoDataControl(owner) {
    SetOnChange(MakeDataChangeEvent<&TOpenControl::Count>(this));
  }

  using TAccountInfoDataControl::CheckNeedUpdateSubAccountList;
  using TAccountInfoDataControl::GetAccountCurrencyData;
  using TAccountInfoDataControl::GetAccountCurrencyDisplayData;
  using TAccountInfoDataControl::GetAccountTotalDataDisplayValue;
  using TAccountInfoDataControl::GetAccountTotalDataValue;
  using TAccountInfoDataControl::GetAggregatedAccountCurrencyData;
  using TAccountInfoDataControl::GetDayTradeStatus;
  using TAccountInfoDataControl::GetMarginableValue;
  using TAccountInfoDataControl::GetMarginLevel;
  using TAccountInfoDataControl::GetPeriod;
  using TAccountInfoDataControl::GetResourceHeader;
  using TAccountInfoDataControl::GetTotalCompBuy;
  using TAccountInfoDataControl::GetTotalCompSell;
  using TAccountInfoDataControl::GetTotalMarketValue;
  using TAccountInfoDataControl::GetTotalPL;
  using TAccountInfoDataControl::GetTotalRelizePL;
  using TAccountInfoDataControl::GetTotalUnrelizePL;
  using TAccountInfoDataControl::PositionUpdate;
  using TAccountInfoDataControl::SetAccount;

  int FChanges = 0;

 private:
  void Count(TBaseDataControl* /*sender*/) { ++FChanges; }
};

// A host with HKD (base), USD at 7.8 and CNY at 1.1, one product each (AAA, UUU, CCC), and short ways to
// write a book.
class AccountTree : public testing::Test {
 protected:
  using TFigureValue = std::pair<TFigure, double>;

  AccountTree() {
    THostData& data = FHost.Data();
    data.SetCurrency({Code("HKD"), 1, false, true});
    data.SetCurrency({Code("USD"), 7.8, false, false});
    data.SetCurrency({Code("CNY"), 1.1, false, false});
    data.SetExchange({Code("HKX"), false, true, 1});
    data.SetExchange({Code("USX"), false, false, 2});
    data.SetExchange({Code("CNX"), true, true, std::nullopt});
    AddProduct("AAA", "HKX", "HKD", 10);
    AddProduct("UUU", "USX", "USD", 20);
    AddProduct("CCC", "CNX", "CNY", 30);
  }

  void AddProduct(std::string_view symbol, std::string_view exchange, std::string_view currency,
                  double last) {
    TProductFacts facts;
    facts.FSymbol = Code(symbol);
    facts.FExchange = Code(exchange);
    facts.FCurrency = Code(currency);
    facts.FProductType = 1;
    FHost.Data().SetProduct(facts);
    TPriceFacts prices;
    prices.FLast = last;
    FHost.Data().SetPrice(facts.FSymbol, prices);
  }

  TAccountFacts& AddAccount(std::string_view account, std::string_view master = {},
                            std::optional<std::int32_t> masterType = std::nullopt) {
    TAccountFacts& facts = FAccounts.emplace_back();
    facts.FAccount = Code(account);
    facts.FMaster = Code(master);
    facts.FMasterType = masterType;
    FHost.Data().SetAccount(facts);
    return facts;
  }

  void AddFigures(std::string_view account, std::string_view currency,
                  std::initializer_list<TFigureValue> figures, bool separate = false) {
    FHost.Data().SetFigures(MakeFigures(account, currency, figures, separate));
  }

  void AddConsolidated(std::string_view account, std::string_view currency,
                       std::initializer_list<TFigureValue> figures) {
    FHost.Data().SetConsolidated(MakeFigures(account, currency, figures, false));
  }

  // A position of `quantity` with bought and sold amounts 100 and 40, profit and loss 7 + 5, 2 of it
  // realised.
  TPositionFacts MakePosition(std::string_view account, std::string_view symbol, double quantity) {
    TPositionFacts facts;
    facts.FAccount = Code(account);
    facts.FSymbol = Code(symbol);
    facts.FHoldingQuantity = quantity;
    facts.FCompletedBuyAmount = 100;
    facts.FCompletedSellAmount = 40;
    facts.FPLFirstPart = 7;
    facts.FPLSecondPart = 5;
    facts.FRealizedPL = 2;
    return facts;
  }
  void AddPosition(std::string_view account, std::string_view symbol, double quantity) {
    FHost.Data().UpsertPosition(MakePosition(account, symbol, quantity));
  }

  const TCustomAccountData* DataOf(std::string_view account, std::string_view currency = {}) {
    const auto* record = FHost.Data().FindAccount(Code(account));
    return record == nullptr ? nullptr : record->GetCurrencyData(Code(currency));
  }

  void SetConfig(std::string_view key, std::string_view value) {
    auto& config = TCustomConfigManager::GetInstance();
    config.WriteString(config.GetUserSection(), key, value, true);
  }

  // Gives the control the columns of a key list, which this fixture keeps.
  void SetColumns(TAccountInfoDataControl& control, std::string_view keys) {
    auto& columns = FColumnLists.emplace_back();
    AppendCatalogueColumns(keys, columns);
    control.SetColumnList(columns);
  }

  // The rows of the tree, a line each: two blanks a level, the field or the currency, and the text of the
  // value cell.
  static std::string Print(TAccountInfoDataControl& control) {
    std::string text;
    Print(control, nullptr, text);
    return text;
  }

  static std::string Text(std::string_view resourceKey) { return GetResourceText(resourceKey); }

  TTestHost FHost;

 private:
  static TFigureFacts MakeFigures(std::string_view account, std::string_view currency,
                                  std::initializer_list<TFigureValue> figures, bool separate) {
    TFigureFacts facts;
    facts.FAccount = Code(account);
    facts.FCurrency = Code(currency);
    facts.FSeparateRow = separate;
    for (const auto& [figure, value] : figures) facts.FFigures[static_cast<std::size_t>(figure)] = value;
    return facts;
  }

  static void Print(TAccountInfoDataControl& control, TDataNode* parent, std::string& text) {
    for (std::int32_t i = 0; i < control.GetChildNodeCount(parent); ++i) {
      TDataNode* node = control.GetChildNode(parent, i);
      text.append(static_cast<std::size_t>(node->GetLevel()) * 2, ' ');
      text += control.GetDisplayValue(node, kCellCaption) + ": " + control.GetDisplayValue(node, kCellValue) +
              "\n";
      Print(control, node, text);
    }
  }

  std::deque<TAccountFacts> FAccounts;
  std::deque<TColumnList> FColumnLists;
};

}  // namespace margindesk
