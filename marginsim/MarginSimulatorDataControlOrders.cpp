// The simulated orders: checked, simulated and placed by the host.
#include "marginsim/BatchSubmitOrderDataControl.h"
#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/OrderColumns.h"
#include "marginsim/OrderRules.h"
#include "model/ResourceText.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/GlobalChannelManager.h"
#include "model/contract/Icommon.h"
#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/OrderAdapter.h"

namespace margindesk {

namespace {

void ShowResourceText(std::string_view key) {
  TCustomMessageBoxCtrl::GetInstance().ShowMessage(GetResourceText(key));
}

std::int32_t GetOrderAction(TProductType type) {
  if (type == TProductType::ptOTCFund) return kActionOTCFund;
  return type == TProductType::ptOTCBond ? kActionOTCBond : kActionOrder;
}

TMarginSimulateOrder MakeSimulateOrder(TCode symbol, std::int32_t side, double price, double qty,
                                       std::int32_t openClose, std::int32_t principal, std::int32_t status) {
  TMarginSimulateOrder order;
  order.FSymbol = symbol;
  order.FSide = side;
  order.FPrice = price;
  order.FQty = qty;
  order.FOpenClose = openClose;
  order.FPrincipal = principal;
  order.FStatus = status;
  return order;
}

void FillClientOrder(TCustomClientOrder& clientOrder, TCode account, const TMarginSimulateOrder& order) {
  clientOrder.SetAccount(account);
  clientOrder.SetSymbol(order.FSymbol);
  clientOrder.SetSide(order.FSide);
  clientOrder.SetPrice(order.FPrice);
  clientOrder.SetQuantity(order.FQty);
  clientOrder.SetOpenClose(order.FOpenClose);
  clientOrder.SetPrincipal(order.FPrincipal);
  clientOrder.SetStatus(order.FStatus);
}

// The batch list passes to the host with the message.
bool ConfirmOrders(const TClientOrderList& orders) {
  auto batch = std::make_unique<TCustomBatchSubmitOrderDataControl>(nullptr);
  batch->InitData(orders);
  TOrderTakeActionRecord record;
  record.FDataControl = batch.release();
  record.FAction = kActionSimulate;
  record.FViewID = kViewMarginSimulator;
  TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageBatchConfirmation, &record);
  return record.FResult;
}

}  // namespace

TCustomClientOrder& TMarginSimulatorDataControl::GetCarrierOrder() {
  if (!FMyOrder) FMyOrder = TCustomOrderAdapter::GetInstance().NewClientOrder();
  FMyOrder->Reset();
  return *FMyOrder;
}

void TMarginSimulatorDataControl::AddSimulateOrder(TCode symbol, std::int32_t side, double price, double qty,
                                                   std::int32_t openClose, std::int32_t principal,
                                                   std::int32_t status) {
  FSimulateOrderList.push_back(std::make_unique<TMarginSimulateOrder>(
      MakeSimulateOrder(symbol, side, price, qty, openClose, principal, status)));
}

bool TMarginSimulatorDataControl::CheckOrderValidation(TCode symbol, std::int32_t side, double price,
                                                       double qty, std::int32_t openClose,
                                                       std::int32_t principal, std::int32_t status) {
  TCustomClientOrder& carrier = GetCarrierOrder();
  FillClientOrder(carrier, FAccount,
                  MakeSimulateOrder(symbol, side, price, qty, openClose, principal, status));
  const std::int32_t action = GetOrderAction(CheckProductType(symbol));
  return TCustomOrderActionManager::GetInstance().CheckOrderAction(carrier, action, true);
}

TProductType TMarginSimulatorDataControl::CheckProductType(TCode symbol) { return ClassifyProduct(symbol); }

void TMarginSimulatorDataControl::PrepareOrder() {
  ClearClientOrder();
  auto& adapter = TCustomOrderAdapter::GetInstance();
  for (const auto& order : FSimulateOrderList) {
    FClientOrderList.push_back(adapter.NewClientOrder());
    FillClientOrder(*FClientOrderList.back(), FAccount, *order);
  }
}

void TMarginSimulatorDataControl::SimulateOrder() {
  if (FSimulateOrderList.empty()) {
    ShowResourceText("Res_NoOrderSimulate");
    return;
  }
  PrepareOrder();
  TCustomClientOrder& carrier = GetCarrierOrder();
  carrier.SetAccount(FAccount);
  carrier.SetSimulationKey(CreateNewGUID());
  const std::weak_ptr<const bool> life = FLife;
  const bool taken = TCustomOrderActionManager::GetInstance().TakeOrderAction(&FClientOrderList, carrier,
                                                                              kActionSimulate, true);
  if (life.expired()) return;  // the view may have closed under the host's message
  if (taken) FCurrentGUID = carrier.GetOrderID();
  ClearClientOrder();
}

bool TMarginSimulatorDataControl::SubmitOrder() {
  if (FSimulateOrderList.empty()) {
    ShowResourceText("Res_NoOrderAdd");
    return false;
  }
  PrepareOrder();
  // The orders of this question are its own: another one may be asked, and the view may close, while it
  // stands.
  const TClientOrderList orders = std::move(FClientOrderList);
  ClearClientOrder();
  const std::weak_ptr<const bool> life = FLife;
  const bool confirmed = ConfirmOrders(orders);
  if (life.expired()) return false;
  if (confirmed) {
    for (const auto& order : orders) {
      order->SetExtraField("AllCheckFlag", "Y");
      // What becomes of one order does not keep the others back.
      TCustomOrderActionManager::GetInstance().TakeOrderAction(
          nullptr, *order, GetOrderAction(ClassifyProduct(order->GetSymbol())), true);
    }
    if (life.expired()) return false;
  }
  ClearSimulateOrder();
  ClearClientOrder();
  return confirmed;
}

}  // namespace margindesk
