#include "plugin/DataPreference.h"

#include <iterator>

#include "model/ResourceText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr double kMostDecimals = 8;

struct TRowSetting {
  std::string_view FPrecisionKey;
  std::string_view FZerosKey;
  std::string_view FCaptionKey;
};

// In the order of the form's rows. Wanted: the average price is stored as the default, the ratio as the
// currency.
constexpr TRowSetting kRows[] = {
    {"AmountPrecision", "AmountDecimal", "Res_Precision_Amount"},
    {"QtyPrecision", "QtyDecimal", "Res_Precision_Qty"},
    {"DefaultPrecision", "DefaultDecimal", "Res_Precision_AvgPrice"},
    {"QuotedPricePrecision", "QuotedPriceDecimal", "Res_Precision_QuotedPrice"},
    {"CurrencyPrecision", "CurrencyDecimal", "Res_Precision_FxRatio"},
};
static_assert(std::size(kRows) == kPrecisionRowCount);

constexpr std::string_view kModeKey = "AvgPriceMode";

struct TMode {
  std::string_view FStored;
  std::string_view FTextKey;
};
constexpr TMode kModes[] = {
    {"0", "Res_AvgPriceMode_Default"},
    {"1", "Res_AvgPriceMode_BuyUpSellDefault"},
    {"2", "Res_AvgPriceMode_BuyDefaultSellDown"},
    {"3", "Res_AvgPriceMode_BuyUpSellDown"},
};

// What a row is to store.
struct TRowValue {
  std::string FPrecision;
  bool FZeros = false;
};

TRowValue ReadRow(const TPrecisionRow& row) {
  const bool set = row.FCheckBox->GetChecked();
  const auto decimals = static_cast<std::int32_t>(row.FEdit->GetNumber().value_or(0));
  return {set ? std::to_string(decimals) : std::string(), row.FZerosBox->GetChecked()};
}

}  // namespace

TDataPreferenceFrame::TDataPreferenceFrame(TComponent* owner) : TDataPreferenceForm(owner) {
  BindRows(std::make_index_sequence<kPrecisionRowCount>());
  cbAvgPriceMode->SetOnChange(MakeEvent<&TDataPreferenceFrame::cbAvgPriceModePropertiesChange>(this));
  InitView();
  TDataPreferenceFrame::SetLanguage(0);
  TCustomConfigManager::GetInstance().AddConfigUpdateHandler(
      MakeHandler<&TDataPreferenceFrame::ConfigUpdate>(this), this);
  ConfigUpdate(nullptr, nullptr);
  for (const TPrecisionRow& row : FRows) EnableRow(row);
  cbAvgPriceModePropertiesChange();
}

TDataPreferenceFrame::~TDataPreferenceFrame() {
  TCustomConfigManager::GetInstance().RemoveConfigUpdateHandler(this);
}

template <std::size_t... Rows>
void TDataPreferenceFrame::BindRows(std::index_sequence<Rows...> /*rows*/) {
  (FRows[Rows].FCheckBox->SetOnChange(
       MakeEvent<&TDataPreferenceFrame::cbPrecisionPropertiesChange<Rows>>(this)),
   ...);
}

void TDataPreferenceFrame::InitView() {
  for (const TPrecisionRow& row : FRows) row.FEdit->SetLimits(0, kMostDecimals);
  for (const TMode& mode : kModes) cmbAvgPriceMode->AddItem(std::string(mode.FTextKey));
  cmbAvgPriceMode->SetItemIndex(0);
}

bool TDataPreferenceFrame::SetLanguage(std::int32_t /*index*/) {
  lgPrecision->SetCaption(GetResourceStr("Res_Precision"));
  lgAvgPriceMode->SetCaption(GetResourceStr("Res_AvgPriceMode"));
  const std::string zeros =
      GetResourceStr("Res_ShowZeroDecimal") + "(" + GetResourceStr("Res_ShowZeroDecimal_Example") + ")";
  for (std::size_t i = 0; i < kPrecisionRowCount; ++i) {
    FRows[i].FCheckBox->SetCaption(GetResourceStr(kRows[i].FCaptionKey));
    FRows[i].FZerosBox->SetCaption(zeros);
  }
  const std::int32_t chosen = cmbAvgPriceMode->GetItemIndex();
  for (std::size_t i = 0; i < std::size(kModes); ++i) {
    cmbAvgPriceMode->SetItem(static_cast<std::int32_t>(i), GetResourceStr(kModes[i].FTextKey));
  }
  cmbAvgPriceMode->SetItemIndex(chosen);
  return true;
}

