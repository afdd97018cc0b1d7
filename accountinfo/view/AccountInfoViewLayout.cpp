// The layout text of a view, which a workspace keeps, and the layout template, which every new view starts
// from.
#include <algorithm>
#include <optional>

#include "accountinfo/view/AccountInfoView.h"
#include "model/CommaText.h"
#include "model/ResourceText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/EditorManager.h"
#include "model/contract/Icommon.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

constexpr std::string_view kTemplateSection = "LayoutTemplate";
constexpr std::string_view kTemplateKey = "AccountInfo";

std::string MakeItem(std::string_view name, std::string_view value) {
  return std::string(name).append("=").append(value);
}

// The items "name=value" of a comma text; of several with one name the first counts.
class TNamedItems {
 public:
  explicit TNamedItems(std::string_view commaText) : FItems(SplitCommaText(commaText)) {}

  // "" when there is no such item.
  std::string_view Find(std::string_view name) const {
    for (const std::string_view item : FItems) {
      const std::size_t sign = item.find('=');
      if (sign != std::string_view::npos && SameTextIgnoringCase(item.substr(0, sign), name)) {
        return item.substr(sign + 1);
      }
    }
    return {};
  }

 private:
  std::vector<std::string> FItems;
};

// A number, of which 0 is no, or true or false. Anything else is a conversion error.
bool TextToBool(std::string_view text) {
  double number = 0;
  if (TryTextToFloat(text, number)) return number != 0;
  if (SameTextIgnoringCase(text, "true")) return true;
  if (SameTextIgnoringCase(text, "false")) return false;
  throw EConvertError("'" + std::string(text) + "' is neither yes nor no");
}

// Cuts a text at each separator; a part may be empty.
std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

}  // namespace

std::string TAccountInfoFrame::GetColumnLayoutData(const TColumnList& columns) {
  std::string text;
  for (const auto& column : columns) {
    text.append(column->FKey).append(column->FVisible ? ",1," : ",0,");
    text.append(IntegerToText(column->FWidth)).append(";");
  }
  return text;
}

void TAccountInfoFrame::SetColumnLayoutData(TColumnList& columns, std::string_view layout) {
  TColumnList arranged;
  for (const std::string_view entry : Split(layout, ';')) {
    const auto fields = Split(TrimText(entry), ',');
    if (fields.size() < 3) continue;  // the width is written and not read back
    const std::string_view key = TrimText(fields[0]);
    const auto found = std::ranges::find_if(
        columns, [key](const auto& column) { return column != nullptr && column->FKey == key; });
    if (found == columns.end()) continue;
    (*found)->FVisible = TrimText(fields[1]) == "1";
    arranged.push_back(std::move(*found));
  }
  const auto isArranged = [&arranged](std::int32_t id) {
    return std::ranges::any_of(arranged, [id](const auto& column) { return column->FId == id; });
  };
  TColumnList gone;  // the tree may still name them
  for (auto& column : columns) {
    if (column == nullptr) continue;
    (isArranged(column->FId) ? gone : arranged).push_back(std::move(column));
  }
  columns = std::move(arranged);
  if (&columns == FCurrentColumnList && !gone.empty()) UpdateViewColumn();
}

std::vector<std::string> TAccountInfoFrame::GetColumnItems() {
  std::vector<std::string> items{MakeItem("DefaultColumn", GetColumnLayoutData(FDefaultColumnList))};
  if (!FStockColumnList.empty())
    items.push_back(MakeItem("StockColumn", GetColumnLayoutData(FStockColumnList)));
  if (!FFuturesColumnList.empty()) {
    items.push_back(MakeItem("FuturesColumn", GetColumnLayoutData(FFuturesColumnList)));
  }
  return items;
}

