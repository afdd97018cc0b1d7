#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "model/AccountInfoConstDef.h"

namespace margindesk {
namespace {

std::vector<std::string> KeysOf(const TColumnList& columns) {
  std::vector<std::string> keys;
  for (const auto& column : columns) keys.push_back(column->FKey);
  return keys;
}

TEST(FieldCatalogue, KeysAreFoundInAnyCaseAndGiveTheCataloguesOwn) {
  const TCatalogueRow* row = FindCatalogueRow("tradinglimit");
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->FKey, "TradingLimit");
  EXPECT_EQ(row->FId, 155);
  EXPECT_EQ(FindCatalogueRow(""), nullptr);
  EXPECT_EQ(FindCatalogueRow("OMS_PL"), nullptr);
  EXPECT_EQ(FindCatalogueRow("Trading"), nullptr);

  const TCatalogueRow* credit = FindCatalogueRow("CreditLimit");
  const TCatalogueRow* creditDds = FindCatalogueRow("creditlimit(dds)");
  ASSERT_TRUE(credit != nullptr && creditDds != nullptr);
  EXPECT_EQ(credit->FId, 9028);
  EXPECT_EQ(creditDds->FId, 1205);
  EXPECT_EQ(credit->FResourceKey, creditDds->FResourceKey);
}

// The table is typed in by hand; a slip in it is a wrong figure under a right caption.
TEST(FieldCatalogue, HoldsSixtySevenFieldsEachOnce) {
  std::set<std::int32_t> ids;
  std::set<std::string_view> keys;
  std::set<std::string_view> backOfficeKeys;
  std::size_t withBackOfficeKey = 0;
  std::size_t accountColumns = 0;
  for (const TCatalogueRow& row : GetCatalogue()) {
    ids.insert(row.FId);
    keys.insert(row.FKey);
    if (!row.FBackOfficeKey.empty()) {
      ++withBackOfficeKey;
      backOfficeKeys.insert(row.FBackOfficeKey);
    }
    accountColumns += IsAccountColumn(row) ? 1U : 0U;
  }
  EXPECT_EQ(ids.size(), 67U);
  EXPECT_EQ(keys.size(), 67U);
  EXPECT_EQ(withBackOfficeKey, 52U);
  EXPECT_EQ(backOfficeKeys.size(), 52U);
  EXPECT_EQ(accountColumns, 59U);
  EXPECT_TRUE(IsAccountColumn(*FindCatalogueRow("Status")));
  EXPECT_FALSE(IsAccountColumn(*FindCatalogueRow("Side")));
  // Figures by nature, created as texts all the same.
  EXPECT_FALSE(FindCatalogueRow("MarginLevel")->FNumeric);
  EXPECT_FALSE(FindCatalogueRow("MarketValue")->FNumeric);
}

TEST(OldColumnKeys, AreConvertedRecognisedAndKeptOrLeftAlone) {
  EXPECT_EQ(ConvertColumnKey("oms_pl"), "PL");
  EXPECT_EQ(ConvertColumnKey("L/S"), "Side");
  EXPECT_EQ(ConvertColumnKey("OMS_N_MARGINCALL"), "MarginCall");
  EXPECT_EQ(ConvertColumnKey("oms_netav"), "oms_netav");
  EXPECT_EQ(ConvertColumnKey("OMS_TotalInHKD"), "OMS_TotalInHKD");
  // Not the fields whose back-office keys these are.
  EXPECT_EQ(ConvertColumnKey("OMS_CREDITLIMIT"), "CreditLimit");
  EXPECT_EQ(ConvertColumnKey("OMS_WITHDRAWABLECASH_BAL"), "AvailableBal");
}

TEST(OldColumnKeys, AConfiguredListShowsAFieldThatItNamesTwiceOnce) {
  EXPECT_EQ(ConvertConfigSetting(""), "");
  EXPECT_EQ(ConvertConfigSetting("OMS_PL,Equity"), "PL,Equity");
  EXPECT_EQ(ConvertConfigSetting("OMS_PL,pl"), "OMS_PL,pl");
  EXPECT_EQ(ConvertConfigSetting("OMS_PL, \"OMS_NAME\" Net"), "PL,AccountName,Qty");
  EXPECT_EQ(ConvertConfigSetting("OMS_MARGINCALL,OMS_N_MARGINCALL"), "MarginCall,OMS_N_MARGINCALL");
  EXPECT_EQ(ConvertConfigSetting("PL,PL"), "PL,PL");
}

TEST(ColumnLists, KeepOrderAndDoublesAndPassOverWhatTheyDoNotKnow) {
  TColumnList columns;
  AppendCatalogueColumns("Equity,,NoSuchField,equity,OMS_PL, PL", columns);
  EXPECT_EQ(KeysOf(columns), (std::vector<std::string>{"Equity", "Equity"}));
  EnsureReservedColumn(columns);
  EXPECT_EQ(KeysOf(columns), (std::vector<std::string>{"TradingLimit", "Equity", "Equity"}));
  EXPECT_TRUE(columns.front()->FNumeric);
  EXPECT_EQ(columns.front()->FResourceKey, "Res_TradingLimit");

  TColumnList behind;
  AppendCatalogueColumns("CashBalance,TradingLimit", behind);
  EnsureReservedColumn(behind);
  EXPECT_EQ(KeysOf(behind), (std::vector<std::string>{"CashBalance", "TradingLimit"}));
}

}  // namespace
}  // namespace margindesk
