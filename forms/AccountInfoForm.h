#pragma once

#include "controls/AccountEdit.h"
#include "controls/Button.h"
#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/EditRepository.h"
#include "controls/Grid.h"
#include "controls/HintStyleController.h"
#include "controls/Image.h"
#include "controls/ImageList.h"
#include "controls/LayoutControl.h"
#include "controls/Menu.h"
#include "controls/ProgressBarProperties.h"
#include "controls/VirtualTree.h"
#include "model/contract/Baseview.h"

namespace margindesk {

// The components of the account information view, in the form's order; the form owns them and finds them by
// name. A form that extends this one adds its own components and moves these groups into its own.
class TAccountInfoForm : public TViewFrame {
 public:
  explicit TAccountInfoForm(TComponent* owner);

  TLayoutControl* const lcAccountInfo;
  TLayoutGroup* const lcAccountInfoGrp_Root;

  // The company banner, hidden until there is one.
  TImage* const imgCom;
  TLayoutItem* const liCOM;

  // The input strip: account and currencies, and the more-info button beside them.
  TLayoutGroup* const lgInput;
  TLayoutGroup* const lgInputInfo;
  TLayoutGroup* const lgMoreInfo;
  TLayoutGroup* const lgAccount;
  TAccountEdit* const edtAccount;
  TLayoutItem* const liAcctItem;
  TCheckBox* const cbLockAcct;
  TLayoutItem* const liLockAcct;
  TLayoutGroup* const lgCurrency;
  TComboBox* const cmbCurrency;
  TLayoutItem* const liCurrencyItem;
  TComboBox* const cmbFilterCurrency;
  TLayoutItem* const liFilterCurrency;
  TButton* const btnMoreInfo;
  TLayoutItem* const liMoreInfo;

  // The figures and the positions.
  TVirtualTree* const AccountInfoTree;
  TLayoutItem* const liAcctGridItem;
  TGridTableView* const PositionGridView;
  TGrid* const PositionGrid;
  TLayoutItem* const liPosition;

  TPopupMenu* const PopupMenu;  // of the tree
  TMenuItem* const AggregateMenu;
  TMenuItem* const CustomColMenu;
  TPopupMenu* const PositionPopupMenu;  // of the grid
  TMenuItem* const CloseToBestMenu;
  TMenuItem* const CloseToLastMenu;
  TMenuItem* const CloseToMarketMenu;
  TMenuItem* const CloseAllPositionsMenu;
  TMenuItem* const DetailPositionMenu;
  TMenuItem* const OptionsPayOffMenu;

  THintStyleController* const HintCtrl;
  TEditRepository* const editRepos;
  TProgressBarProperties* const pbarML;  // behind a margin level
  TTextEditProperties* const txtValue;   // behind a figure: right-aligned
  TImageList* const imgList;             // of the caption buttons: see TCaptionButtonImage

 private:
  void LayOut();
};

// The pictures of the caption buttons in imgList.
enum class TCaptionButtonImage : std::int32_t { Less, More, Details, Invalid, SaveTemplate };

}  // namespace margindesk
