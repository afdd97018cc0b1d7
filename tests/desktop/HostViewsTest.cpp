#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

#include "host/services/ClientOrderRecord.h"
#include "model/contract/Constdef.h"
#include "terminal/desktop/views/HostViews.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

TTestBook MakeBook() {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Product("IDX", "HKD", 25000);
  for (const char right : {'C', 'P'}) {
    TProductFacts& option = book.Product(std::string("OPT") + right, "HKD", 400);
    option.FProductType = 3;
    option.FOptionRight = right;
    option.FStrike = 26000;
    option.FUnderlying = TCode("IDX");
    option.FContractSize = 10;
    option.FExpiry = "2999-01-28";
  }
  book.Account("A1").FName = "Amber";
  book.Account("A2").FName = "Birch";
  book.Position("A1", "OPTC", -2).FAveragePrice = 500;
  book.Position("A1", "OPTP", -2).FAveragePrice = 500;
  return book;
}

class HostViews : public testing::Test {
 protected:
  // What the texts of the docks say, one after the other.
  QString Texts() const {
    QString all;
    for (const auto* dock : FWindow.findChildren<THostDock*>()) {
      all += dock->windowTitle() + u'\n';
      for (const auto* label : dock->findChildren<QLabel*>()) all += label->text() + u'\n';
    }
    return all.replace(QChar::Nbsp, u' ').remove(QChar(0x2060));  // as it reads
  }

  void AskForPage(const char* account, std::int32_t mode) {
    TWebViewRecord record;
    record.FAccount = account;
    record.FSender = "1";
    record.FMode = mode;
    FHost.Channels().SendChannelMessage(kMessageMoreInfo, &record);
  }

  TTestHost FHost{MakeBook()};
  QMainWindow FWindow;
  THostViews FViews{FHost, FWindow};
};

TEST_F(HostViews, ThePayOffFollowsWhatThePersonSetsAndTakesNoFigureOfItsOwnForHis) {
  TClientOrderRecord order;
  order.SetAccount(TCode("A1"));
  ASSERT_TRUE(FHost.Calls().OpenCustomView(nullptr, kViewOptionsPayOff, 0, &order, false, true));
  FWindow.show();
  EXPECT_TRUE(Texts().contains("Maximum profit: 10,000.00     Maximum loss: unlimited"));
  auto* volatility = FWindow.findChild<QDoubleSpinBox*>();
  volatility->clearFocus();
  FWindow.findChild<THostDock*>()->Refresh();
  EXPECT_FALSE(Texts().contains("that you set"));

  QTest::mouseClick(FWindow.findChild<QCheckBox*>(), Qt::LeftButton, {}, {8, 8});
  EXPECT_TRUE(Texts().contains("Maximum profit: 20,000.00"));  // both sides of a straddle sold at 1,000
  QTest::keyClick(volatility, Qt::Key_Up);
  EXPECT_TRUE(Texts().contains("that you set"));
}

TEST_F(HostViews, TheInformationPageFollowsItsViewAndGoesWithIt) {
  AskForPage("A1", 1);
  EXPECT_TRUE(Texts().isEmpty()) << "nobody opened it";
  AskForPage("A1", 2);
  EXPECT_TRUE(Texts().contains("Amber"));
  AskForPage("A2", 1);
  EXPECT_TRUE(Texts().contains("Birch"));
  EXPECT_FALSE(Texts().contains("Amber"));
  AskForPage("A2", 3);
  EXPECT_TRUE(Texts().isEmpty());
}

TEST_F(HostViews, TheQuotesFollowTheLinkedSymbolAndShowWhereItsPriceWent) {
  FHost.Channels().PostChannelData(kChannelLinkedSymbol, "OPTC", nullptr, 0);
  FHost.Channels().PostChannelData(kChannelLinkedSymbol, "IDX", nullptr, 0);
  ASSERT_EQ(FWindow.findChildren<THostDock*>().size(), 1);
  FHost.Data().SetPrice(TCode("IDX"), {24750, 24750, 24751, 25000, 0});
  FWindow.findChild<THostDock*>()->Refresh();
  EXPECT_TRUE(Texts().contains(QString::fromUtf8("24,750.000 ▼"))) << Texts().toStdString();
  EXPECT_TRUE(Texts().contains("-1.00 %"));
  FHost.RunLoop();
}

}  // namespace
}  // namespace margindesk
