#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/book/Book.h"
#include "host/services/HostContentsOfBook.h"
#include "model/contract/AccountAdapter.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

class BookContentsTest : public testing::Test {
 protected:
  void Import(const TBookTexts& texts) {
    WriteBookTexts(FFolder.Path() / "csv", texts);
    FBook.Import(FFolder.Path() / "csv");
  }

  TTemporaryFolder FFolder;
  TBook FBook{FFolder.Path() / "book.db", TStoreMode::kCreate};
};

TEST_F(BookContentsTest, ABookIsReadAsItWasWritten) {
  TBookTexts texts = SmallBookTexts();
  // Other rows below the header of a file: a value in every column, each different from its neighbours.
  const auto write = [&texts](const std::string& file, const std::string& rows) {
    std::string& text = texts.at(file);
    text = text.substr(0, text.find('\n') + 1) + rows + "\n";
  };
  write("settings.csv", "multi_currency,N\nchina_connect,Y");
  write("currencies.csv", "HKD,1,N,Y\nUSD,7.8,Y,N");
  write("exchanges.csv", "HK,,N,0,Y\nSH,,Y,,N");
  write("products.csv", "5,Bank,HK,HKD,6,400,0.01,10,Y,1000,50,HKEQ,,,,");
  write("prices.csv", "5,60,59.9,60.1,58,58.5");
  write("accounts.csv", "M1,,,,,10,0,,,0,,,0,N,,\nA1,Lee,u1,S,M1,,5,123,a@b,2048,08:00,B,-1,Y,Cross,Lot");
  write("positions.csv", "A1,5 short,5,101,102,103,104,105,107,106,Y,108,109,110,111,112,113,S,115,116,114");
  Import(texts);

  TTestBook expected;
  expected.FMultiCurrency = false;
  expected.FChinaConnect = true;
  expected.Currency("HKD", 1);
  expected.Currency("USD", 7.8).FExcluded = true;
  expected.Exchange("HK").FPeriodOrder = 0;
  expected.Exchange("SH", false).FChinaConnect = true;
  expected.FProducts = {
      {TCode("5"), "Bank", TCode("HK"), TCode("HKD"), 6, 400, 0.01, 10, true, 1000, 50, TCode("HKEQ"), true}};
  expected.FPrices = {{TCode("5"), {60, 59.9, 60.1, 58, 58.5}}};
  expected.Account("M1").FMasterType = 10;
  // clang-format off
  expected.FAccounts.push_back({TCode("A1"), "Lee", "u1", "S", TCode("M1"), std::nullopt, 5, "123", "a@b", 2048,
                                "08:00", "B", -1, true, "Cross", "Lot", {{"ClientFeature", "2"}}, {{"f1", "3"}},
                                {{"b1", {{TCode("HKD"), 1000.0}}}}, TCode("M1")});
  // clang-format on
  const auto figuresFrom = [](TFigureFacts& facts, double first) -> TFigureFacts& {
    for (double& figure : facts.FFigures) figure = first++;
    return facts;
  };
  figuresFrom(expected.Figures("A1", ""), 1).FCustomFigures = {{1, "gold"}};
  figuresFrom(expected.Figures("A1", "HKD"), 2).FCustomFigures = {{2, "12.5"}};
  figuresFrom(expected.Figures("A1", "USD"), 3).FSeparateRow = true;
  expected.FConsolidated.emplace_back().FAccount = TCode("M1");
  figuresFrom(expected.FConsolidated[0], 4);
  expected.FPositions = {{TCode("A1"), "5 short", TCode("5"), 101, 102, 103, 104, 105, 106, 107, true,
                          true,        108,       109,        110, 111, 112, 113, 114, 115, 116}};
  expected.FCustomFieldKeys = {{{"oms_CustomAccountInfo", "RPQLevel"}, "f1"},
                               {{"oms_CustomAccountBalance", "CreditLimit"}, "b1"}};

  const THostContents contents = ReadHostContents(FBook);
  EXPECT_TRUE(contents.FAccounts == expected.FAccounts);
  EXPECT_TRUE(contents.FPositions == expected.FPositions);
  EXPECT_TRUE(contents == expected) << "another part, where the two above agree";
}

TEST_F(BookContentsTest, AReloadedBookIsPublishedAsAWhole) {
  Import(SmallBookTexts());
  TReferenceHostOptions options;
  options.FLanguageDirectory = MARGINDESK_SOURCE_DIR "/resources/languages";
  TReferenceHost host(FBook, options);
  EXPECT_FALSE(host.Data().HasChanges()) << "nobody was there to be told of the first load";
  TRecorder recorder;
  auto& accounts = TCustomAccountAdapter::GetInstance();
  accounts.AddAccountInfoLoadHandler(recorder.Accounts(), &recorder);
  FBook.Upsert(std::vector{TBookRow(TTable::kAccounts).SetText(0, "new")});
  EXPECT_EQ(accounts.GetAccount(TCode("new")), nullptr);
  host.Reload(FBook);
  EXPECT_NE(accounts.GetAccount(TCode("new")), nullptr);
  host.Loop().RunOnce();
  EXPECT_THAT(recorder.Take(),
              testing::ElementsAre(testing::AllOf(testing::HasSubstr("A1"), testing::HasSubstr("new"))));
  accounts.RemoveAccountInfoLoadHandler(&recorder);
}

}  // namespace
}  // namespace margindesk
