#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {

namespace {

class BookFiles : public testing::Test {
 protected:
  BookFiles() : FBook(FFolder.Path() / "book.db", TStoreMode::kCreate) { ImportTexts(SmallBookTexts()); }

  std::filesystem::path Directory() const { return FFolder.Path() / "csv"; }

  void ImportTexts(const TBookTexts& texts) {
    WriteBookTexts(Directory(), texts);
    FBook.Import(Directory());
  }

  // The message of a refused import without the directory; empty when it was taken.
  std::string Refusal(const TBookTexts& texts) {
    WriteBookTexts(Directory(), texts);
    return Refusal();
  }
  std::string Refusal() {
    try {
      FBook.Import(Directory());
    } catch (const TBookError& error) {
      const std::string what = error.what();
      const std::string prefix = Directory().string() + "/";
      return what.starts_with(prefix) ? what.substr(prefix.size()) : what;
    }
    return {};
  }

  TTemporaryFolder FFolder;
  TBook FBook;
};

// A change that spoils one file of the small book.
struct TSpoiledFile {
  std::string FFile;
  std::string FPart;
  std::string FBy;
  std::string FRefusal;
};

TEST_F(BookFiles, AFaultIsNamedByFileLineColumnAndReasonAndLeavesTheBookAsItWas) {
  const std::vector<TSpoiledFile> cases = {
      // Columns
      {"prices.csv", "last,", "", "prices.csv:1:last: missing column"},
      {"prices.csv", "bid,", "bid,colour,", "prices.csv:1:column 4: unknown column \"colour\""},
      {"prices.csv", "bid,ask", "bid,bid", "prices.csv:1:bid: duplicate column"},
      {"prices.csv", "reference\n", "reference,\n", "prices.csv:1:column 7: unknown column \"\""},
      {"prices.csv", "reference\n", "\"ref\ner\x01nce\"\n",
       R"(prices.csv:1:column 6: unknown column "ref\x0aer\x01nce")"},
      {"prices.csv", ",24.5,\n", ",24.5\n", "prices.csv:2:reference: too few fields (5 of 6 fields)"},
      {"prices.csv", ",24.5,\n", ",24.5,,,\n", "prices.csv:2:column 7: too many fields (8 of 6 fields)"},
      {"prices.csv", "reference\n", "reference\n\n", "prices.csv:2:last: too few fields (1 of 6 fields)"},
      // Values
      {"prices.csv", "24.95", "cheap", "prices.csv:2:bid: \"cheap\" is not a number"},
      {"prices.csv", "24.95", "24,95", "prices.csv:2:column 7: too many fields (7 of 6 fields)"},
      {"prices.csv", "24.95", "\"24,95\"", "prices.csv:2:bid: \"24,95\" is not a number"},
      {"prices.csv", "24.95", " 24.95", "prices.csv:2:bid: \" 24.95\" is not a number"},
      {"prices.csv", "24.95", "0x18", "prices.csv:2:bid: \"0x18\" is not a number"},
      {"prices.csv", "24.95", "nan", "prices.csv:2:bid: NaN or infinity"},
      {"prices.csv", "24.95", "-INF", "prices.csv:2:bid: NaN or infinity"},
      {"prices.csv", "24.95", "1e999", "prices.csv:2:bid: \"1e999\" is out of range"},
      {"prices.csv", "24.95", "", "prices.csv:2:bid: must not be empty"},
      {"currencies.csv", "7.8", "0", "currencies.csv:3:ratio: must be above 0"},
      {"currencies.csv", "7.8,N", "7.8,no", "currencies.csv:3:excluded: \"no\" is neither Y nor N"},
      {"accounts.csv", ",M1,,0", ",M1,1.5,0", "accounts.csv:3:master_type: \"1.5\" is not a whole number"},
      {"accounts.csv", ",M1,,0", ",M1,,2147483648", "accounts.csv:3:margin_type: must be at most 2147483647"},
      {"accounts.csv", "0,09:00", "-1,09:00", "accounts.csv:2:status_flags: must be at least 0"},
      {"products.csv", "2028-02-29", "2027-02-29",
       "products.csv:3:expiry: \"2027-02-29\" is not a date (yyyy-mm-dd)"},
      {"products.csv", "2028-02-29", "29.2.2028",
       "products.csv:3:expiry: \"29.2.2028\" is not a date (yyyy-mm-dd)"},
      {"products.csv", "29,C", "29,X", "products.csv:3:option_right: \"X\" is not one of C P"},
      {"settings.csv", "china_connect", "china",
       "settings.csv:3:name: \"china\" is not one of multi_currency china_connect"},
      // Names of other rows
      {"figures.csv", "A1,USD", "A1,GBP", "figures.csv:4:currency: unknown currency \"GBP\""},
      {"positions.csv", "A1,short", "A9,short", "positions.csv:3:account: unknown account \"A9\""},
      {"positions.csv", "90001,90001", ",90009", "positions.csv:2:symbol: unknown symbol \"90009\""},
      {"products.csv", "OPT1,,HK", "OPT1,,hk", "products.csv:3:exchange: unknown exchange \"hk\""},
      {"products.csv", "M1,90001", "M1,90002", "products.csv:3:underlying: unknown symbol \"90002\""},
      {"accounts.csv", "S,M1", "S,M2", "accounts.csv:3:master: unknown account \"M2\""},
      {"custom_values.csv", "f1", "f2", "custom_values.csv:2:key: unknown key \"f2\""},
      // Keys
      {"accounts.csv", "A1,", "M1,", "accounts.csv:3:account: duplicate key (first on line 2)"},
      {"figures.csv", "A1,HKD", "A1,", "figures.csv:3:currency: duplicate key (first on line 2)"},
      {"positions.csv", "short", "90001", "positions.csv:3:key: duplicate key (first on line 2)"},
      {"custom_fields.csv", "b1", "f1", "custom_fields.csv:3:key: duplicate value (first on line 2)"},
      {"exchanges.csv", "Y,,N", "Y,0,N", "exchanges.csv:3:period_order: duplicate value (first on line 2)"},
      // Rules between rows
      {"currencies.csv", "HKD,1,N,Y", "HKD,1,N,N", "currencies.csv:1:base: no currency is the base currency"},
      {"currencies.csv", "7.8,N,N", "7.8,N,Y",
       "currencies.csv:3:base: a second base currency: \"HKD\" is the base currency"},
      {"currencies.csv", "HKD,1,", "HKD,2,", "currencies.csv:2:ratio: the ratio of the base currency is 1"},
      {"accounts.csv", "S,M1,,", "S,A1,1,", R"(accounts.csv:3:master: a loop of masters: "A1" > "A1")"},
      {"accounts.csv", "M1,Master,U1,S,,1", "M1,Master,U1,S,,",
       "accounts.csv:3:master: \"M1\" is not a master account (it has no master_type)"},
      {"china_connect_links.csv", "A1,M1", "A1,A1",
       "china_connect_links.csv:2:linked_account: an account cannot be linked to itself"},
      // Bytes and quotes
      {"accounts.csv", "Master", "M\xFFster", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "Master", "\xC0\xAF overlong", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "Master", "\xE0\x80\xAF overlong", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "Master", "\xED\xA0\x80 surrogate", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "Master", "\xF4\x90\x80\x80 too high", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "Master", "cut \xE6\xBC", "accounts.csv:2:name: not UTF-8"},
      {"accounts.csv", "name", "n\xE4me", "accounts.csv:1:column 2: not UTF-8"},
      {"accounts.csv", "Master", std::string("M\0", 2), "accounts.csv:2:name: a zero byte"},
      {"accounts.csv", "Master", "Ma\"ster", "accounts.csv:2:name: a quote inside a field without quotes"},
      {"accounts.csv", "Master", "\"Master\" x", "accounts.csv:2:name: text after the closing quote"},
      {"accounts.csv", "Master", "\"Master", "accounts.csv:3:name: text after the closing quote"},
      {"accounts.csv", "N,,\n", "N,,\"", "accounts.csv:3:margin_method: a quote that is never closed"},
      {"accounts.csv", "Master", "Mas\rter", "accounts.csv:2:name: a carriage return without a line feed"},
      // A line is a line of the file, also after fields that run over several
      {"accounts.csv", "Master,U1,S,,1,1", "\"Mas\nter\",U1,S,,1,x",
       "accounts.csv:3:margin_type: \"x\" is not a whole number"},
      {"accounts.csv", "Two, and ", "Two\r\nand\n", "accounts.csv:5:master: unknown account \"M2\""},
  };
  const TBookTexts before = ExportedTexts(FBook);
  for (const TSpoiledFile& spoiled : cases) {
    SCOPED_TRACE(spoiled.FRefusal);
    TBookTexts texts = SmallBookTexts();
    std::string& text = texts[spoiled.FFile];
    text = Replaced(text, spoiled.FPart, spoiled.FBy);
    if (spoiled.FRefusal.starts_with("accounts.csv:5")) text = Replaced(text, ",S,M1,", ",S,M2,");
    EXPECT_EQ(Refusal(texts), spoiled.FRefusal);
    EXPECT_EQ(ExportedTexts(FBook), before);
  }
}

TEST_F(BookFiles, ALoopOfMastersIsFoundWhereverItHangs) {
  const std::string header =
      SmallBookTexts()["accounts.csv"].substr(0, SmallBookTexts()["accounts.csv"].find('\n'));
  const auto account = [](const std::string& name, const std::string& master) {
    return "\n" + name + ",,,," + master + ",1,0,,,0,,,0,N,,";
  };
  TBookTexts texts = {{"currencies.csv", SmallBookTexts()["currencies.csv"]}};
  // A sub-account outside the loop leads into it; the loop is reported at its first account.
  texts["accounts.csv"] =
      header + account("S", "C") + account("B", "C") + account("A", "B") + account("C", "A");
  EXPECT_EQ(Refusal(texts), "accounts.csv:3:master: a loop of masters: \"B\" > \"C\" > \"A\" > \"B\"");
  // The same accounts without the last link are a chain and no loop.
  texts["accounts.csv"] =
      header + account("S", "C") + account("B", "C") + account("A", "B") + account("C", "");
  EXPECT_EQ(Refusal(texts), "");
  // A loop of many is not written out.
  texts["accounts.csv"] = header;
  for (int i = 0; i < 5000; ++i) {
    texts["accounts.csv"] += account("L" + std::to_string(i), "L" + std::to_string((i + 1) % 5000));
  }
  EXPECT_EQ(
      Refusal(texts),
      "accounts.csv:2:master: a loop of masters: \"L0\" > \"L1\" > \"L2\" > \"L3\" > \"L4\" > ... > \"L0\"");
}

TEST_F(BookFiles, MissingAndUnknownFilesAreRefusedByName) {
  const TBookTexts before = ExportedTexts(FBook);
  const TBookTexts emptyFiles = {{"accounts.csv", "accounts.csv:1:account: missing column"},
                                 {"currencies.csv", "currencies.csv:1:currency: missing column"}};
  for (const auto& [file, refusal] : emptyFiles) {
    TBookTexts texts = SmallBookTexts();
    texts.erase(file);
    EXPECT_EQ(Refusal(texts), file + ": missing file");
    texts[file] = "";
    EXPECT_EQ(Refusal(texts), refusal);
  }
  for (const std::string file : {"acounts.csv", "Accounts.CSV", ".csv", "positions.backup.csv"}) {
    TBookTexts texts = SmallBookTexts();
    texts[file] = "x";
    EXPECT_EQ(Refusal(texts), file + ": no table of the book has this name");
  }
  std::filesystem::remove_all(Directory());
  EXPECT_EQ(Refusal(), Directory().string() + ": no such directory");
  std::filesystem::create_directories(Directory() / "accounts.csv");
  WriteWholeFile(Directory() / "currencies.csv", SmallBookTexts()["currencies.csv"]);
  EXPECT_EQ(Refusal(), "accounts.csv: cannot be read");
  EXPECT_EQ(ExportedTexts(FBook), before);
}

TEST_F(BookFiles, WhatOtherProgramsWriteIsTheSameBook) {
  const TBookTexts plain = ExportedTexts(FBook);
  TBookTexts other = SmallBookTexts();
  for (auto& [name, text] : other) {
    std::string crlf;
    for (const char c : text) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    text = "\xEF\xBB\xBF" + crlf;
  }
  other["notes.txt"] = "not looked at";
  // Another order of the columns, quotes where none are needed, no line end after the last record, other
  // spellings of the same numbers, and an empty position key, which stands for the symbol.
  other["currencies.csv"] = "base,\"currency\",excluded,ratio\nY,HKD,N,1.0\nN,\"USD\",N,78e-1";
  other["positions.csv"] = Replaced(other["positions.csv"], "90001,90001,400", ",90001,4e2");
  ImportTexts(other);
  EXPECT_EQ(ExportedTexts(FBook), plain);
}

TEST_F(BookFiles, AnImportReplacesEverythingAlsoTablesWithoutAFile) {
  const TBookTexts small = SmallBookTexts();
  ImportTexts({{"currencies.csv", small.at("currencies.csv")}, {"accounts.csv", small.at("accounts.csv")}});
  const TBookTexts after = ExportedTexts(FBook);
  EXPECT_EQ(after.at("accounts.csv"), small.at("accounts.csv"));
  EXPECT_EQ(after.at("settings.csv"), "name,value\n");
  EXPECT_FALSE(FBook.Read(TTable::kPositions).Next());
}

TEST_F(BookFiles, AnExportDoesNotMixWithForeignFiles) {
  const TTemporaryFolder folder;
  WriteWholeFile(folder.Path() / "mine.csv", "a\n");
  EXPECT_THROW(FBook.Export(folder.Path()), TBookError);
  EXPECT_EQ(ReadBookTexts(folder.Path()), (TBookTexts{{"mine.csv", "a\n"}}));
  // A directory that is not there is made.
  FBook.Export(folder.Path() / "new" / "deep");
  EXPECT_EQ(ReadBookTexts(folder.Path() / "new" / "deep"), ExportedTexts(FBook));
}

}  // namespace

}  // namespace margindesk
