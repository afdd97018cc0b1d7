// The column lists of a view, its custom-column dialog, and the cells of tree and grid.
#include <algorithm>
#include <set>

#include "accountinfo/view/AccountInfoView.h"
#include "accountinfo/view/AcctPositionViewDataControl.h"
#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/Datadef.h"
#include "model/contract/GlobalChannelManager.h"

namespace margindesk {

namespace {

// Columns whose captions name the base currency. The catalogue holds neither; wanted for lists that get them
// from elsewhere.
constexpr std::int32_t kBaseCurrencyFields[] = {406, 896};

bool ContainsId(const TColumnList& columns, std::int32_t id) {
  return std::ranges::any_of(columns, [id](const auto& column) { return column->FId == id; });
}

TAlignment GetAlignment(THeaderAlignment alignment) {
  return alignment == THeaderAlignment::Left     ? TAlignment::Left
         : alignment == THeaderAlignment::Center ? TAlignment::Center
                                                 : TAlignment::Right;
}

}  // namespace

std::unique_ptr<TColumnInfo> TAccountInfoFrame::GetColumnByKey(std::string_view key) {
  const TCatalogueRow* row = FindCatalogueRow(key);
  if (row == nullptr) return nullptr;
  if (!row->FBackOfficeKey.empty()) FKeyValueMapDic[row->FId] = row->FBackOfficeKey;
  return CreateCatalogueColumn(*row);
}

std::string TAccountInfoFrame::ConvertColumnKey(std::string_view key) {
  return std::string(margindesk::ConvertColumnKey(key));
}

std::string TAccountInfoFrame::ConvertConfigSetting(std::string_view value) {
  return margindesk::ConvertConfigSetting(value);
}

void TAccountInfoFrame::CheckReservedColumn(TColumnList& columns) { EnsureReservedColumn(columns); }

void TAccountInfoFrame::GetCustomColumns(TColumnList& columns) { AppendCustomColumns(columns); }

void TAccountInfoFrame::GetColumnList() {
  // A value that is set, though to nothing, is not the same as none: its list holds what every list holds.
  const auto fill = [this](std::string_view key, bool positions, TColumnList& columns) {
    const auto& config = TCustomConfigManager::GetInstance();
    const std::string configured = config.ReadString(config.GetUserSection(), key);
    if (configured.empty()) return;
    FillColumnList(ConvertConfigSetting(configured), positions, columns);
    if (!positions) GetCustomColumns(columns);
  };
  fill("Default_AccountInfoColumn", false, FDefaultColumnList);
  if (FDefaultColumnList.empty()) {
    FillColumnList(kDefaultAccountColumns, false, FDefaultColumnList);
    GetCustomColumns(FDefaultColumnList);
  }
  fill("Stock_AccountInfoColumn", false, FStockColumnList);
  fill("Futures_AccountInfoColumn", false, FFuturesColumnList);
  fill("AcctInfo_PosCol", true, FPositonColumnList);
  if (FPositonColumnList.empty()) liPosition->SetVisible(false);
}

void TAccountInfoFrame::FillColumnList(std::string_view keyList, bool positions, TColumnList& columns) {
  for (std::size_t start = 0; start <= keyList.size();) {
    const std::size_t end = std::min(keyList.find(',', start), keyList.size());
    if (auto column = GetColumnByKey(keyList.substr(start, end - start)))
      columns.push_back(std::move(column));
    start = end + 1;
  }
  if (!positions) CheckReservedColumn(columns);
}

void TAccountInfoFrame::UpdateViewColumn() {
  FCurrentColumnType = GetAccountColumnType(FindCurrentAccount());
  TColumnList* chosen = FCurrentColumnType == 1 || FCurrentColumnType == 4 ? &FStockColumnList
                        : FCurrentColumnType == 2                          ? &FFuturesColumnList
                                                                           : &FDefaultColumnList;
  FCurrentColumnList = chosen->empty() ? &FDefaultColumnList : chosen;
  if (FMyDataSource != nullptr) FMyDataSource->SetColumnList(*FCurrentColumnList);
}

std::string TAccountInfoFrame::GetColNameByAttr(std::int32_t attribute) {
  const auto found = std::ranges::find_if(
      *FCurrentColumnList, [attribute](const auto& column) { return column->FId == attribute; });
  return found == FCurrentColumnList->end() ? std::string() : GetResourceText((*found)->FResourceKey);
}

std::string TAccountInfoFrame::GetResourceHeader(std::string_view resourceKey) {
  return resourceKey.empty() ? std::string() : GetResourceText(resourceKey);
}

void TAccountInfoFrame::InitializeHead() {
  {
    const TControlUpdate update(*AccountInfoTree);
    TTreeColumn caption;
    caption.FTag = kCellCaption;
    TTreeColumn value;
    value.FTag = kCellValue;
    value.FProperties = txtValue;
    for (TTreeColumn* column : {&caption, &value}) {
      column->FOnGetDisplayText = MakeEvent<&TAccountInfoFrame::AccountInfoTreeColumnGetDisplayText>(this);
      column->FOnGetEditProperties =
          MakeEvent<&TAccountInfoFrame::AccountInfoTreeColumnGetEditProperties>(this);
    }
    AccountInfoTree->SetColumnAutoWidth(true);
    AccountInfoTree->SetColumns({std::move(caption), std::move(value)});
  }

  std::vector<TGridColumn> columns;
  for (const auto& info : FPositonColumnList) {
    TGridColumn& column = columns.emplace_back();
    column.FTag = info->FId;
    column.FCaption = GetResourceHeader(info->FResourceKey);
    column.FAllowEditing = info->FAllowEditing;
    column.FAllowSorting = info->FAllowSorting;
    column.FHeaderAlignment = GetAlignment(info->FHeaderAlignment);
    column.FVisible = info->FVisible;
    column.FWidth = info->FWidth;
    if (info->FMinWidth > 0) column.FMinWidth = info->FMinWidth;
    column.FNumeric = info->FNumeric;
    if (info->FNumeric) {
      column.FOnGetDisplayText = MakeEvent<&TAccountInfoFrame::PositionGridColumnGetDisplayText>(this);
      column.FProperties = txtValue;
    }
    if (info->FId == kFieldSymbol) {
      column.FSortIndex = 0;
      column.FSortOrder = TSortOrder::Ascending;
    }
  }
  PositionGridView->SetColumns(std::move(columns));
}

void TAccountInfoFrame::UpdatePositionGridHeader() {
  const TControlUpdate update(*PositionGridView);
  std::set<std::int32_t> captioned;  // a field may have several columns; its first description counts
  for (const auto& info : FPositonColumnList) {
    if (!captioned.insert(info->FId).second) continue;
    std::string caption = GetResourceHeader(info->FResourceKey);
    if (std::ranges::find(kBaseCurrencyFields, info->FId) != std::end(kBaseCurrencyFields)) {
      const TCode base = TCustomCurrencyAdapter::GetInstance().GetBaseCurrency();
      const std::string& name =
          TCustomLanguageManager::GetInstance().GetLanguageText("Currency", base.Text());
      caption.append("(").append(name.empty() ? base.Text() : name).append(")");
    }
    PositionGridView->SetColumnCaption(info->FId, std::move(caption));
  }
}

void TAccountInfoFrame::CustomColMenuClick() {
  TCustomColumnRecord record;
  for (const auto& column : *FCurrentColumnList) {
    std::string caption = column->FId < kFirstCustomField
                              ? GetResourceText(column->FResourceKey)
                              : TCustomLanguageManager::GetInstance().GetLanguageText(kCustomColumnSection,
                                                                                      column->FResourceKey);
    if (column->FId == kFieldTradingLimit && record.FReservedCaptions[0].empty()) {
      record.FReservedCaptions[0] = caption;
    }
    if (column->FVisible) record.FVisibleCaptions.push_back(caption);
    record.FAllCaptions.push_back(std::move(caption));
  }
  record.FCallback = MakeHandler<&TAccountInfoFrame::HandleCustomColumn>(this);
  TCustomGlobalChannelManager::GetInstance().SendChannelMessage(kMessageCustomColumns, &record);
}

void TAccountInfoFrame::HandleCustomColumn(void* /*sender*/, void* data) {
  const auto* result = static_cast<const TCustomColumnResult*>(data);
  if (result == nullptr) return;
  TColumnList& columns = *FCurrentColumnList;
  const auto& [order, visible] = *result;
  if (order.size() > columns.size() || visible.size() > columns.size() || order.size() < visible.size())
    return;

  // Wanted: the captions of custom columns come from their own section, but are looked up as resource texts,
  // so that these columns mostly keep their place at the end.
  std::vector<std::string> captions;
  for (const auto& column : columns) captions.push_back(GetResourceText(column->FResourceKey));
  TColumnList arranged;
  for (const std::string& caption : order) {
    // Of columns with one caption the first is meant each time; the others are put back below.
    const auto place = static_cast<std::size_t>(std::ranges::find(captions, caption) - captions.begin());
    if (place == captions.size() || columns[place] == nullptr) continue;
    columns[place]->FVisible = std::ranges::find(visible, caption) != visible.end();
    arranged.push_back(std::move(columns[place]));
  }
  for (auto& column : columns) {
    if (column != nullptr && !ContainsId(arranged, column->FId)) arranged.push_back(std::move(column));
  }
  const TColumnList gone = std::exchange(columns, std::move(arranged));  // the tree may still name them
  UpdateViewColumn();
}

void TAccountInfoFrame::AccountInfoTreeColumnGetDisplayText(const TTreeColumn& column,
                                                            const TVirtualTreeNode* node, std::string& text) {
  if (FMyDataControl == nullptr || node == nullptr) return;
  text = FMyDataControl->GetDisplayValue(node->GetData(), column.FTag);
}

void TAccountInfoFrame::AccountInfoTreeColumnGetEditProperties(const TTreeColumn& column,
                                                               const TVirtualTreeNode* node,
                                                               TEditProperties*& properties) {
  if (FMyDataControl == nullptr || node == nullptr || column.FTag != kCellValue) return;
  if (FCurrentAccount.IsEmpty() || FMyDataControl->GetAccount().IsEmpty()) return;
  if (node->GetLevel() != 0 || GetNodeAttribute(node) != kFieldMarginLevel) return;
  pbarML->SetText(FMyDataControl->GetDisplayValue(node->GetData(), kCellValue));
  properties = pbarML;
}

void TAccountInfoFrame::PositionGridColumnGetDisplayText(const TGridColumn& item, std::int32_t record,
                                                         std::string& text) {
  if (FMyPositionDataControl != nullptr) text = FMyPositionDataControl->GetDisplayValue(record, item.FTag);
}

}  // namespace margindesk
