#include "terminal/cli/SimulatorDriver.h"

#include <chrono>

#include "controls/AccountEdit.h"
#include "controls/Button.h"
#include "host/book/BookError.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/SubscribeAdapter.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/session/CliError.h"

namespace margindesk {

namespace {

// Columns of the order grid.
constexpr std::int32_t kColumnSymbol = 0;
constexpr std::int32_t kColumnPrice = 3;
constexpr std::int32_t kColumnQuantity = 4;
constexpr std::int32_t kColumnStatus = 5;
constexpr std::int32_t kColumnSide = 11;
constexpr std::int32_t kColumnOpenClose = 12;
constexpr std::int32_t kColumnInvalid = 25;
constexpr std::int32_t kColumnPrincipal = 46;

// What a person picks for a code of an order; the text is looked up in the language shown.
struct TChoice {
  std::int32_t FColumn;
  std::int32_t FCode;
  const char* FResourceKey;
};

constexpr TChoice kChoices[] = {
    {kColumnSide, kSideBuy, "Res_Side_Buy"},
    {kColumnSide, kSideSell, "Res_Side_Sell"},
    {kColumnOpenClose, kOpenCloseOpen, "Res_OrderOpen"},
    {kColumnOpenClose, kOpenCloseClose, "Res_OrderClose"},
    {kColumnPrincipal, kPrincipalClient, "Res_Principal_C"},
    {kColumnPrincipal, kPrincipalHouse, "Res_Principal_H"},
    {kColumnPrincipal, kPrincipalRT, "Res_Principal_RT"},
    {kColumnStatus, kStatusPending, "Res_Status_Pend"},
    {kColumnStatus, kStatusCompleted, "Res_Status_Comp"},
};

TVariant MakeChoice(std::int32_t column, std::int32_t code) {
  for (const TChoice& choice : kChoices) {
    if (choice.FColumn == column && choice.FCode == code) {
      return TVariant::Text(GetResourceText(choice.FResourceKey));
    }
  }
  return TVariant::Null();
}

// The price as the grid shows it to its editor.
double GetShownPrice(const std::string& symbol, double price) {
  const TCustomSubItem* item =
      TCustomSubscribeAdapter::GetInstance().GetSubItem(TCode(symbol), kReferenceService);
  const bool multiplied = item != nullptr && item->HasField(kItemPriceMultiplier);
  return multiplied ? price * item->GetFieldFloat(kItemPriceMultiplier) : price;
}

}  // namespace

template <class T>
T& TSimulatorDriver::Find(const char* name) const {
  auto* control = dynamic_cast<T*>(FView.Frame().FindComponent(name));
  if (control == nullptr) throw TCliError("the simulator view has no " + QuotedForMessage(name));
  return *control;
}

TSimulatorDriver::TSimulatorDriver(TSession& session, TCode account)
    : FHost(session.Host()),
      FView(session, "TIMarginSimulator", std::nullopt),
      FGrid(Find<TGridTableView>("OrderGridView")) {
  FHost.MessageBox().SetSink([this](std::string_view text) { FMessages.emplace_back(text); });
  auto& box = Find<TAccountEdit>("edtAccount");
  box.SetText(account.Text());
  box.Exit();
  Settle();
}

TSimulatorDriver::~TSimulatorDriver() {
  FHost.MessageBox().SetSink([](std::string_view) {});
}

void TSimulatorDriver::Settle() {
  constexpr auto kWait = std::chrono::milliseconds(50);
  while (FHost.Loop().RunOnce(FHost.Files().GetPendingCount() > 0 ? kWait : kWait.zero()) ||
         FHost.Files().GetPendingCount() > 0) {
  }
}

void TSimulatorDriver::TypeCell(std::int32_t record, std::int32_t column, TVariant value) {
  const std::string refusal = FGrid.EditCell(record, column, std::move(value));
  if (refusal.empty()) return;
  const TGridColumn* const shown = FGrid.FindColumn(column);
  throw TCliError("row " + std::to_string(record + 1) + ", " + (shown == nullptr ? "" : shown->FCaption) +
                  ": " + refusal);
}

void TSimulatorDriver::TypeOrder(const TFileOrder& order) {
  const std::int32_t record = FGrid.GetRecordCount() - 1;  // the blank row
  TypeCell(record, kColumnSymbol, TVariant::Text(order.FSymbol));
  Settle();  // the symbol's facts may be on their way
  TypeCell(record, kColumnSide, MakeChoice(kColumnSide, order.FSide));
  if (order.FPrice) {
    const std::string symbol = FGrid.GetValue(record, kColumnSymbol).AsText();
    TypeCell(record, kColumnPrice, TVariant::Float(GetShownPrice(symbol, *order.FPrice)));
  }
  TypeCell(record, kColumnQuantity, TVariant::Float(order.FQuantity));
  if (order.FOpenClose != 0) {
    TypeCell(record, kColumnOpenClose, MakeChoice(kColumnOpenClose, order.FOpenClose));
  }
  if (order.FPrincipal != 0) {
    TypeCell(record, kColumnPrincipal, MakeChoice(kColumnPrincipal, order.FPrincipal));
  }
  TypeCell(record, kColumnStatus, MakeChoice(kColumnStatus, order.FStatus));
}

void TSimulatorDriver::TypeOrders(const std::vector<TFileOrder>& orders) {
  for (const TFileOrder& order : orders) TypeOrder(order);
}

std::optional<TOrderRefusal> TSimulatorDriver::Click(const char* button) {
  FMessages.clear();
  Find<TButton>(button).Click();
  Settle();
  if (FMessages.empty()) return std::nullopt;
  TOrderRefusal refusal{std::nullopt, MakeOneLine(FMessages.front())};
  for (std::int32_t record = 0; record < FGrid.GetRecordCount(); ++record) {
    if (FGrid.GetValue(record, kColumnInvalid).AsFloatOr(0) == 0) continue;
    refusal.FOrder = static_cast<std::size_t>(record);
    break;
  }
  return refusal;
}

std::optional<TOrderRefusal> TSimulatorDriver::Simulate() { return Click("btnSimulate"); }

std::optional<TOrderRefusal> TSimulatorDriver::Submit(bool confirmed) {
  FHost.Confirmation().SetFront([confirmed](const TBatchQuestion& /*question*/) { return confirmed; });
  auto refusal = Click("btnSubmit");
  FHost.Confirmation().SetFront({});
  return refusal;
}

}  // namespace margindesk
