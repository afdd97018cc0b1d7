// The rows of trees and grids while the data behind them comes and goes.
#include <cmath>

#include <gmock/gmock.h>

#include "controls/GridTableView.h"
#include "controls/VirtualTree.h"
#include "model/contract/Positionviewdatacontrol.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

class ControlRows : public AccountTree {
 protected:
  ControlRows() { AddAccount("A1"); }

  template <class TColumn>
  static std::vector<TColumn> MakeColumns(std::initializer_list<std::int32_t> tags) {
    std::vector<TColumn> columns;
    for (const std::int32_t tag : tags) columns.emplace_back().FTag = tag;
    return columns;
  }
};

TEST_F(ControlRows, FocusAndSelectionOfAGridFollowTheirRowsAndNeverSlideOntoAnotherOne) {
  for (const std::string_view symbol : {"BBB", "DDD", "FFF"}) AddPosition("A1", symbol, 1);
  TCustomGridDataSource source(&CreateGridDataControl<TPositionViewDataControl>);
  TGridTableView grid(nullptr, "grid");
  grid.SetMultiSelect(true);
  grid.SetDataSource(&source);
  static_cast<TPositionViewDataControl*>(source.GetDataControl())->SetAccount(Code("A1"));
  grid.SetFocusedRecordIndex(1);
  grid.SetSelection({1, 2, 7});
  AddPosition("A1", "CCC", 1);
  FHost.Data().RemovePosition(Code("A1"), "FFF");
  FHost.RunLoop();
  EXPECT_EQ(grid.GetFocusedRecordIndex(), 2);
  EXPECT_THAT(grid.GetSelection(), ElementsAre(2));
  FHost.Data().RemovePosition(Code("A1"), "DDD");
  AddPosition("A1", "EEE", 1);
  FHost.RunLoop();
  EXPECT_EQ(grid.GetRecordCount(), 3);
  EXPECT_EQ(grid.GetFocusedRecordIndex(), -1);
}

TEST_F(ControlRows, GridOfItsOwnRecordsSortsThemAndRefusesWhatCannotBeEdited) {
  struct TForm {
    void Editing(const TGridColumn& column, bool& allowed) { allowed = column.FTag != 2; }
    void Validate(TVariant& value, std::string& refusal) {
      if (value.AsFloat() < 0) refusal = "not this";
      value = TVariant::Float(value.AsFloat() * 2);
    }
  } form;
  TGridTableView grid(nullptr, "grid");
  auto columns = MakeColumns<TGridColumn>({1, 2, 3});
  columns[0].FAllowEditing = columns[1].FAllowEditing = true;
  columns[1].FAllowSorting = false;
  columns[0].FOnValidate = MakeEvent<&TForm::Validate>(&form);
  grid.SetColumns(columns);
  grid.SetOnEditing(MakeEvent<&TForm::Editing>(&form));
  grid.SetMultiSelect(true);
  grid.SetRecordCount(4);
  const auto edit = [&](std::int32_t record, std::int32_t tag, double value) {
    return grid.EditCell(record, tag, TVariant::Float(value));
  };
  EXPECT_EQ(edit(0, 1, 3), "");
  EXPECT_EQ(edit(1, 1, 1), "");
  EXPECT_EQ(edit(0, 1, -1), "not this");
  for (const std::int32_t tag : {2, 3, 9}) EXPECT_NE(edit(0, tag, 1), "") << tag;
  EXPECT_NE(edit(4, 1, 1), "");
  grid.SetEnabled(false);
  EXPECT_NE(edit(0, 1, 1), "");
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Float(6));

  grid.SetValue(2, 1, TVariant::Float(std::nan("")));
  grid.SetValue(3, 1, TVariant::Float(4));
  grid.SetSorting(1, TSortOrder::Descending);
  for (const std::int32_t tag : {2, 9}) grid.SetSorting(tag, TSortOrder::Ascending);
  EXPECT_THAT(grid.GetDisplayOrder(), ElementsAre(0, 3, 1, 2));
  grid.SetFocusedRecordIndex(1);
  grid.SetSelection({0, 1, 3});
  grid.DeleteRecord(0);
  EXPECT_EQ(grid.GetFocusedRecordIndex(), 0);
  EXPECT_THAT(grid.GetSelection(), ElementsAre(0, 2));
  grid.SetRecordCount(1);
  EXPECT_THAT(grid.GetSelection(), ElementsAre(0));
}

TEST_F(ControlRows, TreeKeepsWhichRowsAreOpenOverARebuildAndFindsThemUnderThePointer) {
  AddFigures("A1", "", {});
  AddFigures("A1", "HKD", {});
  TColumnList list;
  AppendCatalogueColumns("CashBalance,Equity", list);
  TCustomTreeDataSource source(list, &CreateTreeDataControl<TOpenControl>);
  TVirtualTree tree(nullptr, "tree");
  tree.SetColumns(MakeColumns<TTreeColumn>({kCellCaption, kCellValue}));
  tree.SetColumnAutoWidth(true);
  tree.SetWidth(101);
  tree.SetDataSource(&source);
  static_cast<TOpenControl*>(source.GetDataControl())->SetAccount(Code("A1"));
  // The caption of the row under a point, after that of the column.
  const auto at = [&](std::int32_t x, std::int32_t y) {
    const TVirtualTree::THitTest hit = tree.HitTest({x, y});
    return (hit.FColumn == nullptr ? "-" : std::to_string(hit.FColumn->FTag)) + " " +
           (hit.FNode == nullptr ? "-" : tree.GetDisplayText(hit.FNode, tree.GetColumns()[0]));
  };
  tree.SetExpanded(*tree.GetShownNodes()[1], true);
  ASSERT_EQ(tree.GetShownNodes().size(), 3U);
  AddFigures("A1", "USD", {});
  FHost.RunLoop();
  ASSERT_EQ(tree.GetShownNodes().size(), 4U) << "the second field is still open";
  EXPECT_EQ(tree.GetNodes().size(), 6U);
  EXPECT_EQ(at(0, 19), "21 -") << "the headers";
  EXPECT_EQ(at(49, 20), "21 " + Text("Res_CashBalance"));
  EXPECT_EQ(at(50, 20 + 4 * 18 - 1), "3 US Dollar");
  EXPECT_EQ(at(101, 20 + 4 * 18), "- -");
  tree.SetTopRow(3);
  EXPECT_EQ(at(100, 20), "3 US Dollar");
  const TVirtualTreeNode& hidden = *tree.GetNodes()[1];
  EXPECT_EQ(tree.GetCellRect(hidden, tree.GetColumns()[0]), TRect());
  tree.MakeVisible(hidden);
  EXPECT_EQ(tree.GetCellRect(hidden, tree.GetColumns()[1]), (TRect{50, 20 - 2 * 18, 51, 18}));
  tree.SetDataSource(nullptr);
  EXPECT_TRUE(tree.GetNodes().empty());
}

}  // namespace
}  // namespace margindesk
