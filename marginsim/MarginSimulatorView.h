#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accountinfo/view/AccountInfoView.h"
#include "forms/MarginSimulatorForm.h"
#include "marginsim/OrderColumns.h"
#include "marginsim/OrderRules.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

class TMarginSimulatorDataControl;

// The margin simulator view: an account information view without positions whose figures may be those of a
// simulated account, beside a grid in which a person types the orders to simulate or to place. The grid
// always ends in a blank row.
//
// Made like every view, by CreateViewFrame.
class TMarginSimulatorFrame : public TAccountInfoFrame, public TMarginSimulatorForm {
 public:
  explicit TMarginSimulatorFrame(TComponent* owner);
  ~TMarginSimulatorFrame() override;

  void Construct() override;

  // --- what the host asks of a view (caption and width: MarginSimulatorView.cpp, language:
  // MarginSimulatorViewLanguage.cpp, layout: MarginSimulatorViewLayout.cpp)

  bool SetLanguage(std::int32_t index) override;
  bool GetLayoutData(std::string& layout) override;
  bool SetLayoutData(const std::string& layout) override;
  bool GetViewCaption(std::string& caption) override;
  bool GetWidth(std::int32_t& width) override;

  // --- buttons, changed figures, timer (MarginSimulatorView.cpp)

  void btnSimulateClick();
  void btnSubmitClick();
  void btnClearClick();
  void CreateDataSource() override;
  void SetAggregateMenu() override;  // never shown: one account is simulated
  void RefreshTimer(void* sender, void* data) override;
  void ProcessShowHint(std::int32_t x, std::int32_t y) override;
  void ProcessHideHint() override;
  void ConfigUpdate(void* sender, void* data);  // beside the base's own

  // --- the orders of the grid (MarginSimulatorViewOrders.cpp)

  // Collects the rows into the data control's list of orders, up to the first bad one, which is marked and
  // reported in one message. With `check` the host checks each order as one to be placed. Answers whether all
  // rows were good.
  bool AddSimulateOrder(bool check);

  // --- the grid's columns and editors (MarginSimulatorViewGrid.cpp)

  const TGridColumn* GetGridColumn(std::int32_t id) const;  // null when there is none
  static double GetDisplayPriceValue(double price, std::string_view symbol);
  static double GetRealPriceValue(double price, std::string_view symbol);

  // --- symbols (MarginSimulatorViewSymbol.cpp)

  // Whether a symbol may be ordered at all. Every symbol may; a row with one that may not is taken away.
  virtual bool IsValidSymbol(TCode symbol);
  // A symbol was typed or picked in the focused row, or its reference data came: `displayValue` becomes the
  // symbol as the host writes it, and the row is filled in. Refuses nothing; a row without a symbol goes at
  // the next tick of the timer.
  void SymbolOnValidate(TVariant& displayValue, std::string& errorText);
  void HandleSelectSymbol(void* sender, void* data);  // data: TCustomMarketData* or null
  void SymbolUpdate(void* sender, void* data);        // data: TSubItemMap*
  void ReCheckSymbol(TCode symbol);
  void CheckSymbolState(TCode symbol);  // has its data and spread table loaded
  void ClearSubscribeList();

  // --- what a symbol offers to open/close and principal (MarginSimulatorViewChoices.cpp)

  void InitOpenClose(TCode symbol);  // into FOrderOptionsList, as InitPrincipal
  void InitPrincipal(TCode symbol);
  std::int32_t GetOpenCloseFlag(std::string_view text) const;  // kOpenClose..., 0 for any other text
  std::int32_t GetPrincipalFlag(std::string_view text) const;  // kPrincipal..., likewise
  bool CheckSymbolOpenCloseValidation(TCode symbol, std::string_view text);  // whether it is offered
  bool CheckSymbolPrincipalValidation(TCode symbol, std::string_view text);

 protected:
  using TResourceTexts = std::map<std::string, std::string>;  // by resource key

