#include <bit>
#include <cfloat>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

class BookFiles : public testing::Test {
 protected:
  BookFiles() : FBook(FFolder.Path() / "book.db", TStoreMode::kCreate) {
    EXPECT_EQ(ImportRefusal(SmallBookTexts()), "");
  }

  // The message of a refused import without the directory; empty when it was taken.
  std::string ImportRefusal(const TBookTexts& texts) {
    WriteBookTexts(FFolder.Path() / "csv", texts);
    const std::string prefix = (FFolder.Path() / "csv").string() + "/";
    const std::string what = Refusal([&] { FBook.Import(FFolder.Path() / "csv"); });
    return what.starts_with(prefix) ? what.substr(prefix.size()) : what;
  }

  TTemporaryFolder FFolder;
  TBook FBook;
};

TEST_F(BookFiles, AFaultIsNamedByFileLineColumnAndReasonAndLeavesTheBookAsItWas) {
  const struct {
    std::string FFile;
    std::string FPart;  // of the small book's file
    std::string FBy;
    std::string FRefusal;  // after the file
  } cases[] = {
      {"prices", "last,", "", "1:last: missing column"},
      {"prices", "bid,", "bid,colour,", "1:column 4: unknown column \"colour\""},
      {"prices", "bid,ask", "bid,bid", "1:bid: duplicate column"},
      {"prices", ",24.5,\n", ",24.5\n", "2:reference: too few fields (5 of 6 fields)"},
      {"prices", "24.95", "24,95", "2:column 7: too many fields (7 of 6 fields)"},
      {"prices", "24.95", "\"24,95\"", "2:bid: \"24,95\" is not a number"},
      {"prices", "24.95", "-INF", "2:bid: NaN or infinity"},
      {"prices", "24.95", "1e999", "2:bid: \"1e999\" is out of range"},
      {"prices", "24.95", "", "2:bid: must not be empty"},
      {"currencies", "7.8", "0", "3:ratio: must be above 0"},
      {"currencies", "7.8,N", "7.8,no", "3:excluded: \"no\" is neither Y nor N"},
      {"accounts", ",M1,,0", ",M1,1.5,0", "3:master_type: \"1.5\" is not a whole number"},
      {"accounts", ",M1,,0", ",M1,,2147483648", "3:margin_type: must be at most 2147483647"},
      {"accounts", "0,09:00", "-1,09:00", "2:status_flags: must be at least 0"},
      {"products", "2028-02-29", "2027-02-29", "3:expiry: \"2027-02-29\" is not a date (yyyy-mm-dd)"},
      {"products", "29,C", "29,X", "3:option_right: \"X\" is not one of C P"},
      {"figures", "A1,USD", "A1,GBP", "4:currency: unknown currency \"GBP\""},
      {"figures", "A1,HKD", "A1,", "3:currency: duplicate key (first on line 2)"},
      {"exchanges", "Y,,N", "Y,0,N", "3:period_order: duplicate value (first on line 2)"},
      {"currencies", "HKD,1,N,Y", "HKD,1,N,N", "1:base: no currency is the base currency"},
      {"currencies", "7.8,N,N", "7.8,N,Y", "3:base: a second base currency: \"HKD\" is the base currency"},
      {"currencies", "HKD,1,", "HKD,2,", "2:ratio: the ratio of the base currency is 1"},
      {"accounts", ",1,1,", ",,1,", "3:master: \"M1\" is not a master account (it has no master_type)"},
      {"china_connect_links", "A1,M1", "A1,A1", "2:linked_account: an account cannot be linked to itself"},
      {"spread_bands", "M1,0.25,", "M1,0.3,",
       "3:lower_limit: must be the upper limit of the market's band before"},
      {"spread_bands", "10,100", "10,10", "4:upper_limit: must be above the lower limit"},
      {"spread_bands", "0.005", "0", "3:tick: must be above 0"},
      {"order_options", "House", "Broker", "3:option: \"Broker\" is not one of Open Close Client House RT"},
      {"orders", "300,100", "300,301", "2:filled_quantity: more is filled than was ordered"},
      {"orders", "24.9,300", "24.9,0", "2:quantity: must be above 0"},
      {"fills", "o1", "o9", "2:order_id: unknown order_id \"o9\""},
      {"accounts", "Master", "\xED\xA0\x80 surrogate", "2:name: not UTF-8"},
      {"accounts", "Master", std::string("M\0", 2), "2:name: a zero byte"},
      {"accounts", "Master", "Ma\"ster", "2:name: a quote inside a field without quotes"},
      {"accounts", "Master", "\"Master\" x", "2:name: text after the closing quote"},
      {"accounts", "N,,\n", "N,,\"", "3:margin_method: a quote that is never closed"},
      {"accounts", "Master", "Mas\rter", "2:name: a carriage return without a line feed"},
      // A line is a line of the file, also after fields that run over several.
      {"accounts", "Master,U1,S,,1,1", "\"Mas\nter\",U1,S,,1,x",
       "3:margin_type: \"x\" is not a whole number"},
      // A loop is reported at its first account, though a sub-account outside it leads into it.
      {"accounts", "A1,", "S,,,,C,1,0,,,0,,,0,N,,\nB,,,,C,1,0,,,0,,,0,N,,\nC,,,,B,1,0,,,0,,,0,N,,\nA1,",
       "4:master: a loop of masters: \"B\" > \"C\" > \"B\""},
  };
  const TBookTexts before = ExportedTexts(FBook);
  for (const auto& [file, part, by, refusal] : cases) {
    TBookTexts texts = SmallBookTexts();
    std::string& text = texts[file + ".csv"];
    ASSERT_NE(text.find(part), std::string::npos) << refusal;
    text.replace(text.find(part), part.size(), by);
    EXPECT_EQ(ImportRefusal(texts), file + ".csv:" + refusal);
    EXPECT_EQ(ExportedTexts(FBook), before) << refusal;
  }
}

