#include "forms/DataPreferenceForm.h"

namespace margindesk {

namespace {

constexpr std::int32_t kFormWidth = 469;  // pixels at 100 % scale
constexpr std::int32_t kFormHeight = 474;
constexpr std::int32_t kEditWidth = 121;
constexpr std::int32_t kModeWidth = 150;

}  // namespace

TPrecisionRow::TPrecisionRow(TComponent* form, const std::string& name, const std::string& caption)
    : FGroup(new TLayoutGroup(form, "lg" + name, TLayoutDirection::Horizontal)),
      FCheckBox(new TCheckBox(form, "cb" + name)),
      FEdit(new TSpinEdit(form, "edt" + name)),
      FZerosBox(new TCheckBox(form, "cb" + name + "Decimal")) {
  FCheckBox->SetCaption(caption);
  FEdit->SetWidth(kEditWidth);
  FEdit->SetAlignment(TAlignment::Right);
  FEdit->SetNumber(0);
  FZerosBox->SetCaption("Show Zero Decimals");
  FZerosBox->SetChecked(true);
  const auto place = [&](const std::string& item, TControl* control, TLayoutAlignHorz align) {
    auto* placed = new TLayoutItem(form, item, control);
    placed->SetAlignHorz(align);
    FGroup->AddItem(placed);
  };
  place("li" + name + "Check", FCheckBox, TLayoutAlignHorz::Left);
  place("li" + name, FEdit, TLayoutAlignHorz::Right);
  place("li" + name + "Decimal", FZerosBox, TLayoutAlignHorz::Right);
}

TDataPreferenceForm::TDataPreferenceForm(TComponent* owner)
    : TPreferenceFrame(owner),
      lcDataPreference(new TLayoutControl(this, "lcDataPreference")),
      lcDataPreferenceGrp_Root(
          new TLayoutGroup(this, "lcDataPreferenceGrp_Root", TLayoutDirection::Vertical)),
      lgPrecision(new TLayoutGroup(this, "lgPrecision", TLayoutDirection::Vertical)),
      FRows{{{this, "Amount", "Amount"},
             {this, "Qty", "Quantity"},
             {this, "AvgPrice", "Average Price"},
             {this, "QuotedPrice", "Quoted Price"},
             {this, "FxRatio", "FX Rate"}}},
      lgAvgPriceMode(new TLayoutGroup(this, "lgAvgPriceMode", TLayoutDirection::Horizontal)),
      cbAvgPriceMode(new TCheckBox(this, "cbAvgPriceMode")),
      liAvgPriceModeCheck(new TLayoutItem(this, "liAvgPriceModeCheck", cbAvgPriceMode)),
      cmbAvgPriceMode(new TComboBox(this, "cmbAvgPriceMode")),
      liAvgPriceMode(new TLayoutItem(this, "liAvgPriceMode", cmbAvgPriceMode)) {
  FDesignWidth = kFormWidth;
  FDesignHeight = kFormHeight;

  lgPrecision->SetCaption("Precision");
  for (const TPrecisionRow& row : FRows) lgPrecision->AddItem(row.FGroup);
  FRows[kRowQuotedPrice].FGroup->SetVisible(false);

  lgAvgPriceMode->SetCaption("Avg Price Mode");
  lgAvgPriceMode->SetVisible(false);
  cbAvgPriceMode->SetCaption("Avg Price Mode");
  cmbAvgPriceMode->SetWidth(kModeWidth);
  lgAvgPriceMode->AddItem(liAvgPriceModeCheck);
  lgAvgPriceMode->AddItem(liAvgPriceMode);

  lcDataPreferenceGrp_Root->AddItem(lgPrecision);
  lcDataPreferenceGrp_Root->AddItem(lgAvgPriceMode);
  lcDataPreference->SetRoot(lcDataPreferenceGrp_Root);
  lcDataPreference->SetWidth(kFormWidth);
  lcDataPreference->SetHeight(kFormHeight);
}

}  // namespace margindesk
