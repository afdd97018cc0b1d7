#include "controls/VirtualTree.h"

#include <algorithm>

#include "model/contract/Basedcdatacontrol.h"

namespace margindesk {

namespace {

constexpr std::int32_t kHeaderHeight = 20;         // pixels
constexpr std::int32_t kDefaultColumnWidth = 100;  // where columns do not share the width

}  // namespace

TVirtualTree::~TVirtualTree() { SetDataSource(nullptr); }

void TVirtualTree::SetDataSource(TCustomTreeDataSource* source) {
  if (source == FDataSource) return;
  if (FDataSource != nullptr) FDataSource->Connect({});
  FDataSource = source;
  if (source != nullptr) source->Connect(MakeDataChangeEvent<&TVirtualTree::DataChanged>(this));
  FullRefresh();
}

void TVirtualTree::DataChanged(TBaseDataControl* sender) {
  if (sender == nullptr) FDataSource = nullptr;
  FullRefresh();
}

void TVirtualTree::SetColumns(std::vector<TTreeColumn> columns) {
  FColumns = std::move(columns);
  Updated();
}

const TTreeColumn* TVirtualTree::FindColumn(std::int32_t tag) const noexcept {
  const auto found = std::ranges::find(FColumns, tag, &TTreeColumn::FTag);
  return found == FColumns.end() ? nullptr : &*found;
}

void TVirtualTree::FullRefresh() {
  FRowsValid = FShownValid = false;
  Updated();
}

void TVirtualTree::Rebuild() {
  FNodes.clear();
  FRows.clear();
  FRowsValid = true;
  FShownValid = false;
  if (FDataSource != nullptr) AddRows(*FDataSource->GetDataControl(), nullptr, nullptr);
}

void TVirtualTree::AddRows(TCustomTreeDataControl& control, TDataNode* parent, TVirtualTreeNode* parentRow) {
  const std::int32_t count = control.GetChildNodeCount(parent);
  for (std::int32_t i = 0; i < count; ++i) {
    auto& row = FRows.emplace_back(std::make_unique<TVirtualTreeNode>());
    TVirtualTreeNode* const added = row.get();
    added->FData = control.GetChildNode(parent, i);
    added->FParent = parentRow;
    added->FLevel = parentRow == nullptr ? 0 : parentRow->FLevel + 1;
    added->FHasChildren = control.GetChildNodeCount(added->FData) > 0;
    // A column may stand in a list twice; its place among its neighbours tells the two rows apart no better
    // than their key does, and they open and close together.
    if (parentRow != nullptr) added->FKey.assign(parentRow->FKey).append(1, '/');
    added->FKey += added->FData->GetKey();
    FNodes.push_back(added);
    AddRows(control, added->FData, added);
  }
}

const std::vector<const TVirtualTreeNode*>& TVirtualTree::GetNodes() {
  if (!FRowsValid) Rebuild();
  return FNodes;
}

const std::vector<const TVirtualTreeNode*>& TVirtualTree::GetShownNodes() {
  GetNodes();
  if (FShownValid) return FShownNodes;
  FShownValid = true;
  FShownNodes.clear();
  std::int32_t closedLevel = -1;  // of the closed row that hides what follows; -1 for none
  for (const TVirtualTreeNode* node : FNodes) {
    if (closedLevel >= 0 && node->FLevel > closedLevel) continue;
    FShownNodes.push_back(node);
    closedLevel = IsExpanded(*node) ? -1 : node->FLevel;
  }
  return FShownNodes;
}

void TVirtualTree::SetExpanded(const TVirtualTreeNode& node, bool expanded) {
  const bool changed = expanded ? FExpanded.insert(node.FKey).second : FExpanded.erase(node.FKey) > 0;
  if (!changed) return;
  FShownValid = false;
  Updated();
}

std::string TVirtualTree::GetDisplayText(const TVirtualTreeNode* node, const TTreeColumn& column) const {
  std::string text;
  if (column.FOnGetDisplayText) {
    column.FOnGetDisplayText(column, node, text);
  } else if (node != nullptr && FDataSource != nullptr) {
    text = FDataSource->GetDataControl()->GetDisplayValue(node->FData, column.FTag);
  }
  return text;
}

TEditProperties* TVirtualTree::GetEditProperties(const TVirtualTreeNode* node,
                                                 const TTreeColumn& column) const {
  TEditProperties* properties = column.FProperties;
  column.FOnGetEditProperties(column, node, properties);
  return properties;
}

const TStyle* TVirtualTree::GetContentStyle(const TVirtualTreeNode* node, const TTreeColumn& column) const {
  const TStyle* style = nullptr;
  FOnGetContentStyle(column, node, style);
  return style;
}

void TVirtualTree::MakeVisible(const TVirtualTreeNode& node) {
  for (TVirtualTreeNode* parent = node.FParent; parent != nullptr; parent = parent->FParent) {
    SetExpanded(*parent, true);
  }
}

std::int32_t TVirtualTree::GetColumnLeft(std::size_t index) const noexcept {
  const auto place = static_cast<std::int32_t>(index);
  if (!FColumnAutoWidth || FColumns.empty()) return place * kDefaultColumnWidth;
  return static_cast<std::int32_t>(std::int64_t{GetWidth()} * place /
                                   static_cast<std::int64_t>(FColumns.size()));
}

TRect TVirtualTree::GetCellRect(const TVirtualTreeNode& node, const TTreeColumn& column) {
  const auto& shown = GetShownNodes();
  const auto row = std::ranges::find(shown, &node);
  const auto place = std::ranges::find(FColumns, column.FTag, &TTreeColumn::FTag);
  if (row == shown.end() || place == FColumns.end()) return {};
  const auto index = static_cast<std::size_t>(place - FColumns.begin());
  const std::int32_t left = GetColumnLeft(index);
  const std::int32_t top = FShowHeaders ? kHeaderHeight : 0;
  const auto rowIndex = static_cast<std::int32_t>(row - shown.begin()) - FTopRow;
  return {left, top + rowIndex * FRowHeight, GetColumnLeft(index + 1) - left, FRowHeight};
}

TVirtualTree::THitTest TVirtualTree::HitTest(TPoint point) {
  THitTest hit;
  for (std::size_t i = 0; i < FColumns.size(); ++i) {
    if (point.FX >= GetColumnLeft(i) && point.FX < GetColumnLeft(i + 1)) hit.FColumn = &FColumns[i];
  }
  const std::int32_t top = FShowHeaders ? kHeaderHeight : 0;
  if (point.FY < top || FRowHeight <= 0) return hit;
  const auto& shown = GetShownNodes();
  const std::int64_t row = std::int64_t{FTopRow} + (point.FY - top) / FRowHeight;
  if (row >= 0 && row < static_cast<std::int64_t>(shown.size())) {
    hit.FNode = shown[static_cast<std::size_t>(row)];
  }
  return hit;
}

}  // namespace margindesk
