#include "terminal/cli/AccountTree.h"

#include <algorithm>

#include "model/AccountInfoConstDef.h"
#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

class TTreeReader {
 public:
  TTreeReader(TCustomAccountInfoDataControl& control, const TColumnList& columns)
      : FControl(control), FColumns(columns) {}

  std::vector<TAccountTreeRow> ReadChildren(TDataNode* parent) {
    std::vector<TAccountTreeRow> rows;
    const std::int32_t count = FControl.GetChildNodeCount(parent);
    rows.reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) rows.push_back(ReadRow(FControl.GetChildNode(parent, i)));
    return rows;
  }

 private:
  TAccountTreeRow ReadRow(TDataNode* node) {
    TAccountTreeRow row;
    const TAccountNodePlace place = GetAccountNodePlace(*node);
    row.FField = place.FField;
    row.FIsTotal = place.FIsTotal;
    row.FCurrency = place.FCurrency;
    row.FKey = GetKey(row.FField);
    row.FCaption = FControl.GetDisplayValue(node, kCellCaption);
    row.FText = FControl.GetDisplayValue(node, kCellValue);
    row.FValue = FControl.GetValue(node, kCellValue);
    row.FChildren = ReadChildren(node);
    return row;
  }

  std::string GetKey(std::int32_t field) const {
    const bool period = field >= kFirstPeriodField && field < kFirstCustomField;
    const std::int32_t columnField = period ? kFieldStatus : field;
    const auto column = std::ranges::find_if(
        FColumns, [columnField](const auto& candidate) { return candidate->FId == columnField; });
    return column == FColumns.end() ? std::string() : (*column)->FKey;
  }

  TCustomAccountInfoDataControl& FControl;
  const TColumnList& FColumns;
};

}  // namespace

TAccountNodePlace GetAccountNodePlace(const TDataNode& node) {
  if (const auto* attribute = dynamic_cast<const TAccountDataNode*>(&node)) {
    return {attribute->GetAttribute(), false, {}};
  }
  if (const auto* value = dynamic_cast<const TAccountDataValueNode*>(&node)) {
    return {value->GetAttribute(), value->GetCurrency().IsEmpty(), value->GetCurrency()};
  }
  if (const auto* converted = dynamic_cast<const TConvertAccountDataValueNode*>(&node)) {
    return {converted->GetAttribute(), false, converted->GetCurrency()};
  }
  return {};
}

std::vector<TAccountTreeRow> ReadAccountTree(TCustomAccountInfoDataControl& control,
                                             const TColumnList& columns) {
  return TTreeReader(control, columns).ReadChildren(nullptr);
}

}  // namespace margindesk
