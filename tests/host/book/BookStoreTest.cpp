#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/book/BookSchema.h"
#include "tests/host/book/BookTestFiles.h"

namespace margindesk {

namespace {

constexpr const TBookTable& kPrices = BookTable(TTable::kPrices);
constexpr const TBookTable& kAccounts = BookTable(TTable::kAccounts);

TBookRow Price(std::string_view symbol, double last) {
  TBookRow row(TTable::kPrices);
  row.SetText(kPrices.Column("symbol"), symbol).SetNumber(kPrices.Column("last"), last);
  return row;
}

TBookRow Account(std::string_view account, std::string_view master) {
  TBookRow row(TTable::kAccounts);
  row.SetText(kAccounts.Column("account"), account).SetText(kAccounts.Column("master"), master);
  row.SetInteger(kAccounts.Column("master_type"), 1);
  return row;
}

TBookRow Currency(std::string_view currency, double ratio, bool base) {
  constexpr const TBookTable& table = BookTable(TTable::kCurrencies);
  TBookRow row(TTable::kCurrencies);
  row.SetText(table.Column("currency"), currency).SetNumber(table.Column("ratio"), ratio);
  return row.SetFlag(table.Column("base"), base);
}

// The message of what is refused; empty when it is not.
std::string Refusal(const std::function<void()>& action) {
  try {
    action();
  } catch (const TBookError& error) {
    return error.what();
  }
  return {};
}

class BookStore : public testing::Test {
 protected:
  BookStore() {
    WriteBookTexts(FFolder.Path() / "csv", SmallBookTexts());
    TBook(File(), TStoreMode::kCreate).Import(FFolder.Path() / "csv");
  }

  std::filesystem::path File() const { return FFolder.Path() / "book.db"; }
  std::string Prefixed(const std::string& reason) const { return File().string() + ": " + reason; }
  std::string OpenRefusal(const std::filesystem::path& file, TStoreMode mode) {
    return Refusal([&] { TBook(file, mode); });
  }
  // The symbols and last prices as another program sees them at this moment.
  std::string StoredPrices() const {
    TBook book(File(), TStoreMode::kExisting);
    TBookRows rows = book.Read(TTable::kPrices);
    std::string text;
    while (rows.Next()) {
      text += std::string(rows.Text(kPrices.Column("symbol"))) + "=" +
              BookNumberText(rows.Number(kPrices.Column("last"))) + " ";
    }
    return text;
  }

