// When the control models tell of a change, and the rows of trees and grids while their data comes and goes.
#include <cmath>

#include <gmock/gmock.h>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/ComboBoxProperties.h"
#include "controls/GridTableView.h"
#include "controls/SpinEdit.h"
#include "controls/SpinEditProperties.h"
#include "controls/TextEdit.h"
#include "controls/VirtualTree.h"
#include "model/contract/Positionviewdatacontrol.h"
#include "tests/accountinfo/AccountTreeFixture.h"

namespace margindesk {
namespace {

using testing::ElementsAre;

struct TCounter {
  void Count() { ++FCount; }
  int Take() { return std::exchange(FCount, 0); }
  int FCount = 0;
};

// A control of each kind that holds a value. Set(0) and Set(1) give it two values; Same sets the second one
// again, in another form where the control knows one.
struct TText : TTextEdit {
  TText() : TTextEdit(nullptr) { SetUpperCase(true); }
  void Set(int value) { SetText(value == 0 ? "" : "ABC"); }
  void Same() { SetText("abc"); }
};
struct TCombo : TComboBox {
  TCombo() : TComboBox(nullptr, "") { AddItem("one"); }
  void Set(int value) { SetItemIndex(value - 1); }
  void Same() { SetItem(0, "other"); }
};
struct TCheck : TCheckBox {
  TCheck() : TCheckBox(nullptr) {}
  void Set(int value) { SetChecked(value != 0); }
  void Same() { SetChecked(true); }
};
struct TSpin : TSpinEdit {
  TSpin() : TSpinEdit(nullptr) { SetLimits(-5, 5); }
  void Set(int value) { SetNumber(value == 0 ? std::nan("") : 5); }
  void Same() { SetNumber(9); }
};

template <class TControlKind>
class ValueControlTest : public testing::Test {};
using TKinds = testing::Types<TText, TCombo, TCheck, TSpin>;
TYPED_TEST_SUITE(ValueControlTest, TKinds);

TYPED_TEST(ValueControlTest, TellsItsFormOfEveryRealChangeAtOnceAndItsFrontOncePerBatch) {
  TypeParam control;
  TCounter form, front;
  control.Set(0);
  control.SetOnChange(MakeEvent<&TCounter::Count>(&form));
  control.SetOnUpdate(MakeEvent<&TCounter::Count>(&front));
  control.Set(0);
  EXPECT_EQ(form.Take() + front.Take(), 0) << "it is what it was";
  control.Set(1);
  EXPECT_EQ(form.Take() + front.Take(), 2);
  control.Same();
  EXPECT_EQ(form.Take(), 0);
  front.Take();
  {
    const TControlUpdate outer(control), inner(control);
    control.Set(0);
    control.Set(1);
    EXPECT_EQ(form.Take(), 2);
    EXPECT_EQ(front.Take(), 0);
  }
  EXPECT_EQ(front.Take(), 1);
}

TEST(TextEditTest, KeepsItsSelectionWithinItsText) {
  TText text;
  text.Set(1);
  text.SelectAll();
  text.SetText("A");
  EXPECT_EQ(text.GetSelectionLength(), 1);
}

struct ControlRows : AccountTree {
  ControlRows() { AddAccount("A1"); }
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
  std::vector<TGridColumn> columns(2);
  columns[0].FTag = 1;
  columns[1].FTag = 2;
  columns[0].FAllowEditing = columns[1].FAllowEditing = true;
  columns[1].FAllowSorting = false;
  columns[0].FOnValidate = MakeEvent<&TForm::Validate>(&form);
  grid.SetColumns(columns);
  grid.SetOnEditing(MakeEvent<&TForm::Editing>(&form));
  grid.SetMultiSelect(true);
  grid.SetRecordCount(4);
  EXPECT_EQ(grid.EditCell(0, 1, TVariant::Float(3)), "");
  EXPECT_EQ(grid.EditCell(0, 1, TVariant::Float(-1)), "not this");
  for (const std::int32_t tag : {2, 9}) EXPECT_NE(grid.EditCell(0, tag, TVariant::Float(1)), "") << tag;
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Float(6));
  grid.SetValue(1, 1, TVariant::Float(1));
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

TEST_F(ControlRows, EditorOfACellTakesWhatItsKindHoldsAndChangesTheCellWhenItIsCommitted) {
  TComboBoxProperties list(nullptr);
  list.FItems = {"one", "two"};
  list.FAllowEmpty = false;
  TSpinEditProperties spin(nullptr);
  spin.FMinimum = 0;
  spin.FMaximum = 10;
  spin.FIncrement = 4;
  TGridTableView grid(nullptr, "grid");
  std::vector<TGridColumn> columns(2);
  for (const std::size_t i : {0U, 1U}) columns[i].FTag = static_cast<std::int32_t>(i);
  columns[0].FProperties = &list;
  columns[1].FProperties = &spin;
  columns[0].FAllowEditing = columns[1].FAllowEditing = true;
  grid.SetColumns(columns);
  grid.SetRecordCount(2);
  const auto type = [&grid](std::int32_t tag, const char* text) {
    return grid.EditCell(0, tag, TVariant::Text(text));
  };
  EXPECT_EQ(type(0, "two"), "");
  EXPECT_EQ(type(1, " 7.5 "), "");
  for (const char* text : {"three", "", "Two"}) EXPECT_NE(type(0, text), "") << text;
  for (const char* text : {"x", "1e300", "nan", "7,5"}) EXPECT_NE(type(1, text), "") << text;
  EXPECT_EQ(grid.GetValue(0, 0), TVariant::Text("two"));
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Float(7.5));
  EXPECT_EQ(grid.SpinCell(0, 1, 2, false), "");
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Float(10));
  EXPECT_EQ(grid.SpinCell(0, 1, -9, true), "");
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Float(0));
  EXPECT_EQ(type(1, ""), "");
  EXPECT_EQ(grid.GetValue(0, 1), TVariant::Null());

  grid.OpenEditor(0, 0);
  grid.ChooseInEditor(0);
  grid.OpenEditor(1, 0);
  EXPECT_EQ(grid.GetValue(0, 0), TVariant::Text("one")) << "committed when the next one opens";
  grid.SetValue(1, 0, TVariant::Text("two"));
  grid.CommitEditor();
  EXPECT_EQ(grid.GetValue(1, 0), TVariant::Text("two")) << "nothing was typed";
  grid.OpenEditor(1, 0);
  grid.ChooseInEditor(0);
  grid.DeleteRecord(0);
  EXPECT_EQ(grid.CommitEditor(), "");
  EXPECT_EQ(grid.GetValue(0, 0), TVariant::Text("one")) << "the editor follows its row";
  grid.OpenEditor(0, 0);
  grid.DeleteRecord(0);
  EXPECT_EQ(grid.GetEditor(), nullptr);
}

TEST_F(ControlRows, TreeKeepsWhichRowsAreOpenOverARebuildAndFindsThemUnderThePointer) {
  AddFigures("A1", "", {});
  AddFigures("A1", "HKD", {});
  TColumnList list;
  AppendCatalogueColumns("CashBalance,Equity", list);
  TCustomTreeDataSource source(list, &CreateTreeDataControl<TOpenControl>);
  TVirtualTree tree(nullptr, "tree");
  std::vector<TTreeColumn> columns(2);
  columns[0].FTag = kCellCaption;
  columns[1].FTag = kCellValue;
  tree.SetColumns(columns);
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
  AddFigures("A1", "USD", {});
  FHost.RunLoop();
  EXPECT_EQ(at(0, 19), "21 -") << "the headers";
  EXPECT_EQ(at(50, 20 + 4 * 18 - 1), "3 US Dollar") << "the second field is still open";
  const TVirtualTreeNode& hidden = *tree.GetNodes()[1];
  tree.MakeVisible(hidden);
  EXPECT_EQ(tree.GetCellRect(hidden, tree.GetColumns()[1]), (TRect{50, 20 + 18, 51, 18}));
}

}  // namespace
}  // namespace margindesk
