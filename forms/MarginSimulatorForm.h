#pragma once

#include "controls/ButtonEditProperties.h"
#include "controls/ComboBoxProperties.h"
#include "controls/PopupEditProperties.h"
#include "controls/SpinEditProperties.h"
#include "controls/StyleRepository.h"
#include "forms/AccountInfoForm.h"

namespace margindesk {

// What the margin simulator adds to the components of the account information view, in the form's order. The
// extended form owns them; its own parts move into a group on the left, the order grid takes the rest.
class TMarginSimulatorForm {
 public:
  explicit TMarginSimulatorForm(TAccountInfoForm& form);

  TLayoutGroup* const lgAcctInfo;
  TLayoutGroup* const lgOrder;
  TGridTableView* const OrderGridView;
  TGrid* const OrderGrid;
  TLayoutItem* const liGrid;
  TLayoutGroup* const lgButton;
  TButton* const btnSimulate;
  TLayoutItem* const liSimulate;
  TButton* const btnClear;
  TLayoutItem* const liClear;
  TButton* const btnSubmit;
  TLayoutItem* const liSubmit;

  TStyleRepository* const cxStyleRepository1;
  TStyle* const sDiff;  // of a figure that the simulation changed
  TStyle* const sSame;

  // Editors of the grid's cells: of some columns each row chooses its own.
  TComboBoxProperties* const epiSide;
  TComboBoxProperties* const epiStatus;
  TButtonEditProperties* const epiInvalidInput;
  TButtonEditProperties* const epiValidInput;
  TPopupEditProperties* const epSymbol;
  TSpinEditProperties* const epPrice;
  TSpinEditProperties* const epQuantity;
  TComboBoxProperties* const epOpenClose;
  TComboBoxProperties* const epPrincipal;

 private:
  void LayOut(TAccountInfoForm& form);
};

}  // namespace margindesk
