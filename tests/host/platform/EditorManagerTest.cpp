#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "controls/AccountEdit.h"
#include "controls/GridTableView.h"
#include "host/services/EditorManager.h"
#include "tests/support/DelegatingAdapters.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

using testing::NiceMock;
using testing::Return;

// The accounts of the host, of which only the asking matters here.
class TAccounts : public TDelegatingAccountAdapter {
 public:
  MOCK_METHOD(const TCustomAccount*, GetAccount, (TCode, bool), (const, override));
};

// A form with an account box, which takes the account over when it is told.
struct TForm {
  TForm() { FBox.SetOnExit(MakeEvent<&TForm::Told>(this)); }
  void Told() {
    FAccounts += FBox.GetHint() + " ";
    std::exchange(FOnTold, [] {})();
  }

  TAccountEdit FBox{nullptr};
  std::string FAccounts;
  std::function<void()> FOnTold = [] {};  // called once
};

class Editors : public testing::Test {
 protected:
  void Register(TForm& form, std::string_view group) {
    FEditors.RegisterAccountEditor(form.FBox, group, false, true);
  }

  TTestHost FHost;
  NiceMock<TAccounts> FAccounts;
  TServiceScope<TCustomAccountAdapter> FInstalledAccounts{FAccounts};
  THostEditorManager FEditors;
  TForm FFirst, FSecond, FThird;
};

TEST_F(Editors, LetTheFormsOfOneGroupFollowEachOtherButNotTheLockedOne) {
  TForm locked;
  locked.FBox.SetEnabled(false);
  for (TForm* form : {&FFirst, &FSecond, &locked}) Register(*form, "red");
  Register(FThird, "blue");
  FEditors.SetAccountLayoutAccount(FSecond.FBox, TCode("C100"));
  EXPECT_EQ(FFirst.FAccounts, "C100 ");
  EXPECT_EQ(FFirst.FBox.GetText(), "C100");
  EXPECT_EQ(FSecond.FAccounts, "C100 ");
  EXPECT_EQ(FThird.FAccounts + locked.FAccounts, "");

  Register(FThird, "red");  // comes empty and takes the group's account
  EXPECT_EQ(FThird.FAccounts, "C100 ");
  FEditors.RemoveAccountEditor(FSecond.FBox);
  FEditors.ChooseAccount(locked.FBox, TCode("C300"));  // a layout or the host may still change it
  EXPECT_EQ(FFirst.FAccounts, "C100 C300 ");
  EXPECT_EQ(FSecond.FAccounts, "C100 ");
  FEditors.ChooseAccount(FThird.FBox, TCode());
  EXPECT_EQ(FThird.FBox.GetHint(), "");
  EXPECT_EQ(FFirst.FBox.GetHint(), "C300") << "emptying is followed by nobody";
}

TEST_F(Editors, BearAToldFormThatClosesOthersAndChoosesAgain) {
  auto closed = std::make_unique<TForm>();
  for (TForm* form : {&FFirst, &FSecond, closed.get(), &FThird}) Register(*form, "red");
  FSecond.FOnTold = [&] {
    FEditors.RemoveAccountEditor(closed->FBox);
    closed.reset();
    FEditors.ChooseAccount(FSecond.FBox, TCode("C200"));
  };
  FEditors.ChooseAccount(FFirst.FBox, TCode("C100"));
  EXPECT_EQ(FFirst.FAccounts, "C100 C200 ");
  EXPECT_EQ(FSecond.FAccounts, "C100 C200 ");
  EXPECT_EQ(FThird.FAccounts, "C200 ") << "told of an account that it no longer shows";
  for (TForm* form : {&FFirst, &FSecond, &FThird}) FEditors.RemoveAccountEditor(form->FBox);
}

TEST_F(Editors, TakeATypedAccountInUpperCaseAndAskForItEvenWhenItIsUnknown) {
  EXPECT_CALL(FAccounts, GetAccount(TCode("C100"), true)).Times(2).WillRepeatedly(Return(nullptr));
  Register(FFirst, "red");
  Register(FSecond, "red");
  Register(FThird, "");
  FFirst.FBox.SetText(" c100 ");
  FFirst.FBox.Exit();
  EXPECT_EQ(FFirst.FAccounts, "C100 ");
  EXPECT_EQ(FSecond.FAccounts, "C100 ");
  FThird.FBox.SetText("c100");
  FThird.FBox.SendMessage(kAccountEditorMessage, 0, 0);
  EXPECT_EQ(FThird.FAccounts, "C100 ");
  FEditors.RemoveAccountEditor(FThird.FBox);
  FThird.FBox.SetText("X");
  FThird.FBox.Exit();
  EXPECT_EQ(FThird.FBox.GetHint(), "C100") << "a box that is no longer registered resolves nothing";
}

class GridLayouts : public Editors {
 protected:
  GridLayouts() {
    for (const std::int32_t id : {25, 0, 3, 4}) {
      FColumns.push_back(TColumnInfo::AddColumn(id, "Res_Column", 100, "", false));
    }
    FColumns[2]->FMinWidth = 40;
    Reset();
  }

  void Reset() {
    std::vector<TGridColumn> columns;
    for (const auto& [tag, caption] : {std::pair(25, ""), {0, "Symbol"}, {3, "Price"}, {4, "Quantity"}}) {
      TGridColumn& column = columns.emplace_back();
      column.FTag = tag;
      column.FCaption = caption;
      column.FWidth = tag == 25 ? 30 : 100;
      column.FNumeric = tag == 4;
    }
    FView.SetColumns(std::move(columns));
  }

  std::string LayoutAfter(std::string_view layout) {
    Reset();
    FEditors.SetGridColumnLayout(FView, layout, FColumns);
    return FEditors.GetGridColumnLayout(FView, FColumns);
  }

  TColumnList FColumns;
  TGridTableView FView{nullptr};
};

TEST_F(GridLayouts, ComeBackAsSavedWithOtherColumnsBehindAndLeaveTheGridAloneWhenDamaged) {
  const std::string saved = "3,0,80,D,1;0,1,120,A,0;25,1,30,N,-1;4,1,0,N,-1;";
  EXPECT_EQ(LayoutAfter(saved), saved);
  EXPECT_EQ(FView.GetColumns()[0].FSortOrder, TSortOrder::Descending);
  EXPECT_TRUE(FView.GetColumns()[3].FNumeric) << "what a column is besides stays with it";
  EXPECT_EQ(LayoutAfter("4,1,50,N,-1;77,1,50,N,-1;3,1,10,N,-1;"),
            "4,1,50,N,-1;3,1,40,N,-1;25,1,30,N,-1;0,1,100,N,-1;");  // 40: the column's least width
  for (const char* damaged :
       {"", "77,1,50,N,-1;", "4,1,50,N,-1", "4,1,50,N;", "4,2,50,N,-1;", "4,1,-5,N,-1;", "4,1,50,X,-1;",
        "4,1,50,A,-1;", "4,1,50,N,0;", "four,1,50,N,-1;", "4,1,50,N,-1;4,0,50,N,-1;"}) {
    EXPECT_EQ(LayoutAfter(damaged), "25,1,30,N,-1;0,1,100,N,-1;3,1,100,N,-1;4,1,100,N,-1;") << damaged;
  }
}

}  // namespace
}  // namespace margindesk
