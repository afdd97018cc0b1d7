// The texts of a simulator view in the current language, those typed into the order grid included.
#include <algorithm>
#include <array>
#include <initializer_list>

#include "marginsim/MarginSimulatorView.h"
#include "model/ResourceText.h"

namespace margindesk {

namespace {

// The lists of sides and statuses, in order.
constexpr std::array<std::string_view, 2> kSideKeys{"Res_Side_Buy", "Res_Side_Sell"};
constexpr std::array<std::string_view, 2> kStatusKeys{"Res_Status_Pend", "Res_Status_Comp"};

void SetItemTexts(TComboBoxProperties& list, const std::array<std::string_view, 2>& keys) {
  list.FItems.resize(std::max(list.FItems.size(), keys.size()));
  for (std::size_t i = 0; i < keys.size(); ++i) list.FItems[i] = GetResourceText(keys[i]);
}

// The new text of a text of the list; the text itself when it is none.
std::string Translate(const std::string& text, const TComboBoxProperties& list,
                      const std::array<std::string_view, 2>& keys) {
  const auto place = static_cast<std::size_t>(std::ranges::find(list.FItems, text) - list.FItems.begin());
  return place < std::min(keys.size(), list.FItems.size()) ? GetResourceText(keys[place]) : text;
}

std::string Translate(const std::string& text, const std::map<std::string, std::string>& texts) {
  const auto found = std::ranges::find_if(texts, [&text](const auto& entry) { return entry.second == text; });
  return found == texts.end() ? text : GetResourceText(found->first);
}

void Fill(std::map<std::string, std::string>& texts, std::initializer_list<const char*> keys) {
  texts.clear();
  for (const char* key : keys) texts.emplace(key, GetResourceText(key));
}

}  // namespace

bool TMarginSimulatorFrame::SetLanguage(std::int32_t index) {
  TAccountInfoFrame::SetLanguage(index);
  btnSimulate->SetCaption(GetResourceText("Res_MarginSimulate_Btn"));
  btnClear->SetCaption(GetResourceText("Res_Clear"));
  btnSubmit->SetCaption(GetResourceText("Res_Submit"));
  FHintRes = GetResourceText("Res_BeforeSimulate");
  UpdateGridHeader();
  UpdateGridContent();  // while the lists below still hold the texts of the language before
  SetItemTexts(*epiSide, kSideKeys);
  SetItemTexts(*epiStatus, kStatusKeys);
  Fill(FOpenCloseResList, {"Res_OpenClose_N", "Res_OrderOpen", "Res_OrderClose"});
  Fill(FPrincipalResList, {"Res_Principal_N", "Res_Principal_C", "Res_Principal_H", "Res_Principal_RT"});
  return true;
}

void TMarginSimulatorFrame::UpdateGridHeader() {
  for (const auto& info : FColList) {
    OrderGridView->SetColumnCaption(info->FId, GetResourceHeader(info->FResourceKey));
  }
}

void TMarginSimulatorFrame::UpdateGridContent() {
  const TControlUpdate update(*OrderGridView);
  const auto translate = [this](std::int32_t record, std::int32_t column, auto translated) {
    const TVariant value = OrderGridView->GetValue(record, column);
    if (value.IsText()) {
      OrderGridView->SetValue(record, column, TVariant::Text(translated(value.AsText())));
    }
    TCellEditor* const editor = OrderGridView->GetEditor();
    if (editor == nullptr || editor->GetRecord() != record || editor->GetColumnTag() != column) return;
    editor->SetValue(TVariant::Text(translated(editor->GetValue().AsText())));
  };
  for (std::int32_t record = 0; record < OrderGridView->GetRecordCount(); ++record) {
    translate(record, kOrderColumnStatus,
              [this](const std::string& text) { return Translate(text, *epiStatus, kStatusKeys); });
    translate(record, kOrderColumnSide,
              [this](const std::string& text) { return Translate(text, *epiSide, kSideKeys); });
    translate(record, kOrderColumnOpenClose,
              [this](const std::string& text) { return Translate(text, FOpenCloseResList); });
    translate(record, kOrderColumnPrincipal,
              [this](const std::string& text) { return Translate(text, FPrincipalResList); });
  }
}

}  // namespace margindesk