TEST_F(BookFiles, MissingAndUnknownFilesAreRefusedByName) {
  TBookTexts texts = SmallBookTexts();
  texts.erase("accounts.csv");
  EXPECT_EQ(ImportRefusal(texts), "accounts.csv: missing file");
  texts["accounts.csv"] = "";
  EXPECT_EQ(ImportRefusal(texts), "accounts.csv:1:account: missing column");
  texts["Accounts.CSV"] = "x";
  EXPECT_EQ(ImportRefusal(texts), "Accounts.CSV: no table of the book has this name");
  EXPECT_EQ(Refusal([&] { FBook.Import("/none"); }), "/none: no such directory");
  EXPECT_EQ(ExportedTexts(FBook), SmallBookTexts());
  WriteBookTexts(FFolder.Path() / "out", {{"mine.csv", "a\n"}});
  EXPECT_NE(Refusal([&] { FBook.Export(FFolder.Path() / "out"); }), "");
  EXPECT_EQ(ReadBookTexts(FFolder.Path() / "out").size(), 1U);
}

TEST_F(BookFiles, WhatOtherProgramsWriteIsTheSameBookAndReplacesAlsoTablesWithoutAFile) {
  const TBookTexts plain = SmallBookTexts();
  TBookTexts other = {{"accounts.csv", "\xEF\xBB\xBF"}, {"notes.txt", "not looked at"}};
  for (const char c : plain.at("accounts.csv")) {
    other["accounts.csv"] += c == '\n' ? std::string("\r\n") : std::string(1, c);
  }
  // Another order of the columns, needless quotes, no last line end, other spellings of the numbers.
  other["currencies.csv"] = "base,\"currency\",excluded,ratio\nY,HKD,N,1.0\nN,\"USD\",N,78e-1";
  EXPECT_EQ(ImportRefusal(other), "");
  const TBookTexts after = ExportedTexts(FBook);
  EXPECT_EQ(after.at("accounts.csv"), plain.at("accounts.csv"));
  EXPECT_EQ(after.at("currencies.csv"), plain.at("currencies.csv"));
  EXPECT_EQ(after.at("settings.csv"), "name,value\n");
}

// Values that are allowed and otherwise as awkward as can be.
class TAwkwardValues {
 public:
  TBookRow Row(TTable name, const std::string& account) {
    const TBookTable& table = BookTable(name);
    TBookRow row(name);
    for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
      const TBookColumn& column = table.FColumns[i];
      if (column.FName == "account") {
        row.SetText(i, account);
      } else if (column.FKind == TColumnKind::kNumber) {
        row.SetNumber(i, Number());
      } else if (column.FKind == TColumnKind::kInteger) {
        row.SetInteger(i, static_cast<std::int64_t>(column.FLowest) + static_cast<int>(FRandom() >> 33));
      } else if (column.FKind == TColumnKind::kText && !column.FReference && FRandom() % 4 != 0) {
        row.SetText(i, Text());
      }
    }
    return row;
  }

  std::string Text() {
    static constexpr std::string_view kPieces[] = {",",  "\"",  "\n", "\r", "\r\n", " ", "'",
                                                   ";",  "a",   "-1", "=1", "漢字", "😀", "\xEF\xBB\xBF",
                                                   "%s", "\x7F"};
    std::string text;
    for (std::size_t i = FRandom() % 6 + 1; i > 0; --i) text += kPieces[FRandom() % std::size(kPieces)];
    return text;
  }

 private:
  double Number() {
    static constexpr double kAwkward[] = {0.1, 1.0 / 3, 1e23, -0.0, -DBL_MAX, DBL_TRUE_MIN};
    const auto value = std::bit_cast<double>(FRandom());
    return std::isfinite(value) && FRandom() % 2 == 0 ? value : kAwkward[FRandom() % std::size(kAwkward)];
  }

  std::mt19937_64 FRandom{1};
};

// Every value of a book, exactly.
std::vector<std::string> Values(TBook& book) {
  std::vector<std::string> values;
  for (const TBookTable& table : kBookTables) {
    TBookRows rows = book.Read(table.FTable);
    while (rows.Next()) {
      for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
        const auto bits = std::bit_cast<std::uint64_t>(rows.Number(i));
        values.push_back(std::to_string(rows.IsEmpty(i)) + std::to_string(bits) + std::string(rows.Text(i)));
      }
    }
  }
  return values;
}

TEST(BookRoundTrip, AnExportedBookIsImportedAsItWasAndExportedToTheSameBytes) {
  const TTemporaryFolder folder;
  WriteBookTexts(folder.Path() / "csv", SmallBookTexts());
  TBook first(folder.Path() / "first.db", TStoreMode::kCreate);
  first.Import(folder.Path() / "csv");
  EXPECT_EQ(ExportedTexts(first), SmallBookTexts());
  TAwkwardValues awkward;
  for (int i = 0; i < 200; ++i) {
    const std::string account = awkward.Text();
    first.Upsert(std::vector{awkward.Row(TTable::kAccounts, account)});
    first.Upsert(std::vector{awkward.Row(TTable::kFigures, account)});
  }
  EXPECT_TRUE(first.Check().empty()) << first.Check().front().Text();
  first.Export(folder.Path() / "csv");
  TBook second(folder.Path() / "second.db", TStoreMode::kCreate);
  second.Import(folder.Path() / "csv");
  EXPECT_EQ(Values(second), Values(first));
  EXPECT_EQ(ExportedTexts(second), ReadBookTexts(folder.Path() / "csv"));
}

}  // namespace
}  // namespace margindesk
