#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/book/Book.h"
#include "host/services/BookChange.h"
#include "host/services/HostContentsOfBook.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"
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
  write("products.csv", "5,Bank,HK,HKD,6,400,0.01,10,Y,1000,50,HKEQ,5,12.5,2031-06-15,P");
  write("prices.csv", "5,60,59.9,60.1,58,58.5");
  write("accounts.csv", "M1,,,,,10,0,,,0,,,0,N,,\nA1,Lee,u1,S,M1,,5,123,a@b,2048,08:00,B,-1,Y,Cross,Lot");
  for (const std::string name : {"spread_bands", "order_options", "margins", "charges", "orders", "fills"}) {
    write(name + ".csv", "");
    texts.at(name + ".csv").pop_back();
  }
  write("positions.csv", "A1,5 short,5,101,102,103,104,105,107,106,Y,108,109,110,111,112,113,S,115,116,114");
  Import(texts);

  TTestBook expected;
  expected.FMultiCurrency = false;
  expected.FChinaConnect = true;
  expected.Currency("HKD", 1);
  expected.Currency("USD", 7.8).FExcluded = true;
  expected.Exchange("HK").FPeriodOrder = 0;
  expected.Exchange("SH", false).FChinaConnect = true;
  expected.FProducts = {{TCode("5"), "Bank", TCode("HK"), TCode("HKD"), 6, 400, 0.01, 10, true, 1000, 50,
                         TCode("HKEQ"), TCode("5"), 12.5, 'P', true, "2031-06-15"}};
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

TEST_F(BookContentsTest, ABookingIsWrittenWholeOrNotAtAllAndReadAgainFactForFact) {
  Import(SmallBookTexts());
  THostContents expected = ReadHostContents(FBook);
  EXPECT_TRUE(expected.FMargins ==
              (std::vector<TMarginFacts>{{TCode("90001"), 0.4, 0.3, 0.01, 0.6, 1, 2, 3, 4}}));
  EXPECT_TRUE(expected.FCharges == (std::vector<TChargeFacts>{{TCode("HK"), 0.001, 0.5, 30}}));
  EXPECT_TRUE(expected.FOrderOptions[1] == (TOrderOptionFacts{TCode("HK"), "House"}));
  EXPECT_TRUE(expected.FSpreadBands[1] == (TSpreadBandFacts{TCode("M1"), 0.25, 0.5, 0.005}));
  EXPECT_EQ(expected.FOrders[0].FPrincipal, kPrincipalRT);
  EXPECT_EQ(expected.FOrders[1].FState, TOrderState::kCancelled);

  TBookChange change;
  change.FFigures = {expected.FFigures[1]};
  change.FFigures[0].FFigures.back() = -7.25;
  change.FFigures.emplace_back().FAccount = TCode("M1");  // the account's first row
  change.FConsolidated = expected.FConsolidated;
  change.FConsolidated[0].FFigures.front() = 0.1 + 0.2;
  change.FPositions = {{.FAccount = TCode("A1"), .FKey = "OPT1", .FSymbol = TCode("OPT1"), .FShort = true}};
  change.FRemovedPositions = {{TCode("A1"), "90001"}};
  change.FOrders = {expected.FOrders[0],
                    {"o3", TCode("M1"), TCode("OPT1"), kSideSell, 1.5, 4, 1, kOpenCloseClose,
                     kPrincipalClient, false, TOrderState::kFilled, "t"}};
  change.FOrders[0].FFilledQuantity = 300;
  change.FFills = {{"f2", "o3", 1.5, 1, 0.01, "t2"}};
  expected.FFigures[1] = change.FFigures[0];
  expected.FFigures.push_back(change.FFigures[1]);
  expected.FConsolidated = change.FConsolidated;
  expected.FPositions = {expected.FPositions[1], change.FPositions[0]};
  expected.FOrders = {change.FOrders[0], expected.FOrders[1], change.FOrders[1]};
  expected.FFills.push_back(change.FFills[0]);

  TBookChange faulty = change;
  faulty.FFills.push_back({"f3", "unknown", 1.5, 1, 0, "t"});
  const TBookTexts before = ExportedTexts(FBook);
  EXPECT_THROW(WriteBookChange(FBook, faulty), TBookError);
  EXPECT_EQ(ExportedTexts(FBook), before);
  WriteBookChange(FBook, change);
  EXPECT_TRUE(ReadHostContents(FBook) == expected);
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
