// The account tree's rows: how a tree walks them.
#include "model/contract/AccountDataControl.h"

namespace margindesk {

namespace {

template <class TList>
auto* ItemAt(const TList& list, std::int32_t index) {
  const bool inside = index >= 0 && static_cast<std::size_t>(index) < list.size();
  return inside ? &*list[static_cast<std::size_t>(index)] : nullptr;
}

}  // namespace

std::int32_t TCustomAccountInfoDataControl::GetCount() {
  return static_cast<std::int32_t>(FRootChildren.size());
}

const TColumnList* TCustomAccountInfoDataControl::GetColList() { return nullptr; }

TVariant TCustomAccountInfoDataControl::GetValue(std::int32_t row, std::int32_t column) {
  return GetValue(ItemAt(FRootChildren, row), column);
}

std::string TCustomAccountInfoDataControl::GetDisplayValue(std::int32_t row, std::int32_t column) {
  return GetDisplayValue(ItemAt(FRootChildren, row), column);
}

bool TCustomAccountInfoDataControl::GetRowValue(std::int32_t row, const void*& value) {
  value = ItemAt(FRootChildren, row);
  return value != nullptr;
}

bool TCustomAccountInfoDataControl::GetColValue(std::int32_t column, const void*& value) {
  value = ItemAt(FColumns, column);
  return value != nullptr;
}

TDataNode* TCustomAccountInfoDataControl::GetParentNode(TDataNode* node) {
  return node == nullptr ? nullptr : node->GetParent();
}

TDataNode* TCustomAccountInfoDataControl::GetNode(std::int32_t index) { return ItemAt(FNodes, index); }

TDataNode* TCustomAccountInfoDataControl::GetChildNode(TDataNode* node, std::int32_t index) {
  return ItemAt(node == nullptr ? FRootChildren : node->GetChildren(), index);
}

std::int32_t TCustomAccountInfoDataControl::GetChildNodeCount(TDataNode* node) {
  return node == nullptr ? GetCount() : static_cast<std::int32_t>(node->GetChildren().size());
}

TDataNode* TCustomAccountInfoDataControl::GetRootNode() { return nullptr; }

}  // namespace margindesk
