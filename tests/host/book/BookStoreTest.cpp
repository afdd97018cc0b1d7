#include <gtest/gtest.h>

#include "host/book/BookSchema.h"
#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

TBookRow Price(std::string_view symbol, double last) {
  constexpr const TBookTable& table = BookTable(TTable::kPrices);
  TBookRow row(TTable::kPrices);
  return row.SetText(table.Column("symbol"), symbol).SetNumber(table.Column("last"), last);
}

class BookStore : public testing::Test {
 protected:
  BookStore() {
    WriteBookTexts(FFolder.Path() / "csv", SmallBookTexts());
    TBook(FFile, TStoreMode::kCreate).Import(FFolder.Path() / "csv");
  }

  // The first price as another program sees it at this moment.
  double StoredPrice() const {
    TBook book(FFile, TStoreMode::kExisting);
    TBookRows rows = book.Read(TTable::kPrices);
    return rows.Next() ? rows.Number(BookTable(TTable::kPrices).Column("last")) : 0;
  }

  TTemporaryFolder FFolder;
  const std::filesystem::path FFile = FFolder.Path() / "book.db";
};

TEST_F(BookStore, OnlyABookOfAKnownVersionIsOpened) {
  WriteBookTexts(FFolder.Path() / "files", {{"empty.db", ""}, {"letter.db", std::string(5000, 'x')}});
  const auto other = FFolder.Path() / "files" / "other.db";
  TSqliteConnection(other, TStoreMode::kCreate).Execute("CREATE TABLE songs (title)");
  TSqliteConnection(FFile, TStoreMode::kExisting).Execute("PRAGMA user_version = 99");
  const std::tuple<std::filesystem::path, TStoreMode, std::string> cases[] = {
      {"none.db", TStoreMode::kExisting, "cannot be opened (is it there, and may it be read and written?)"},
      {"empty.db", TStoreMode::kExisting, "not a book: the file is empty"},
      {"letter.db", TStoreMode::kCreate, "not a book: the file is no SQLite database"},
      {"other.db", TStoreMode::kCreate, "not a book: the file belongs to another program"},
      {FFile, TStoreMode::kCreate,
       "the book was written by a newer version of the program (schema version 99, this program knows up "
       "to " +
           std::to_string(kBookSchemaVersion) + ")"},
  };
  const TBookTexts before = ReadBookTexts(other.parent_path());
  for (const auto& [name, mode, reason] : cases) {
    const auto file = other.parent_path() / name;
    EXPECT_EQ(Refusal([&, mode = mode] { TBook(file, mode); }), file.string() + ": " + reason);
  }
  EXPECT_EQ(ReadBookTexts(other.parent_path()), before);
}

TEST_F(BookStore, ABookOfTheFirstVersionGainsTheTablesOfOrdersAndKeepsItsRows) {
  TSqliteConnection old(FFile, TStoreMode::kExisting);
  old.Execute("PRAGMA foreign_keys = OFF");
  for (const TBookTable& table : kBookTables) {
    if (table.FSince > 1) old.Execute("DROP TABLE " + std::string(table.FName));
  }
  old.Execute("PRAGMA user_version = 1");
  TBook book(FFile, TStoreMode::kExisting);
  TBookTexts expected = SmallBookTexts();
  for (const TBookTable& table : kBookTables) {
    std::string& text = expected.at(std::string(table.FName) + ".csv");
    if (table.FSince > 1) text.resize(text.find('\n') + 1);
  }
  EXPECT_EQ(ExportedTexts(book), expected);
}

TEST_F(BookStore, AChangeHoldsFromItsCommitOnAndIsUndoneWithoutOne) {
  TBook book(FFile, TStoreMode::kExisting);
  for (const bool commits : {false, true}) {
    {
      TBookTransaction change(book);
      change.Upsert(Price("OPT1", 2));
      change.Upsert(Price("90001", 26));  // keeps its place
      EXPECT_EQ(StoredPrice(), 25) << "nobody sees a part of it";
      if (commits) change.Commit();
    }
    EXPECT_EQ(StoredPrice(), commits ? 26 : 25);
  }
  TBookTransaction change(book);
  EXPECT_TRUE(change.Remove(Price("90001", 0)) && !change.Remove(Price("90001", 0)));
  change.Commit();
  EXPECT_EQ(StoredPrice(), 2);
}

TEST_F(BookStore, AChangeThatBreaksARuleIsRefusedWhole) {
  TBook book(FFile, TStoreMode::kExisting);
  const std::pair<std::vector<TBookRow>, std::string> cases[] = {
      {{Price("90001", 30), Price("90009", 1)}, "prices:2:symbol: unknown symbol \"90009\""},
      {{Price("90001", 30), Price("90001", std::numeric_limits<double>::quiet_NaN())},
       "prices:last: NaN or infinity"},
      {{Price("\xFF", 30)}, "prices:symbol: not UTF-8"},
      {{Price("90001", 30).SetText(1, "30")}, "prices:last: a value of another kind"},
  };
  for (const auto& [rows, reason] : cases)
    EXPECT_EQ(Refusal([&, rows = rows] { book.Upsert(rows); }), FFile.string() + ": " + reason);
  EXPECT_EQ(ExportedTexts(book), SmallBookTexts());
}

TEST_F(BookStore, CheckFindsWhatOtherProgramsHaveSpoiled) {
  TBook book(FFile, TStoreMode::kExisting);
  EXPECT_TRUE(book.Check().empty());
  TSqliteConnection(FFile, TStoreMode::kExisting)
      .Execute(
          "PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON;"
          "UPDATE currencies SET base = 1;"
          "UPDATE products SET lot_size = -1 WHERE symbol = '90001';"
          "UPDATE accounts SET master = 'A1' WHERE account = 'A1';"
          "DELETE FROM products WHERE symbol = 'OPT1'");
  std::string texts;
  for (const TBookFinding& finding : book.Check()) texts += finding.Text() + "\n";
  EXPECT_EQ(texts,
            "CHECK constraint failed in products\n"
            "positions:2:symbol: unknown symbol \"OPT1\"\n"
            "currencies:2:base: a second base currency: \"HKD\" is the base currency\n"
            "accounts:2:master: \"A1\" is not a master account (it has no master_type)\n"
            "accounts:2:master: a loop of masters: \"A1\" > \"A1\"\n");
}

}  // namespace
}  // namespace margindesk
