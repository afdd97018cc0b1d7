#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/LayoutControl.h"
#include "controls/SpinEdit.h"
#include "model/contract/Baseview.h"

namespace margindesk {

// One row of the decimals: its check box, the decimals and the zero-decimal box. A row called "Amount" is the
// group lgAmount with the components cbAmount, edtAmount and cbAmountDecimal.
struct TPrecisionRow {
  TPrecisionRow(TComponent* form, const std::string& name, const std::string& caption);

  TLayoutGroup* const FGroup;
  TCheckBox* const FCheckBox;
  TSpinEdit* const FEdit;
  TCheckBox* const FZerosBox;
};

// The rows in the form's order.
enum TPrecisionRowIndex : std::size_t {
  kRowAmount,
  kRowQty,
  kRowAvgPrice,
  kRowQuotedPrice,
  kRowFxRatio,
  kPrecisionRowCount
};

// The components of the data preference page; the form owns them and finds them by name.
class TDataPreferenceForm : public TPreferenceFrame {
 public:
  explicit TDataPreferenceForm(TComponent* owner);

  TLayoutControl* const lcDataPreference;
  TLayoutGroup* const lcDataPreferenceGrp_Root;

  TLayoutGroup* const lgPrecision;
  const std::array<TPrecisionRow, kPrecisionRowCount> FRows;  // that of quoted prices is never shown

  // Never shown; the setting is kept all the same.
  TLayoutGroup* const lgAvgPriceMode;
  TCheckBox* const cbAvgPriceMode;
  TLayoutItem* const liAvgPriceModeCheck;
  TComboBox* const cmbAvgPriceMode;
  TLayoutItem* const liAvgPriceMode;
};

}  // namespace margindesk
