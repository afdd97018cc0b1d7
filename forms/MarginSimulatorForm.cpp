#include "forms/MarginSimulatorForm.h"

namespace margindesk {

namespace {

constexpr std::int32_t kFormWidth = 711;  // pixels at 100 % scale
constexpr std::int32_t kFormHeight = 570;
constexpr std::int32_t kAccountWidth = 300;
constexpr std::int32_t kButtonWidth = 75;
constexpr std::int32_t kButtonHeight = 25;
constexpr std::int32_t kSymbolListSize = 400;
constexpr double kLargestQuantity = 2e9;

TButton* MakeButton(TComponent* form, std::string name, std::string caption) {
  auto* button = new TButton(form, std::move(name));
  button->SetCaption(std::move(caption));
  button->SetWidth(kButtonWidth);
  button->SetHeight(kButtonHeight);
  return button;
}

}  // namespace

TMarginSimulatorForm::TMarginSimulatorForm(TAccountInfoForm& form)
    : lgAcctInfo(new TLayoutGroup(&form, "lgAcctInfo", TLayoutDirection::Vertical)),
      lgOrder(new TLayoutGroup(&form, "lgOrder", TLayoutDirection::Vertical)),
      OrderGridView(new TGridTableView(&form, "OrderGridView")),
      OrderGrid(new TGrid(&form, "OrderGrid", OrderGridView)),
      liGrid(new TLayoutItem(&form, "liGrid", OrderGrid)),
      lgButton(new TLayoutGroup(&form, "lgButton", TLayoutDirection::Horizontal)),
      btnSimulate(MakeButton(&form, "btnSimulate", "Simulate")),
      liSimulate(new TLayoutItem(&form, "liSimulate", btnSimulate)),
      btnClear(MakeButton(&form, "btnClear", "Clear")),
      liClear(new TLayoutItem(&form, "liClear", btnClear)),
      btnSubmit(MakeButton(&form, "btnSubmit", "Submit")),
      liSubmit(new TLayoutItem(&form, "liSubmit", btnSubmit)),
      cxStyleRepository1(new TStyleRepository(&form, "cxStyleRepository1")),
      sDiff(new TStyle(&form, "sDiff")),
      sSame(new TStyle(&form, "sSame")),
      epiSide(new TComboBoxProperties(&form, "epiSide")),
      epiStatus(new TComboBoxProperties(&form, "epiStatus")),
      epiInvalidInput(new TButtonEditProperties(&form, "epiInvalidInput")),
      epiValidInput(new TButtonEditProperties(&form, "epiValidInput")),
      epSymbol(new TPopupEditProperties(&form, "epSymbol")),
      epPrice(new TSpinEditProperties(&form, "epPrice")),
      epQuantity(new TSpinEditProperties(&form, "epQuantity")),
      epOpenClose(new TComboBoxProperties(&form, "epOpenClose")),
      epPrincipal(new TComboBoxProperties(&form, "epPrincipal")) {
  form.FDesignWidth = kFormWidth;
  form.FDesignHeight = kFormHeight;

  TGridOptions options;
  options.FAllowDeleting = false;
  options.FGroupByBox = false;
  options.FColumnAutoWidth = true;
  options.FCellHints = true;
  options.FCellEllipsis = true;
  options.FEmptyText = " ";
  OrderGridView->SetOptions(std::move(options));

  cxStyleRepository1->AddStyle(sDiff);
  cxStyleRepository1->AddStyle(sSame);
  for (TButtonEditProperties* button : {epiInvalidInput, epiValidInput}) {
    button->FButtonsOnly = true;
    button->FReadOnly = true;
  }
  epiSide->FAllowEmpty = epiStatus->FAllowEmpty = false;
  epSymbol->FPopupWidth = kSymbolListSize;
  epSymbol->FPopupHeight = kSymbolListSize;
  for (TSpinEditProperties* spin : {epPrice, epQuantity}) spin->FAlignment = TAlignment::Right;
  epQuantity->FMinimum = 0;
  epQuantity->FMaximum = kLargestQuantity;
  for (TEditProperties* item :
       std::initializer_list<TEditProperties*>{epiSide, epiStatus, epiInvalidInput, epiValidInput, epSymbol,
                                               epPrice, epQuantity, epOpenClose, epPrincipal}) {
    form.editRepos->AddItem(item);
  }
  LayOut(form);
}

void TMarginSimulatorForm::LayOut(TAccountInfoForm& form) {
  TLayoutGroup& root = *form.lcAccountInfoGrp_Root;
  const std::vector<TBaseLayoutItem*> accountParts = root.GetItems();
  for (TBaseLayoutItem* part : accountParts) lgAcctInfo->AddItem(part);
  lgAcctInfo->SetWidth(kAccountWidth);
  lgAcctInfo->SetAlignHorz(TLayoutAlignHorz::Left);
  lgAcctInfo->SetAlignVert(TLayoutAlignVert::Client);

  lgButton->AddItem(liSimulate);
  lgButton->AddItem(liClear);
  lgButton->AddItem(liSubmit);
  liSimulate->SetAlignHorz(TLayoutAlignHorz::Left);
  liClear->SetAlignHorz(TLayoutAlignHorz::Right);
  liSubmit->SetAlignHorz(TLayoutAlignHorz::Right);
  liGrid->SetAlignVert(TLayoutAlignVert::Client);
  lgButton->SetAlignVert(TLayoutAlignVert::Bottom);
  lgOrder->AddItem(liGrid);
  lgOrder->AddItem(lgButton);
  lgOrder->SetAlignVert(TLayoutAlignVert::Client);

  root.SetDirection(TLayoutDirection::Horizontal);
  root.AddItem(lgAcctInfo);
  root.AddItem(lgOrder);
  form.lcAccountInfo->SetWidth(kFormWidth);
  form.lcAccountInfo->SetHeight(kFormHeight);
}

}  // namespace margindesk
