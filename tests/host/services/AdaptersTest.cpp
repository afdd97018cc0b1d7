#include <gtest/gtest.h>

#include "model/contract/AccountAdapter.h"
#include "tests/support/TestHost.h"

namespace margindesk {

TEST(AdaptersTest, AnAccountOfTheBookIsFoundAndAnotherIsNot) {
  TTestBook book;
  book.Currency("HKD", 1);
  book.Account("A1").Figures("HKD").Set(TFigure::kCashBalance, 100);
  TTestHost host(book);
  const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(TCode("A1"));
  ASSERT_NE(account, nullptr);
  EXPECT_EQ(account->GetCurrencyData(TCode("HKD"))->GetCashBalance(), 100);
  EXPECT_EQ(account->GetCurrencyData(TCode("USD")), nullptr);
  EXPECT_EQ(TCustomAccountAdapter::GetInstance().GetAccount(TCode("A2")), nullptr);
}

}  // namespace margindesk