void TAccountInfoFrame::ApplyColumnItems(std::string_view commaText) {
  const TNamedItems items(commaText);
  const auto apply = [this, &items](std::string_view name, TColumnList& columns) {
    const std::string_view layout = items.Find(name);
    if (!layout.empty()) SetColumnLayoutData(columns, layout);
  };
  apply("DefaultColumn", FDefaultColumnList);
  apply("StockColumn", FStockColumnList);
  apply("FuturesColumn", FFuturesColumnList);
  UpdateViewColumn();
}

bool TAccountInfoFrame::GetLayoutData(std::string& layout) {
  std::vector<std::string> items{MakeItem("Account", FCurrentAccount.Text()),
                                 MakeItem("Account-Lock", cbLockAcct->GetChecked() ? "1" : "0")};
  if (!FCurrentCurrency.IsEmpty()) items.push_back(MakeItem("Currency", FCurrentCurrency.Text()));
  if (!FFilterCurrency.IsEmpty()) items.push_back(MakeItem("FilterCurrency", FFilterCurrency.Text()));
  if (IsInputStripVisible()) {
    items.push_back(MakeItem("ShowHideState", IntegerToText(FShowHideMoreCaptionButton->FDown)));
  }
  for (std::string& item : GetColumnItems()) items.push_back(std::move(item));
  layout = JoinCommaText(items);
  return true;
}

bool TAccountInfoFrame::SetLayoutData(const std::string& layout) {
  const TNamedItems items(layout);
  const std::weak_ptr<const bool> life = FLife;
  if (lgAccount->GetVisible()) {
    TEditorManager::GetInstance().SetAccountLayoutAccount(*edtAccount, TCode(items.Find("Account")));
  }
  if (life.expired()) return true;  // a view that followed the account has closed this one
  const std::string_view lock = items.Find("Account-Lock");
  if (!lock.empty()) cbLockAcct->SetChecked(TextToBool(lock));

  const TCode currency(items.Find("Currency"));
  const std::int32_t convertIndex = FindCurrency(FCurrencyList, currency);
  if (convertIndex >= 0 && liCurrencyItem->GetVisible() && convertIndex < cmbCurrency->GetItemCount()) {
    cmbCurrency->SetItemIndex(convertIndex);
  }
  const TCode filter(items.Find("FilterCurrency"));
  const std::int32_t filterIndex = FindCurrency(FFilterCurrencyList, filter);
  if (filterIndex >= 0 && liFilterCurrency->GetVisible()) {
    const std::int32_t count = cmbFilterCurrency->GetItemCount();
    if (IsChinaConnectOn()) {
      if (filterIndex < count) cmbFilterCurrency->SetItemIndex(filterIndex);
    } else if (filterIndex < count - 1) {
      cmbFilterCurrency->SetItemIndex(filterIndex + 1);
    }
  }
  if (IsInputStripVisible()) {
    std::int32_t down = 0;
    TryTextToInteger(items.Find("ShowHideState"), down);
    FShowHideMoreCaptionButton->FDown = down;
    UpdateCaptionButtons();
    SendViewNotify(this, kViewLayoutChanged);
  }
  ApplyColumnItems(layout);
  return true;
}

std::string TAccountInfoFrame::GetLayoutTemplate() {
  std::string text = JoinCommaText(GetColumnItems());
  std::ranges::replace(text, '"', '#');
  return text;
}

bool TAccountInfoFrame::SetLayoutTemplate() {
  std::string text = TCustomConfigManager::GetInstance().ReadString(kTemplateSection, kTemplateKey);
  if (text.empty()) return false;
  std::ranges::replace(text, '#', '"');
  ApplyColumnItems(text);
  return true;
}

void TAccountInfoFrame::btnSaveTemplateClick() {
  const std::weak_ptr<const bool> life = FLife;
  const std::int32_t answer =
      TCustomMessageBoxCtrl::GetInstance().ShowConfirmation(GetResourceText("Res_Conf_SaveTemplate"));
  if (answer != kConfirmationYes || life.expired()) return;  // the view may have closed meanwhile
  TCustomConfigManager::GetInstance().WriteString(kTemplateSection, kTemplateKey, GetLayoutTemplate(), true);
}

}  // namespace margindesk
