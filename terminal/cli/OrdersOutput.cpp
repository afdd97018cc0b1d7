#include "terminal/cli/OrdersOutput.h"

#include <algorithm>
#include <string>

#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/Formatter.h"
#include "model/contract/LanguageManager.h"
#include "terminal/cli/CsvOutput.h"
#include "terminal/cli/OrdersFile.h"
#include "terminal/cli/TextTable.h"

namespace margindesk {

namespace {

struct TStateWord {
  TOrderState FState;
  std::string_view FWord;
  std::string_view FCaptionKey;
};

constexpr TStateWord kStates[] = {
    {TOrderState::kResting, "resting", "OrderState_Resting"},
    {TOrderState::kFilled, "filled", "OrderState_Filled"},
    {TOrderState::kCancelled, "cancelled", "OrderState_Cancelled"},
};

const TStateWord& FindState(TOrderState state) {
  return *std::ranges::find(kStates, state, &TStateWord::FState);
}

const std::string& HostText(std::string_view key) {
  return TCustomLanguageManager::GetInstance().GetLanguageText("Host", key);
}

std::string FormatQuantity(const TOrderFacts& order, double quantity) {
  return TCustomFormatter::GetInstance().FormatValue(quantity, kFormatQuantity, order.FSymbol, true);
}

// A column of a list of orders: its name and value for programs, its caption and text for people.
struct TOrderColumn {
  std::string_view FName;
  const std::string& (*FCaption)();
  bool FFigure;
  TJson (*FRead)(const TOrderFacts& order);
  std::string (*FText)(const TOrderFacts& order);
};

constexpr TOrderColumn kColumns[] = {
    {"order", []() -> const std::string& { return HostText("OrderList_Order"); }, false,
     [](const TOrderFacts& order) { return TJson(order.FOrderID); },
     [](const TOrderFacts& order) { return order.FOrderID; }},
    {"symbol", []() -> const std::string& { return GetResourceText("Res_Symbol"); }, false,
     [](const TOrderFacts& order) { return TJson(order.FSymbol.Text()); },
     [](const TOrderFacts& order) { return order.FSymbol.Text(); }},
    {"side", []() -> const std::string& { return GetResourceText("Res_Side"); }, false,
     [](const TOrderFacts& order) { return TJson(GetSideWord(order.FSide)); },
     [](const TOrderFacts& order) -> std::string {
       return GetResourceText(order.FSide == kSideSell ? "Res_Side_Sell" : "Res_Side_Buy");
     }},
    {"price", []() -> const std::string& { return GetResourceText("Res_OrderPrice"); }, true,
     [](const TOrderFacts& order) { return order.FMarket ? TJson() : TJson(order.FPrice); },
     [](const TOrderFacts& order) {
       return order.FMarket ? HostText("OrderList_Market")
                            : TCustomFormatter::GetInstance().FormatValue(order.FPrice, kFormatPrice,
                                                                          order.FSymbol, true);
     }},
    {"quantity", []() -> const std::string& { return GetResourceText("Res_OrderQty"); }, true,
     [](const TOrderFacts& order) { return TJson(order.FQuantity); },
     [](const TOrderFacts& order) { return FormatQuantity(order, order.FQuantity); }},
    {"filled", []() -> const std::string& { return HostText("OrderList_Filled"); }, true,
     [](const TOrderFacts& order) { return TJson(order.FFilledQuantity); },
     [](const TOrderFacts& order) { return FormatQuantity(order, order.FFilledQuantity); }},
    {"state", []() -> const std::string& { return HostText("OrderList_State"); }, false,
     [](const TOrderFacts& order) { return TJson(GetOrderStateWord(order.FState)); },
     [](const TOrderFacts& order) -> std::string { return HostText(FindState(order.FState).FCaptionKey); }},
    {"entered", []() -> const std::string& { return HostText("OrderList_Entered"); }, false,
     [](const TOrderFacts& order) { return TJson(order.FEntered); },
     [](const TOrderFacts& order) { return order.FEntered; }},
};

}  // namespace

std::string_view GetOrderStateWord(TOrderState state) { return FindState(state).FWord; }

void WriteOrdersText(std::ostream& out, const std::vector<TOrderFacts>& orders, const TTerminal& terminal) {
  TTextTable table;
  for (const TOrderColumn& column : kColumns) table.AddColumn(column.FCaption(), column.FFigure);
  for (const TOrderFacts& order : orders) {
    std::vector<std::string> texts;
    for (const TOrderColumn& column : kColumns) texts.push_back(column.FText(order));
    table.AddRow(texts);
  }
  table.Write(out, terminal.FColour, terminal.FWidth);
}

TJson MakeOrdersJson(const std::vector<TOrderFacts>& orders) {
  TJson array = TJson::array();
  for (const TOrderFacts& order : orders) {
    TJson& object = array.emplace_back(TJson::object());
    for (const TOrderColumn& column : kColumns) object[std::string(column.FName)] = column.FRead(order);
  }
  return array;
}

void WriteOrdersCsv(std::ostream& out, const std::vector<TOrderFacts>& orders) {
  std::vector<std::string_view> names;
  for (const TOrderColumn& column : kColumns) names.push_back(column.FName);
  WriteCsvLine(out, names);
  for (const TOrderFacts& order : orders) {
    std::vector<std::string> texts;
    for (const TOrderColumn& column : kColumns) {
      const TJson value = column.FRead(order);
      texts.push_back(value.is_string()   ? value.get<std::string>()
                      : value.is_number() ? FloatToText(value.get<double>())
                                          : std::string());
    }
    WriteCsvLine(out, std::vector<std::string_view>(texts.begin(), texts.end()));
  }
}

}  // namespace margindesk
