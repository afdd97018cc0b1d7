// An account box as a person types into it.
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/contract/EditorManager.h"
#include "terminal/desktop/binders/AccountBox.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

class AccountBox : public testing::Test {
 protected:
  AccountBox() {
    SetKnownAccounts([] {
      return std::vector<TKnownAccount>{{"A1", "Amber Quill"}, {"A2", "Birch"}, {"B12", "Amber"}};
    });
    TEditorManager::GetInstance().RegisterAccountEditor(FEdit, "", false, true);
    new TAccountBoxBinder(FEdit, FWidget);
    FWidget.show();
    Type("a1", Qt::Key_Return);
  }
  ~AccountBox() override {
    TEditorManager::GetInstance().RemoveAccountEditor(FEdit);
    SetKnownAccounts({});
  }

  void Type(const char* text, Qt::Key key) {
    FWidget.selectAll();
    QTest::keyClicks(&FWidget, text);
    QTest::keyClick(&FWidget, key);
    QCoreApplication::processEvents();
  }

  TTestHost FHost{TTestBook()};
  TAccountEdit FEdit{nullptr, "box"};
  QLineEdit FWidget;
};

TEST_F(AccountBox, TakesACodeOrWhatOneAccountAloneHas) {
  EXPECT_EQ(FEdit.GetHint(), "A1");
  Type("bir", Qt::Key_Return);
  EXPECT_EQ(FEdit.GetHint(), "A2");
  EXPECT_EQ(FWidget.text(), "A2");
  EXPECT_TRUE(FHost.Messages().empty());
}

TEST_F(AccountBox, LeavesTheChosenAccountWhenNobodyKnowsTheTypedOneOrEscapeIsPressed) {
  Type("amber", Qt::Key_Return);
  EXPECT_THAT(FHost.Messages(), testing::ElementsAre(testing::HasSubstr("amber"))) << "two have it";
  EXPECT_EQ(FWidget.text(), "A1");
  Type("B12", Qt::Key_Escape);
  EXPECT_EQ(FEdit.GetText(), "A1");
}

}  // namespace
}  // namespace margindesk
