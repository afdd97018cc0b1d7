#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "accountinfo/data/AccountInfoDataControl.h"
#include "marginsim/SimulateOrder.h"
#include "model/contract/BaseOrderData.h"

namespace margindesk {

// The account tree of the margin simulator: the account's figures, and after a simulation those of the copy
// of the account that the host made for the simulated orders. The copy is known by a simulation key and
// arrives some time after it was asked for; until then, and for figures that it lacks, the real ones show.
//
// The simulated orders are also what is submitted for real.
class TMarginSimulatorDataControl : public TAccountInfoDataControl {
 public:
  explicit TMarginSimulatorDataControl(TComponent* owner);
  ~TMarginSimulatorDataControl() override;

  // --- the mode

  TAccountInfoMode GetAccountInfoMode() const noexcept { return FAccountInfoMode; }
  // Going back to normal drops the simulation key and tells the view; simulating tells nobody by itself.
  void SetAccountInfoMode(TAccountInfoMode mode);
  void AccountSimulateUpdate(void* sender, void* data);  // data: TAccountMap*
  // Whether a cell of the tree shows a simulated figure that differs from the real one, by their texts.
  // originalValue: the real text, whenever the two were compared. It costs those two texts.
  bool IsValueChanged(TDataNode* node, std::int32_t columnID, std::string& originalValue);

  // --- the orders

  void AddSimulateOrder(TCode symbol, std::int32_t side, double price, double qty, std::int32_t openClose,
                        std::int32_t principal, std::int32_t status);
  // Whether the host would take such an order of the current account; the host tells the user why not.
  bool CheckOrderValidation(TCode symbol, std::int32_t side, double price, double qty, std::int32_t openClose,
                            std::int32_t principal, std::int32_t status);
  TProductType CheckProductType(TCode symbol);
  const TSimulateOrderList& GetSimulateOrders() const noexcept { return FSimulateOrderList; }
  void ResetSimulate() { ClearSimulateOrder(); }
  // Asks the host for the simulated copy of the account. Without an order the user is told, as he is by the
  // host when it refuses; the key of the simulation before then stays.
  void SimulateOrder();
  // Asks the user to confirm the orders and places them. True when they were confirmed and sent, whatever
  // became of each; the simulated orders are forgotten either way. False as well when the control went while
  // the question stood: it must not be touched any more then.
  bool SubmitOrder();

 protected:
  // Operations of the base.
  void SetAccount(TCode account) override;
  TVariant GetAccountCurrencyData(const TCustomAccountData* data, std::int32_t field) override;
  std::string GetAccountCurrencyDisplayData(const TCustomAccountData* data, std::int32_t field,
                                            bool flag) override;
  void UpdateChinaConnectFlag() override;
  double GetTotalMarketValue(TCode currency) override;
  double GetTotalCompBuy(TCode currency) override;
  double GetTotalCompSell(TCode currency) override;
  double GetTotalPL(TCode currency) override;
  double GetTotalUnrelizePL(TCode currency) override;

  void ClearSimulateOrder() { FSimulateOrderList.clear(); }
  void ClearClientOrder() { FClientOrderList.clear(); }
  void PrepareOrder();  // client orders of the simulated ones
  // The current account's simulated figures; null while not simulating and where there are none.
  const TCustomAccountData* GetSimulateData(TCode currency);
  // Whether an order counts in a currency (empty: in all of them), and the order's own.
  bool IsMyCurrencyOrder(TCode symbol, TCode currency, TCode& orderCurrency);

 private:
  TCustomClientOrder& GetCarrierOrder();                         // blank; made when first needed
  bool IsMySideOrder(TCode symbol, TCode& orderCurrency) const;  // of China Connect
  template <class TAmount>
  double SumCompletedOrders(TCode currency, std::optional<std::int32_t> side, TAmount amount);
  using TFigureRead = double (TCustomAccountData::*)() const;
  double ReadSimulatedFigure(TCode currency, TFigureRead read) const;

  TSimulateOrderList FSimulateOrderList;
  TClientOrderList FClientOrderList;  // of the request that is being made
  std::unique_ptr<TCustomClientOrder> FMyOrder;
  TAccountInfoMode FAccountInfoMode = TAccountInfoMode::aimNormal;
  std::string FCurrentGUID;  // of the last simulation that the host took; empty for none
  const std::shared_ptr<const bool> FLife = std::make_shared<const bool>(true);  // goes with the control
};

}  // namespace margindesk
