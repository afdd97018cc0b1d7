// When a control tells its form and its front of a change.
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/SpinEdit.h"
#include "controls/TextEdit.h"

namespace margindesk {
namespace {

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
  void Set(int value) { SetNumber(value == 0 ? std::numeric_limits<double>::quiet_NaN() : 5); }
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
  EXPECT_EQ(form.Take(), 1);
  EXPECT_EQ(front.Take(), 1);
  control.Same();
  EXPECT_EQ(form.Take(), 0);
  front.Take();
  {
    const TControlUpdate outer(control);
    const TControlUpdate inner(control);
    control.Set(0);
    control.SetHint("x");
    control.Set(1);
    EXPECT_EQ(form.Take(), 2);
    EXPECT_EQ(front.Take(), 0);
  }
  EXPECT_EQ(front.Take(), 1);
  { const TControlUpdate nothing(control); }
  EXPECT_EQ(front.Take(), 0);
}

TEST(ValueControls, KeepWhatHangsOnTheirValueWithinIt) {
  TText text;
  text.Set(1);
  text.SelectAll();
  text.SetText("A");
  EXPECT_EQ(text.GetSelectionLength(), 1);
  text.SetText("");
  EXPECT_EQ(text.GetSelectionStart() + text.GetSelectionLength(), 0);

  TCounter form;
  TSpin spin;
  spin.SetNumber(4);
  spin.SetOnChange(MakeEvent<&TCounter::Count>(&form));
  spin.SetLimits(0, 3);
  EXPECT_EQ(spin.GetNumber(), 3);
  spin.Spin(1);
  EXPECT_EQ(form.Take(), 1) << "it is at its limit";

  TCombo combo;
  combo.Set(1);
  combo.SetOnChange(MakeEvent<&TCounter::Count>(&form));
  combo.Clear();
  EXPECT_EQ(form.Take(), 1);
  EXPECT_EQ(combo.GetText(), "");
}

}  // namespace
}  // namespace margindesk
