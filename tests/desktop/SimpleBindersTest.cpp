// What a person does to the single controls reaches the model once; what the program does is no person's.
#include <QTest>

#include <gtest/gtest.h>

#include "terminal/desktop/binders/SimpleBinders.h"

namespace margindesk {
namespace {

struct TCounter {
  void Count() { ++FCount; }
  int FCount = 0;
};

// A model, its widget and how often the model's form was told.
template <class TModel, class TWidget, class TKindBinder>
struct TBound {
  TBound() {
    new TKindBinder(FModel, FWidget);
    FModel.SetOnChange(MakeEvent<&TCounter::Count>(&FCounter));
    FWidget.show();
  }
  TCounter FCounter;
  TModel FModel{nullptr};
  TWidget FWidget;
};

struct TList : TComboBox {
  explicit TList(TComponent* owner) : TComboBox(owner, "list") {}
};

TEST(SimpleBinders, ACheckBoxIsClickedOnceAndFollowsTheProgram) {
  TBound<TCheckBox, QCheckBox, TCheckBoxBinder> box;
  QTest::mouseClick(&box.FWidget, Qt::LeftButton, {}, {8, box.FWidget.height() / 2});
  EXPECT_TRUE(box.FModel.GetChecked());
  EXPECT_EQ(box.FCounter.FCount, 1);
  box.FModel.SetChecked(false);
  EXPECT_FALSE(box.FWidget.isChecked());
  EXPECT_EQ(box.FCounter.FCount, 2) << "the program's own change, without an echo";
}

TEST(SimpleBinders, AListIsChosenFromOnceAlsoWhenItsTextsChange) {
  TBound<TList, QComboBox, TComboBoxBinder> list;
  list.FModel.AddItem("one");
  list.FModel.AddItem("two");
  list.FWidget.setFocus();
  QTest::keyClick(&list.FWidget, Qt::Key_Down);
  EXPECT_EQ(list.FModel.GetItemIndex(), 0);
  QTest::keyClick(&list.FWidget, Qt::Key_Down);
  EXPECT_EQ(list.FModel.GetItemIndex(), 1);
  EXPECT_EQ(list.FCounter.FCount, 2);
  list.FModel.SetItem(1, "zwei");
  EXPECT_EQ(list.FWidget.currentText(), "zwei");
  EXPECT_EQ(list.FCounter.FCount, 2);
}

TEST(SimpleBinders, ATextReachesTheModelKeyByKeyAndTheFormMayWriteItOtherwise) {
  TBound<TTextEdit, QLineEdit, TTextEditBinder> edit;
  edit.FModel.SetUpperCase(true);
  QTest::keyClicks(&edit.FWidget, "a1b");
  EXPECT_EQ(edit.FModel.GetText(), "A1B");
  EXPECT_EQ(edit.FWidget.text(), "A1B");
  EXPECT_EQ(edit.FCounter.FCount, 3);
  QTest::keyClick(&edit.FWidget, Qt::Key_Home);
  QTest::keyClick(&edit.FWidget, 'x');
  EXPECT_EQ(edit.FModel.GetText(), "XA1B");
  EXPECT_EQ(edit.FWidget.cursorPosition(), 1) << "the caret stays where the person types";
  edit.FModel.SetText("program");
  EXPECT_EQ(edit.FWidget.text(), "PROGRAM");
  EXPECT_EQ(edit.FCounter.FCount, 5);
}

TEST(SimpleBinders, ANumberSpinsOnceAStepAndKeepsItsLimits) {
  TBound<TSpinEdit, QDoubleSpinBox, TSpinEditBinder> edit;
  edit.FModel.SetLimits(0, 10);
  edit.FModel.SetNumber(9);
  const int before = edit.FCounter.FCount;
  QTest::keyClick(&edit.FWidget, Qt::Key_Up);
  QTest::keyClick(&edit.FWidget, Qt::Key_Up);
  EXPECT_EQ(edit.FModel.GetNumber(), 10);
  EXPECT_EQ(edit.FCounter.FCount, before + 1);
  edit.FModel.SetNumber(3);
  EXPECT_EQ(edit.FWidget.value(), 3);
  EXPECT_EQ(edit.FCounter.FCount, before + 2);
}

}  // namespace
}  // namespace margindesk