  TTemporaryFolder FFolder;
};

TEST_F(BookStore, OnlyABookOfAKnownVersionIsOpened) {
  const auto file = [this](const char* name) { return FFolder.Path() / name; };
  const auto expectRefused = [this](const std::filesystem::path& path, TStoreMode mode,
                                    const std::string& reason) {
    const std::string before = std::filesystem::exists(path) ? ReadWholeFile(path) : "";
    EXPECT_EQ(OpenRefusal(path, mode), path.string() + ": " + reason);
    if (!before.empty()) {
      EXPECT_EQ(ReadWholeFile(path), before);
    }
  };
  expectRefused(file("none.db"), TStoreMode::kExisting,
                "cannot be opened (is it there, and may it be read and written?)");
  EXPECT_FALSE(std::filesystem::exists(file("none.db")));

  WriteWholeFile(file("empty.db"), "");
  expectRefused(file("empty.db"), TStoreMode::kExisting, "not a book: the file is empty");
  EXPECT_EQ(OpenRefusal(file("empty.db"), TStoreMode::kCreate), "");

  WriteWholeFile(file("letter.db"), std::string(5000, 'x'));
  expectRefused(file("letter.db"), TStoreMode::kCreate, "not a book: the file is no SQLite database");

  TSqliteConnection(file("other.db"), TStoreMode::kCreate).Execute("CREATE TABLE songs (title)");
  expectRefused(file("other.db"), TStoreMode::kCreate, "not a book: the file belongs to another program");

  TSqliteConnection(File(), TStoreMode::kExisting).Execute("PRAGMA user_version = 99");
  EXPECT_EQ(OpenRefusal(File(), TStoreMode::kCreate),
            Prefixed("the book was written by a newer version of the program (schema version 99, this "
                     "program knows up to " +
                     std::to_string(kBookSchemaVersion) + ")"));
}

TEST_F(BookStore, AnOlderBookGetsTheTablesThatAreNewAndKeepsItsRows) {
  static constexpr TBookColumn kColumns[] = {TextColumn("note").Key(), AccountColumn("account")};
  std::vector<TBookTable> tables(kBookTables.begin(), kBookTables.end());
  tables.push_back({TTable::kPositions, "notes", false, kBookSchemaVersion + 1, kColumns});
  {
    TSqliteConnection connection(File(), TStoreMode::kExisting);
    for (int opening = 0; opening < 2; ++opening) {
      PrepareBookSchema(connection, TStoreMode::kExisting, tables, kBookSchemaVersion + 1);
    }
    connection.Execute("INSERT INTO notes (note, account) VALUES ('call', 'A1')");
    EXPECT_EQ(connection.QueryInteger("SELECT count(*) FROM positions"), 2);
    EXPECT_EQ(connection.QueryInteger("PRAGMA user_version"), kBookSchemaVersion + 1);
  }
}

TEST_F(BookStore, AChangeHoldsFromItsCommitOnAndIsUndoneWithoutOne) {
  TBook book(File(), TStoreMode::kExisting);
  {
    TBookTransaction change(book);
    change.Upsert(Price("90001", 26));
    change.Upsert(Price("OPT1", 2));
    // Nobody sees a part of it.
    EXPECT_EQ(StoredPrices(), "90001=25 ");
  }
  EXPECT_EQ(StoredPrices(), "90001=25 ");
  {
    TBookTransaction change(book);
    change.Upsert(Price("OPT1", 2));
    // The row keeps its place before the new one.
    change.Upsert(Price("90001", 26));
    change.Commit();
    EXPECT_EQ(StoredPrices(), "90001=26 OPT1=2 ");
  }
  {
    TBookTransaction change(book);
    EXPECT_TRUE(change.Remove(Price("90001", 0)));
    EXPECT_FALSE(change.Remove(Price("90001", 0)));
    change.Commit();
  }
  EXPECT_EQ(StoredPrices(), "OPT1=2 ");
  book.Upsert(std::vector{Price("90001", 1), Price("OPT1", 3)});
  EXPECT_EQ(StoredPrices(), "OPT1=3 90001=1 ");
}

TEST_F(BookStore, TheTotalRowIsOneRowHoweverOftenItIsWritten) {
  constexpr const TBookTable& table = BookTable(TTable::kFigures);
  TBook book(File(), TStoreMode::kExisting);
  TBookRow total(TTable::kFigures);
  total.SetText(table.Column("account"), "A1").SetNumber(table.Column("cash_balance"), 77);
  book.Upsert({&total, 1});
  book.Upsert({&total, 1});
  TBookRows rows = book.Read(TTable::kFigures);
  ASSERT_TRUE(rows.Next());
  EXPECT_TRUE(rows.IsEmpty(table.Column("currency")));
  EXPECT_EQ(rows.Number(table.Column("cash_balance")), 77);
  ASSERT_TRUE(rows.Next());
  EXPECT_EQ(rows.Text(table.Column("currency")), "HKD");
}

TEST_F(BookStore, AChangeThatBreaksARuleIsRefusedWhole) {
  TBook book(File(), TStoreMode::kExisting);
  const TBookTexts before = ExportedTexts(book);
  const auto refusal = [&book](const std::vector<TBookRow>& rows) {
    return Refusal([&] { book.Upsert(rows); });
  };
  EXPECT_EQ(refusal({Price("90001", 30), Price("90009", 1)}),
            Prefixed("prices:2:symbol: unknown symbol \"90009\""));
  EXPECT_EQ(refusal({Account("M1", "A1"), Account("A1", "M1")}),
            Prefixed("accounts:1:master: a loop of masters: \"M1\" > \"A1\" > \"M1\""));
  EXPECT_EQ(refusal({Currency("USD", 7.8, true)}),
            Prefixed("currencies:2:base: a second base currency: \"HKD\" is the base currency"));
  EXPECT_EQ(refusal({Price("90001", 30), Price("90001", std::numeric_limits<double>::quiet_NaN())}),
            Prefixed("prices:last: NaN or infinity"));
  EXPECT_EQ(refusal({Price("", 30)}), Prefixed("prices:symbol: must not be empty"));
  EXPECT_EQ(refusal({Price("\xFF", 30)}), Prefixed("prices:symbol: not UTF-8"));
  EXPECT_EQ(refusal({Price("90001", 30).SetText(kPrices.Column("bid"), "30")}),
            Prefixed("prices:bid: a value of another kind"));
  const auto removeCurrency = [&book] {
    TBookTransaction change(book);
    change.Remove(Currency("USD", 1, false));
    change.Commit();
  };
  EXPECT_EQ(Refusal(removeCurrency), Prefixed("figures:3:currency: unknown currency \"USD\""));
  EXPECT_EQ(ExportedTexts(book), before);
  // The rows of one change may refer to each other in any order.
  EXPECT_EQ(refusal({Account("A3", "M3"), Account("M3", "")}), "");
}

TEST_F(BookStore, CheckFindsWhatOtherProgramsHaveSpoiled) {
  EXPECT_TRUE(TBook(File(), TStoreMode::kExisting).Check().empty());
  TSqliteConnection(File(), TStoreMode::kExisting)
      .Execute(
          "PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON;"
          "UPDATE currencies SET base = 1;"
          "UPDATE products SET lot_size = -1 WHERE symbol = '90001';"
          "UPDATE accounts SET master = 'A1' WHERE account = 'A1';"
          "DELETE FROM products WHERE symbol = 'OPT1'");
  std::vector<std::string> texts;
  TBook book(File(), TStoreMode::kExisting);
  for (const TBookFinding& finding : book.Check()) texts.push_back(finding.Text());
  EXPECT_EQ(texts, (std::vector<std::string>{
                       "CHECK constraint failed in products",
                       "positions:2:symbol: unknown symbol \"OPT1\"",
                       "currencies:2:base: a second base currency: \"HKD\" is the base currency",
                       "accounts:2:master: \"A1\" is not a master account (it has no master_type)",
                       "accounts:2:master: a loop of masters: \"A1\" > \"A1\"",
                   }));
  // The export of such a book is still written, and refused when it comes back.
  book.Export(FFolder.Path() / "spoiled");
  EXPECT_NE(Refusal([&] { book.Import(FFolder.Path() / "spoiled"); }), "");
}

}  // namespace

}  // namespace margindesk
