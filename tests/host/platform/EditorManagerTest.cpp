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

class Editors : public testing::Test {
 protected:
  void Register(TAccountEdit& edit, std::string_view group) {
    FEditors.RegisterAccountEditor(edit, group, false, true);
  }

  TTestHost FHost;
  NiceMock<TAccounts> FAccounts;
  TServiceScope<TCustomAccountAdapter> FInstalledAccounts{FAccounts};
  THostEditorManager FEditors;
  TAccountEdit FFirst{nullptr}, FSecond{nullptr}, FThird{nullptr};
};

TEST_F(Editors, LetTheBoxesOfOneGroupFollowEachOther) {
  Register(FFirst, "red");
  Register(FSecond, "red");
  Register(FThird, "blue");
  FEditors.SetAccountLayoutAccount(FSecond, TCode("C100"));
  EXPECT_EQ(FFirst.GetHint(), "C100");
  EXPECT_EQ(FFirst.GetText(), "C100");
  EXPECT_EQ(FThird.GetHint(), "");

  Register(FThird, "red");  // comes empty and takes the group's account
  EXPECT_EQ(FThird.GetHint(), "C100");
  FEditors.RemoveAccountEditor(FSecond);
  FEditors.ChooseAccount(FThird, TCode("C300"));
  EXPECT_EQ(FFirst.GetHint(), "C300");
  EXPECT_EQ(FSecond.GetHint(), "C100");
}

TEST_F(Editors, TakeATypedAccountInUpperCaseAndAskForItEvenWhenItIsUnknown) {
  Register(FFirst, "");
  Register(FSecond, "");
  FFirst.SetText(" c100 ");
  EXPECT_CALL(FAccounts, GetAccount(TCode("C100"), true)).WillOnce(Return(nullptr));
  FEditors.CommitAccountText(FFirst);
  EXPECT_EQ(FFirst.GetHint(), "C100");
  EXPECT_EQ(FSecond.GetHint(), "") << "boxes without a group keep to themselves";
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
    FView.SetColumns({{25, "", 30, true, TSortOrder::None, -1},
                      {0, "Symbol", 100, true, TSortOrder::None, -1},
                      {3, "Price", 100, true, TSortOrder::None, -1},
                      {4, "Quantity", 100, true, TSortOrder::None, -1}});
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
