// What a person confirms, and what no key held too long confirms for him.
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "model/contract/Constdef.h"
#include "terminal/desktop/BatchWindow.h"
#include "terminal/desktop/Dialogs.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

class Confirmation : public testing::Test {
 protected:
  // Presses the keys when the question has come up.
  static void Press(std::vector<Qt::Key> keys) {
    QTimer::singleShot(50, [keys = std::move(keys)] {
      for (const Qt::Key key : keys) {
        if (QApplication::focusWidget() != nullptr) QTest::keyClick(QApplication::focusWidget(), key);
      }
      if (QWidget* open = QApplication::activeModalWidget()) open->close();
    });
  }
  bool Ask(std::vector<Qt::Key> keys) {
    Press(std::move(keys));
    return FMessages.ShowConfirmation("Close the position?") == kConfirmationYes;
  }
  static bool AskForOrders(std::vector<Qt::Key> keys) {
    Press(std::move(keys));
    return AskForBatch({}, nullptr);
  }

  const TTestHost FHost;
  TMessageWindows FMessages;
};

TEST_F(Confirmation, IsNeverGivenByEnterWhereverTheFocusIs) {
  for (const std::vector<Qt::Key>& keys : {std::vector{Qt::Key_Return},
                                           {Qt::Key_Tab, Qt::Key_Return},
                                           {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Enter}}) {
    EXPECT_FALSE(Ask(keys)) << keys.size();
    EXPECT_FALSE(AskForOrders(keys)) << keys.size();
  }
  EXPECT_TRUE(Ask({Qt::Key_Tab, Qt::Key_Space}));
  EXPECT_TRUE(AskForOrders({Qt::Key_Backtab, Qt::Key_Space}));
}

}  // namespace
}  // namespace margindesk
