#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {

namespace {

// Fills a book with rows that are allowed and otherwise as awkward as can be, from the list of tables alone.
class TRandomBook {
 public:
  explicit TRandomBook(std::uint64_t seed) : FRandom(seed) {}

  void Fill(TBook& book) {
    TBookTransaction transaction(book);
    for (const TBookTable& table : kBookTables) {
      const int rows = table.FTable == TTable::kSettings ? 1 : static_cast<int>(Below(30)) + 2;
      for (int row = 0; row < rows; ++row) AddRow(transaction, table, row);
    }
    transaction.Commit();
  }

 private:
  std::uint64_t Below(std::uint64_t limit) { return FRandom() % limit; }

  void AddRow(TBookTransaction& transaction, const TBookTable& table, int number) {
    TBookRow row(table.FTable);
    std::string key;
    for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
      SetValue(row, table, i);
      KeepRules(row, table, i, number);
      if (table.FColumns[i].FKey) AppendBookField(key.append(","), table.FColumns[i], row.Cell(i));
    }
    if (!FKeys[table.FTable].insert(key).second) return;
    transaction.Upsert(row);
    for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
      const TBookCell cell = row.Cell(i);
      if (const auto* text = std::get_if<std::string_view>(&cell)) {
        FValues[table.FTable][table.FColumns[i].FName].emplace_back(*text);
      }
    }
  }

  void SetValue(TBookRow& row, const TBookTable& table, std::size_t index) {
    const TBookColumn& column = table.FColumns[index];
    if (column.FNullable && (column.FUnique || Below(4) == 0)) {
      row.SetEmpty(index);
    } else if (column.FReference) {
      const auto& known = FValues[column.FReference->FTable][column.FReference->FColumn];
      if (!known.empty()) row.SetText(index, known[Below(known.size())]);
    } else if (column.FKind == TColumnKind::kNumber) {
      row.SetNumber(index, Number(column));
    } else if (column.FKind == TColumnKind::kInteger) {
      const auto low = static_cast<std::int64_t>(column.FLowest);
      row.SetInteger(index, low + static_cast<std::int64_t>(Below(0x7FFFFFFF)));
    } else if (column.FKind == TColumnKind::kFlag) {
      row.SetFlag(index, Below(2) == 0);
    } else if (column.FKind == TColumnKind::kChoice) {
      row.SetText(index, column.FChoices[Below(column.FChoices.size())]);
    } else if (column.FKind == TColumnKind::kDate) {
      row.SetText(index, "20" + std::to_string(10 + Below(90)) + "-0" + std::to_string(1 + Below(9)) + "-28");
    } else {
      row.SetText(index, AwkwardText());
    }
  }

  // What the rules between rows ask for.
  void KeepRules(TBookRow& row, const TBookTable& table, std::size_t index, int number) {
    const std::string_view name = table.FColumns[index].FName;
    if (table.FTable == TTable::kCurrencies && name == "base") {
      row.SetFlag(index, number == 0);
      if (number == 0) row.SetNumber(table.Column("ratio"), 1);
    }
    if (table.FTable == TTable::kAccounts && name == "master_type") row.SetInteger(index, 10);
    if (table.FTable == TTable::kCustomFields && name == "key")
      row.SetText(index, AwkwardText() + std::to_string(number));
    if (table.FTable == TTable::kChinaConnectLinks && name == "linked_account") {
      const auto& accounts = FValues[TTable::kAccounts]["account"];
      const TBookCell account = row.Cell(table.Column("account"));
      if (std::get<std::string_view>(account) == accounts[0])
        row.SetText(index, accounts[1]);
      else
        row.SetText(index, accounts[0]);
    }
  }

  double Number(const TBookColumn& column) {
    using TLimits = std::numeric_limits<double>;
    static constexpr double kAwkward[] = {0.1,
                                          1.0 / 3,
                                          1e15,
                                          1e23,
                                          0.30000000000000004,
                                          9007199254740993.0,
                                          TLimits::max(),
                                          TLimits::min(),
                                          TLimits::denorm_min(),
                                          -0.0,
                                          TLimits::lowest(),
                                          -2.5};
    for (;;) {
      const double value =
          Below(2) == 0 ? kAwkward[Below(std::size(kAwkward))] : std::bit_cast<double>(FRandom());
      if (std::isfinite(value) && value >= column.FLowest && (value > column.FLowest || !column.FAboveLowest))
        return value;
    }
  }

  std::string AwkwardText() {
    static constexpr std::string_view kPieces[] = {
        ",",  "\"", "\n",   "\r", "\r\n",         " ",  "'",    ";",   "\t", "a", "Z", "0", "-1",
        "=1", "é",  "漢字", "😀",  "\xEF\xBB\xBF", "%s", "\x7F", "NULL"};
    std::string text;
    for (std::uint64_t i = Below(6) + 1; i > 0; --i) text += kPieces[Below(std::size(kPieces))];
    return text;
  }

  std::mt19937_64 FRandom;
  std::map<TTable, std::set<std::string>> FKeys;
  std::map<TTable, std::map<std::string_view, std::vector<std::string>>> FValues;
};

// Every value of a book, exactly.
std::vector<std::string> Values(TBook& book) {
  std::vector<std::string> values;
  for (const TBookTable& table : kBookTables) {
    TBookRows rows = book.Read(table.FTable);
    while (rows.Next()) {
      for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
        const TBookCell cell = rows.Cell(i);
        std::string value = std::to_string(cell.index()) + " ";
        if (const auto* text = std::get_if<std::string_view>(&cell)) value += *text;
        if (const auto* whole = std::get_if<std::int64_t>(&cell)) value += std::to_string(*whole);
        if (const auto* number = std::get_if<double>(&cell))
          value += std::to_string(std::bit_cast<std::uint64_t>(*number));
        values.push_back(value);
      }
    }
  }
  return values;
}

TEST(BookRoundTrip, AnExportedBookIsImportedAsItWasAndExportedToTheSameBytes) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    const TTemporaryFolder folder;
    TBook first(folder.Path() / "first.db", TStoreMode::kCreate);
    TRandomBook(seed).Fill(first);
    EXPECT_TRUE(first.Check().empty()) << first.Check().front().Text();
    first.Export(folder.Path() / "csv");

    TBook second(folder.Path() / "second.db", TStoreMode::kCreate);
    second.Import(folder.Path() / "csv");
    EXPECT_EQ(Values(second), Values(first));
    EXPECT_EQ(ExportedTexts(second), ReadBookTexts(folder.Path() / "csv"));
  }
}

TEST(BookRoundTrip, TheSmallBookComesBackByteForByte) {
  const TTemporaryFolder folder;
  WriteBookTexts(folder.Path() / "csv", SmallBookTexts());
  TBook book(folder.Path() / "book.db", TStoreMode::kCreate);
  book.Import(folder.Path() / "csv");
  EXPECT_EQ(ExportedTexts(book), SmallBookTexts());
}

}  // namespace

}  // namespace margindesk
