// What is chosen from lists: side and status, and the choices of open/close and principal that a symbol's
// exchange offers.
#include <algorithm>
#include <array>

#include "marginsim/MarginSimulatorView.h"
#include "marginsim/SymbolFacts.h"
#include "model/ResourceText.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/UserAppProfile.h"

namespace margindesk {

namespace {

// An order option of an exchange, its resource key, and its code in an order.
struct TOption {
  std::string_view FName;
  std::string_view FResourceKey;
  std::int32_t FCode;
};

struct TOptionKind {
  std::string_view FFunction;    // the right that the user needs for it
  std::string_view FNeutralKey;  // of the choice of none
  std::array<TOption, 3> FOptions;
};

constexpr TOptionKind kOpenClose{
    "OEOpenC",
    "Res_OpenClose_N",
    {{{"Open", "Res_OrderOpen", kOpenCloseOpen}, {"Close", "Res_OrderClose", kOpenCloseClose}}}};
constexpr TOptionKind kPrincipal{"OEPrin",
                                 "Res_Principal_N",
                                 {{{"Client", "Res_Principal_C", kPrincipalClient},
                                   {"House", "Res_Principal_H", kPrincipalHouse},
                                   {"RT", "Res_Principal_RT", kPrincipalRT}}}};

std::vector<std::string> GetOffered(TCode symbol, const TOptionKind& kind) {
  std::vector<std::string> keys;
  const TCode exchange = GetExchange(symbol);
  if (exchange.IsEmpty() || !TCustomUserAppProfile::GetInstance().IsFunctionEnabled(kind.FFunction)) {
    return keys;
  }
  const auto& orders = TCustomOrderAdapter::GetInstance();
  for (std::int32_t i = 0; i < orders.GetOrderOptionCount(exchange); ++i) {
    const std::string& name = orders.GetOrderOption(exchange, i);
    for (const TOption& option : kind.FOptions) {
      if (!option.FName.empty() && SameTextIgnoringCase(name, option.FName)) {
        keys.emplace_back(option.FResourceKey);
      }
    }
  }
  if (!keys.empty()) keys.emplace(keys.begin(), kind.FNeutralKey);
  return keys;
}

// The key of a text, "" when it is none of them.
std::string FindKey(const std::map<std::string, std::string>& texts, std::string_view text) {
  const auto found = std::ranges::find_if(texts, [text](const auto& entry) { return entry.second == text; });
  return found == texts.end() ? std::string() : found->first;
}

std::int32_t GetCode(const TOptionKind& kind, std::string_view key) {
  const auto found = std::ranges::find(kind.FOptions, key, &TOption::FResourceKey);
  return found == kind.FOptions.end() ? 0 : found->FCode;
}

// A list that dropped down from an editor that opened before the language changed.
void RefreshItems(TCellEditor& editor, const TComboBoxProperties& properties) {
  const auto& items = editor.GetItems();
  if (items.size() == properties.FItems.size() && !items.empty() &&
      items.front() != properties.FItems.front()) {
    editor.SetItems(properties.FItems);
  }
}

}  // namespace

void TMarginSimulatorFrame::InitOpenClose(TCode symbol) {
  FOrderOptionsList = GetOffered(symbol, kOpenClose);
}

void TMarginSimulatorFrame::InitPrincipal(TCode symbol) {
  FOrderOptionsList = GetOffered(symbol, kPrincipal);
}

std::vector<std::string> TMarginSimulatorFrame::GetChoiceTexts() const {
  std::vector<std::string> texts;
  for (const std::string& key : FOrderOptionsList) texts.push_back(GetResourceText(key));
  return texts;
}

std::int32_t TMarginSimulatorFrame::GetOpenCloseFlag(std::string_view text) const {
  return GetCode(kOpenClose, FindKey(FOpenCloseResList, TrimText(text)));
}

std::int32_t TMarginSimulatorFrame::GetPrincipalFlag(std::string_view text) const {
  return GetCode(kPrincipal, FindKey(FPrincipalResList, TrimText(text)));
}

bool TMarginSimulatorFrame::CheckSymbolOpenCloseValidation(TCode symbol, std::string_view text) {
  InitOpenClose(symbol);
  return std::ranges::count(FOrderOptionsList, FindKey(FOpenCloseResList, TrimText(text))) > 0;
}

bool TMarginSimulatorFrame::CheckSymbolPrincipalValidation(TCode symbol, std::string_view text) {
  InitPrincipal(symbol);
  return std::ranges::count(FOrderOptionsList, FindKey(FPrincipalResList, TrimText(text))) > 0;
}

void TMarginSimulatorFrame::TakeChoice(const TCellEditor& editor, std::int32_t column) {
  const std::int32_t index = editor.GetItemIndex();
  if (index < 0) return;
  const std::string& text = editor.GetItems()[static_cast<std::size_t>(index)];
  if (text.empty()) return;
  OrderGridView->SetValue(OrderGridView->GetFocusedRecordIndex(), column, TVariant::Text(text));
}

void TMarginSimulatorFrame::OpenCloseChange(TCellEditor& editor) {
  TakeChoice(editor, kOrderColumnOpenClose);
}

void TMarginSimulatorFrame::PrincipalChange(TCellEditor& editor) {
  TakeChoice(editor, kOrderColumnPrincipal);
}

void TMarginSimulatorFrame::epiSidePropertiesChange(TCellEditor& editor) {
  TakeChoice(editor, kOrderColumnSide);
}

void TMarginSimulatorFrame::epiStatusPropertiesChange(TCellEditor& editor) {
  TakeChoice(editor, kOrderColumnStatus);
}

void TMarginSimulatorFrame::epiSidePropertiesPopup(TCellEditor& editor) { RefreshItems(editor, *epiSide); }

void TMarginSimulatorFrame::epiStatusPropertiesPopup(TCellEditor& editor) {
  RefreshItems(editor, *epiStatus);
}

}  // namespace margindesk
