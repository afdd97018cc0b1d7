#include <QTest>

#include <gmock/gmock.h>

#include "terminal/desktop/ColumnChooser.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

TEST(ColumnChooser, IsWorkedWithTheKeyboardAloneAndKeepsTheReservedColumnShown) {
  const TTestHost host;
  TCustomColumnRecord record;
  record.FAllCaptions = {"Limit", "Cash", "Equity", "Cash"};
  record.FVisibleCaptions = {"Limit", "Cash", "Equity"};
  record.FReservedCaptions = {"Limit"};
  TColumnChooser chooser(record, nullptr);
  chooser.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&chooser));
  const auto press = [](auto key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  };
  press(Qt::Key_Space);  // on the reserved one
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Up, Qt::AltModifier);
  press(Qt::Key_Down);
  press(Qt::Key_Space);
  TColumnAnswer answer = chooser.GetAnswer();
  EXPECT_THAT(answer.FOrder, testing::ElementsAre("Limit", "Equity", "Cash", "Cash"));
  EXPECT_THAT(*answer.FVisible, testing::ElementsAre("Limit", "Equity"));
  for (int i = 0; i < 5; ++i) press(Qt::Key_Up, Qt::AltModifier);
  EXPECT_THAT(chooser.GetAnswer().FOrder, testing::ElementsAre("Cash", "Limit", "Equity", "Cash"));
}

}  // namespace
}  // namespace margindesk