void TDataPreferenceFrame::ConfigUpdate(void* /*sender*/, void* /*data*/) {
  const auto& config = TCustomConfigManager::GetInstance();
  const std::string section = config.GetUserSection();
  for (std::size_t i = 0; i < kPrecisionRowCount; ++i) {
    const TPrecisionRow& row = FRows[i];
    const std::string precision = config.ReadString(section, kRows[i].FPrecisionKey);
    row.FCheckBox->SetChecked(!precision.empty());
    if (precision.empty()) continue;
    std::int32_t decimals = 0;
    if (!TryTextToInteger(precision, decimals)) decimals = 0;
    row.FEdit->SetNumber(decimals);
    row.FZerosBox->SetChecked(config.ReadBool(section, kRows[i].FZerosKey));
  }
  const std::string mode = config.ReadString(section, kModeKey);
  cbAvgPriceMode->SetChecked(!mode.empty());
  for (std::size_t i = 0; i < std::size(kModes); ++i) {
    if (mode == kModes[i].FStored) cmbAvgPriceMode->SetItemIndex(static_cast<std::int32_t>(i));
  }
}

bool TDataPreferenceFrame::Execute() {
  // The first change that is written loads the page again, so everything that is to be saved is taken down
  // before that.
  std::array<TRowValue, kPrecisionRowCount> values;
  for (std::size_t i = 0; i < kPrecisionRowCount; ++i) values[i] = ReadRow(FRows[i]);
  const bool modeSet = cbAvgPriceMode->GetChecked();
  const auto mode = static_cast<std::size_t>(cmbAvgPriceMode->GetItemIndex());  // beyond the modes for none

  auto& config = TCustomConfigManager::GetInstance();
  const std::string section = config.GetUserSection();
  std::string text;
  const auto save = [&](std::string_view key) {
    if (text != config.ReadString(section, key)) config.WriteString(section, key, text, true);
  };
  for (std::size_t i = 0; i < kPrecisionRowCount; ++i) {
    text = values[i].FPrecision;
    save(kRows[i].FPrecisionKey);
    if (config.ReadBool(section, kRows[i].FZerosKey) != values[i].FZeros) {
      text = values[i].FZeros ? "Y" : "N";
      config.WriteString(section, kRows[i].FZerosKey, text, true);
    }
  }
  // Wanted: with the mode set and none chosen, the text of the last row stands as the mode.
  if (!modeSet) {
    text.clear();
  } else if (mode < std::size(kModes)) {
    text = kModes[mode].FStored;
  }
  save(kModeKey);
  return true;
}

bool TDataPreferenceFrame::Reset() {
  ConfigUpdate(nullptr, nullptr);
  return true;
}

bool TDataPreferenceFrame::ResetFactory() { return Reset(); }

bool TDataPreferenceFrame::SendMessage(std::int32_t /*flag*/, std::int64_t /*data*/) { return true; }

std::int32_t TDataPreferenceFrame::GetWidth() { return lcDataPreference->GetWidth(); }

std::int32_t TDataPreferenceFrame::GetHeight() { return lcDataPreference->GetHeight(); }

std::string TDataPreferenceFrame::GetResourceStr(std::string_view key) const { return GetResourceText(key); }

void TDataPreferenceFrame::EnableRow(const TPrecisionRow& row) {
  row.FEdit->SetEnabled(row.FCheckBox->GetChecked());
  row.FZerosBox->SetEnabled(row.FCheckBox->GetChecked());
}

void TDataPreferenceFrame::cbAvgPriceModePropertiesChange() {
  cmbAvgPriceMode->SetEnabled(cbAvgPriceMode->GetChecked());
}

}  // namespace margindesk