  // --- handlers of the controls

  void AccountInfoTreeStylesGetContentStyle(const TTreeColumn& column, const TVirtualTreeNode* node,
                                            const TStyle*& style);
  void OrderGridViewEditing(const TGridColumn& column, bool& allowed);
  void OrderGridViewEditKeyDown(const TGridColumn& column, TCellEditor& editor, char32_t key);
  void OrderGridGetProperties(const TGridColumn& column, std::int32_t record, TEditProperties*& properties);
  void OrderGridColumnGetDisplayText(const TGridColumn& column, std::int32_t record, std::string& text);
  void SymbolCellValidate(TVariant& displayValue, std::string& errorText);
  void PriceChange(TCellEditor& editor);
  void QuantityChange(TCellEditor& editor);
  void OpenCloseChange(TCellEditor& editor);
  void PrincipalChange(TCellEditor& editor);
  void epiSidePropertiesChange(TCellEditor& editor);
  void epiStatusPropertiesChange(TCellEditor& editor);
  void epiSidePropertiesPopup(TCellEditor& editor);
  void epiStatusPropertiesPopup(TCellEditor& editor);

  void MainFormShow(void* sender, void* data);
  void LoadLayoutComp(void* sender, void* data);

  TMarginSimulatorDataControl* GetSimulatorControl() const noexcept;  // the base's FMyDataControl

  TColumnList FColList;                         // of the order grid
  TControl* FSymbolListView = nullptr;          // the host's; a component of this frame
  std::int32_t FPendingDeleteRecordIndex = -1;  // a row whose symbol was blanked; -1 for none
  TSubItemMap FSubscribedList;                  // symbols whose data is awaited
  bool FAutoRound2LotSize = false;              // an arrow key spun: snap
  bool FEditingQty = false;                     // a key was pressed since the last change
  bool FAutoEditingQty = false;                 // a snapped value is being written back
  bool FAutoRound2Spread = false;               // the same of the price
  bool FEditingPrice = false;
  bool FAutoEditingPrice = false;
  // By record; wanted: not renumbered when a row goes, for the next editor opened on a row sets them anew.
  std::map<std::int32_t, double> FSpreadUpLimitList;  // limits of the band that the row's price is in
  std::map<std::int32_t, double> FSpreadDownLimitList;
  std::map<std::int32_t, double> FCurrentPriceList;  // last accepted real price
  std::vector<std::string> FOrderOptionsList;        // resource keys of the current symbol's choices
  TResourceTexts FOpenCloseResList;
  TResourceTexts FPrincipalResList;
  const TDataNode* FCurrentHintNode = nullptr;  // whose hint is shown; only ever compared
  std::string FHintRes;
  std::string FLayoutColumn;  // a layout of the order grid that waits to be applied
  bool FSubmitting = false;   // the rows are being placed: another press does not place them again

 private:
  void InitializeGrid();
  void ConnectOrderControls();
  TMarginSimulateOrder ReadOrderRow(std::int32_t record) const;  // its side is -1 while none is chosen
  bool CollectOrder(TMarginSimulateOrder& order, bool check);    // false: the user has been told why not
  void FillRow(TCode symbol);
  TVariant GetPrefilledValue(std::int32_t column, TCode symbol) const;
  void PrepareQuantityEditor(TCode symbol);
  void PreparePriceEditor(std::int32_t record, TCode symbol);
  std::optional<TBandLimits> GetBandLimits(std::int32_t record) const;
  void SetBand(std::int32_t record, TCode symbol, const TSpreadBand& band);
  TCode GetRowSymbol(std::int32_t record) const;  // trimmed
  void TakeChoice(const TCellEditor& editor, std::int32_t column);
  std::vector<std::string> GetChoiceTexts() const;  // of FOrderOptionsList
  void UpdateGridHeader();
  void UpdateGridContent();
  void AdjustLayout();
};

}  // namespace margindesk
