#include "controls/GridTableView.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "model/contract/Basedcdatacontrol.h"

namespace margindesk {

namespace {

// Numbers by value and before texts, texts byte by byte; a cell without a value, or with what is no number,
// comes first.
int Compare(const TVariant& a, const TVariant& b) {
  const auto rank = [](const TVariant& value) {
    if (value.IsNumber()) return std::isnan(value.AsFloat()) ? 0 : 1;
    return value.IsText() ? 2 : 0;
  };
  if (rank(a) != rank(b)) return rank(a) - rank(b);
  if (rank(a) == 1) {
    const double left = a.AsFloat();
    const double right = b.AsFloat();
    return left < right ? -1 : left > right ? 1 : 0;
  }
  return a.IsText() ? a.AsText().compare(b.AsText()) : 0;
}

}  // namespace

TGridTableView::~TGridTableView() { SetDataSource(nullptr); }

void TGridTableView::SetDataSource(TCustomGridDataSource* source) {
  if (source == FDataSource) return;
  if (FDataSource != nullptr) FDataSource->Connect({});
  CancelEditor();
  FDataSource = source;
  FRecords.clear();
  if (source != nullptr) source->Connect(MakeDataChangeEvent<&TGridTableView::DataChanged>(this));
  InvalidateOrder();
  ChangeFocus(-1);
}

TBaseDataControl* TGridTableView::GetDataControl() const noexcept {
  return FDataSource == nullptr ? nullptr : FDataSource->GetDataControl();
}

void TGridTableView::DataChanged(TBaseDataControl* sender) {
  if (sender == nullptr) FDataSource = nullptr;
  InvalidateOrder();
  FollowSelection();
  FollowFocus();
}

void TGridTableView::InvalidateOrder() {
  FOrderValid = false;
  Updated();
}

void TGridTableView::FollowFocus() {
  if (FFocusedRecord < 0) return;
  const auto* keys = dynamic_cast<const TRowKeys*>(GetDataControl());
  const std::int32_t record = keys != nullptr            ? keys->FindRow(FFocusedKey)
                              : IsRecord(FFocusedRecord) ? FFocusedRecord
                                                         : -1;
  if (record != FFocusedRecord) ChangeFocus(record);
}

void TGridTableView::FollowSelection() {
  const auto* keys = dynamic_cast<const TRowKeys*>(GetDataControl());
  std::vector<std::int32_t> selection = FSelection;
  for (std::size_t i = 0; i < selection.size(); ++i) {
    if (keys != nullptr) selection[i] = keys->FindRow(FSelectedKeys[i]);
  }
  SetSelection(std::move(selection));
}

void TGridTableView::ChangeFocus(std::int32_t record) {
  const auto* keys = dynamic_cast<const TRowKeys*>(GetDataControl());
  FFocusedKey = keys != nullptr && record >= 0 ? keys->GetRowKey(record) : std::string();
  if (record < 0) FSelection.clear();
  if (Assign(FFocusedRecord, record)) FOnChange();
}

void TGridTableView::SetColumns(std::vector<TGridColumn> columns) {
  CancelEditor();
  FColumns = std::move(columns);
  FSortKeys.clear();
  InvalidateOrder();
}

const TGridColumn* TGridTableView::FindColumn(std::int32_t tag) const noexcept {
  const auto found = std::ranges::find(FColumns, tag, &TGridColumn::FTag);
  return found == FColumns.end() ? nullptr : &*found;
}

void TGridTableView::SetColumnCaption(std::int32_t tag, std::string caption) {
  for (TGridColumn& column : FColumns) {
    if (column.FTag == tag) Assign(column.FCaption, caption);
  }
}

void TGridTableView::SetSorting(std::int32_t tag, TSortOrder order) {
  const TGridColumn* const chosen = FindColumn(tag);
  if (chosen == nullptr || !chosen->FAllowSorting) return;
  for (TGridColumn& column : FColumns) {
    const bool sorted = column.FTag == tag && order != TSortOrder::None;
    column.FSortOrder = sorted ? order : TSortOrder::None;
    column.FSortIndex = sorted ? 0 : -1;
  }
  FSortKeys.clear();
  InvalidateOrder();
}

std::int32_t TGridTableView::GetRecordCount() const {
  TBaseDataControl* const control = GetDataControl();
  return control != nullptr ? control->GetCount() : static_cast<std::int32_t>(FRecords.size());
}

void TGridTableView::SetRecordCount(std::int32_t count) {
  if (FDataSource != nullptr || count < 0 || count == GetRecordCount()) return;
  FRecords.resize(static_cast<std::size_t>(count));
  if (FEditor && !IsRecord(FEditor->GetRecord())) CancelEditor();
  InvalidateOrder();
  FollowSelection();
  if (!IsRecord(FFocusedRecord)) ChangeFocus(-1);
}

void TGridTableView::DeleteRecord(std::int32_t record) {
  if (FDataSource != nullptr || !IsRecord(record)) return;
  FRecords.erase(FRecords.begin() + record);
  if (FEditor && FEditor->GetRecord() == record) CancelEditor();
  if (FEditor && FEditor->GetRecord() > record) --FEditor->FRecord;
  InvalidateOrder();
  std::vector<std::int32_t> selection = FSelection;
  std::erase(selection, record);
  for (std::int32_t& selected : selection) selected -= selected > record ? 1 : 0;
  SetSelection(std::move(selection));
  if (record == FFocusedRecord) {
    ChangeFocus(-1);
  } else if (record < FFocusedRecord) {
    ChangeFocus(FFocusedRecord - 1);
  }
}

std::vector<TVariant> TGridTableView::GetSortKeys(const TGridColumn& column) const {
  const std::int32_t count = GetRecordCount();
  std::vector<TVariant> keys;
  keys.reserve(static_cast<std::size_t>(count));
  for (std::int32_t record = 0; record < count; ++record) keys.push_back(GetValue(record, column.FTag));
  return keys;
}

const std::vector<std::int32_t>& TGridTableView::GetDisplayOrder() {
  if (FOrderValid) return FOrder;
  FOrderValid = true;
  std::vector<const TGridColumn*> sorted;
  for (const TGridColumn& column : FColumns) {
    if (column.FSortIndex >= 0 && column.FSortOrder != TSortOrder::None) sorted.push_back(&column);
  }
  std::ranges::sort(sorted, {}, &TGridColumn::FSortIndex);
  std::vector<std::vector<TVariant>> keys;
  for (const TGridColumn* column : sorted) keys.push_back(GetSortKeys(*column));

  // Mostly prices have changed and the order has not.
  const auto count = static_cast<std::size_t>(GetRecordCount());
  if (!FSortKeys.empty() && FOrder.size() == count && keys == FSortKeys) return FOrder;
  FSortKeys = std::move(keys);
  FOrder.resize(count);
  std::iota(FOrder.begin(), FOrder.end(), 0);
  std::ranges::stable_sort(FOrder, [this, &sorted](std::int32_t a, std::int32_t b) {
    for (std::size_t i = 0; i < sorted.size(); ++i) {
      const int compared =
          Compare(FSortKeys[i][static_cast<std::size_t>(a)], FSortKeys[i][static_cast<std::size_t>(b)]);
      if (compared != 0) return (compared < 0) == (sorted[i]->FSortOrder == TSortOrder::Ascending);
    }
    return false;
  });
  return FOrder;
}

TVariant TGridTableView::GetValue(std::int32_t record, std::int32_t tag) const {
  if (!IsRecord(record)) return {};
  if (TBaseDataControl* const control = GetDataControl()) return control->GetValue(record, tag);
  const auto& cells = FRecords[static_cast<std::size_t>(record)];
  const auto found = std::ranges::find(cells, tag, &TCell::FTag);
  return found == cells.end() ? TVariant() : found->FValue;
}

void TGridTableView::SetValue(std::int32_t record, std::int32_t tag, TVariant value) {
  if (FDataSource != nullptr || !IsRecord(record) || GetValue(record, tag) == value) return;
  auto& cells = FRecords[static_cast<std::size_t>(record)];
  const auto found = std::ranges::find(cells, tag, &TCell::FTag);
  if (found == cells.end()) {
    cells.push_back({tag, std::move(value)});
  } else {
    found->FValue = std::move(value);
  }
  InvalidateOrder();
}

std::string TGridTableView::GetDisplayText(std::int32_t record, const TGridColumn& column) const {
  if (!IsRecord(record)) return {};
  TBaseDataControl* const control = GetDataControl();
  std::string text = control != nullptr && !column.FOnGetDisplayText
                         ? control->GetDisplayValue(record, column.FTag)
                     : control == nullptr ? GetValue(record, column.FTag).AsText()
                                          : std::string();
  column.FOnGetDisplayText(column, record, text);
  return text;
}

TEditProperties* TGridTableView::GetProperties(std::int32_t record, const TGridColumn& column) const {
  TEditProperties* properties = column.FProperties;
  column.FOnGetProperties(column, record, properties);
  return properties;
}

void TGridTableView::SetFocusedRecordIndex(std::int32_t record) {
  if (FEditor && FEditor->GetRecord() != record && !CommitEditor().empty()) CancelEditor();
  ChangeFocus(IsRecord(record) ? record : -1);
}

void TGridTableView::SetSelection(std::vector<std::int32_t> records) {
  std::erase_if(records, [this](std::int32_t record) { return !IsRecord(record); });
  if (!FMultiSelect && records.size() > 1) records.erase(records.begin() + 1, records.end());
  FSelectedKeys.clear();
  if (const auto* keys = dynamic_cast<const TRowKeys*>(GetDataControl())) {
    for (const std::int32_t record : records) FSelectedKeys.push_back(keys->GetRowKey(record));
  }
  Assign(FSelection, std::move(records));
}

}  // namespace margindesk
