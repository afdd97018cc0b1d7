#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <sqlite3.h>

#include "host/book/BookFiles.h"
#include "host/book/BookRules.h"
#include "host/book/BookSql.h"
#include "host/book/Csv.h"

namespace margindesk {

namespace {

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(stream), {});
  if (!stream || stream.bad()) throw TBookError(file.string(), "cannot be read");
  return text;
}

// Where the columns of a table stand in a file.
class TCsvHeader {
 public:
  // Throws TBookError when the record does not name every column once and no other.
  TCsvHeader(const TBookTable& table, const std::string& file, const TCsvReader& record) : FTable(table) {
    FFields.resize(table.FColumns.size());
    for (std::size_t field = 0; field < record.FieldCount(); ++field) AddField(file, record, field);
    for (std::size_t i = 0; i < FFields.size(); ++i) {
      if (!FFields[i]) throw TBookError(file, 1, table.FColumns[i].FName, "missing column");
    }
  }

  std::size_t FieldCount() const { return FNames.size(); }
  // Field that holds a column of the table.
  std::size_t FieldOf(std::size_t column) const { return *FFields[column]; }
  // What messages call a field.
  std::string NameOf(std::size_t field) const {
    return field < FNames.size() ? FNames[field] : Ordinal(field);
  }

  static std::string Ordinal(std::size_t field) { return "column " + std::to_string(field + 1); }

 private:
  void AddField(const std::string& file, const TCsvReader& record, std::size_t field) {
    const std::string_view name = record.Field(field);
    for (std::size_t i = 0; i < FFields.size(); ++i) {
      if (FTable.FColumns[i].FName != name) continue;
      if (FFields[i]) throw TBookError(file, record.FieldLine(field), name, "duplicate column");
      FFields[i] = field;
      FNames.emplace_back(name);
      return;
    }
    throw TBookError(file, record.FieldLine(field), Ordinal(field),
                     "unknown column " + QuotedForMessage(name));
  }

  const TBookTable& FTable;
  std::vector<std::optional<std::size_t>> FFields;  // by column of the table
  std::vector<std::string> FNames;                  // by field of the file
};

// One import: the new contents replace the old ones inside a transaction that only the end commits. Rows get
// the numbers 1, 2, 3, ..., so that whatever is found out later about a stored row leads back to its line.
class TBookImport {
 public:
  TBookImport(TSqliteConnection& connection, const std::filesystem::path& directory)
      : FConnection(connection), FDirectory(directory) {}

  void Run() {
    CheckBookDirectory(FDirectory);
    TSqliteTransaction transaction(FConnection, TSqliteTransaction::TMode::kWrite);
    for (auto table = kBookTables.rbegin(); table != kBookTables.rend(); ++table) {
      FConnection.Execute(ClearSql(*table));
    }
    for (const TBookTable& table : kBookTables) ImportTable(table);
    Refuse(FindBrokenReferences(FConnection));
    Refuse(FindBrokenRules(FConnection));
    transaction.Commit();
  }

 private:
  std::string FileOf(const TBookTable& table) const { return BookFile(FDirectory, table).string(); }
  std::vector<std::size_t>& LinesOf(TTable table) { return FLines[static_cast<std::size_t>(table)]; }

  void ImportTable(const TBookTable& table) {
    const std::filesystem::path file = BookFile(FDirectory, table);
    if (!std::filesystem::exists(file)) {
      if (table.FRequired) throw TBookError(file.string(), "missing file");
      return;
    }
    const std::string text = ReadFile(file);
    TCsvReader reader(text);
    std::optional<TCsvHeader> header;
    try {
      reader.Next();
      header.emplace(table, file.string(), reader);
      TSqliteStatement insert(FConnection, InsertSql(table));
      while (reader.Next()) ImportRow(table, *header, reader, insert);
    } catch (const TCsvFault& fault) {
      throw TBookError(file.string(), fault.FLine,
                       header ? header->NameOf(fault.FField) : TCsvHeader::Ordinal(fault.FField),
                       fault.FReason);
    }
  }

  void ImportRow(const TBookTable& table, const TCsvHeader& header, const TCsvReader& reader,
                 TSqliteStatement& insert) {
    CheckFieldCount(table, header, reader);
    FCells.resize(table.FColumns.size());
    for (std::size_t i = 0; i < FCells.size(); ++i) {
      const TBookColumn& column = table.FColumns[i];
      const std::size_t field = header.FieldOf(i);
      std::string_view text = reader.Field(field);
      if (text.empty() && !column.FWhenEmpty.empty()) {
        text = reader.Field(header.FieldOf(table.Column(column.FWhenEmpty)));
      }
      if (const TBookRefusal refusal = ParseBookField(column, text, FCells[i])) {
        throw TBookError(FileOf(table), reader.FieldLine(field), column.FName, *refusal);
      }
    }
    BindBookCells(insert, FCells);
    try {
      insert.Run();
    } catch (const TSqliteError& error) {
      if (error.Code() != SQLITE_CONSTRAINT_UNIQUE) throw;
      RefuseDuplicate(table, header, reader);
    }
    LinesOf(table.FTable).push_back(reader.FieldLine(0));
  }

  void CheckFieldCount(const TBookTable& table, const TCsvHeader& header, const TCsvReader& reader) const {
    const std::size_t count = reader.FieldCount();
    if (count == header.FieldCount()) return;
    const std::size_t place = std::min(count, header.FieldCount());
    const std::string counts =
        " (" + std::to_string(count) + " of " + std::to_string(header.FieldCount()) + " fields)";
    throw TBookError(FileOf(table), reader.FieldLine(std::min(place, count - 1)), header.NameOf(place),
                     (count < header.FieldCount() ? "too few fields" : "too many fields") + counts);
  }

  // The row just bound has the key of an earlier row, or its value in a column where no two rows have the
  // same.
  [[noreturn]] void RefuseDuplicate(const TBookTable& table, const TCsvHeader& header,
                                    const TCsvReader& reader) {
    std::vector<TBookCell> key;
    std::size_t column = 0;
    for (std::size_t i = 0; i < FCells.size(); ++i) {
      if (!table.FColumns[i].FKey) continue;
      key.push_back(FCells[i]);
      column = i;
    }
    std::optional<std::int64_t> row = FindRow(FindByKeySql(table), key);
    std::string_view reason = "duplicate key";
    for (std::size_t i = 0; !row && i < FCells.size(); ++i) {
      const TBookColumn& unique = table.FColumns[i];
      if (!unique.FUnique) continue;
      row = FindRow(
          "SELECT row_number FROM " + SqlName(table.FName) + " WHERE " + SqlName(unique.FName) + " = ?",
          {&FCells[i], 1});
      column = i;
      reason = "duplicate value";
    }
    const std::size_t line = LinesOf(table.FTable).at(static_cast<std::size_t>(row.value() - 1));
    throw TBookError(FileOf(table), reader.FieldLine(header.FieldOf(column)), table.FColumns[column].FName,
                     std::string(reason) + " (first on line " + std::to_string(line) + ")");
  }

  std::optional<std::int64_t> FindRow(const std::string& sql, std::span<const TBookCell> cells) {
    TSqliteStatement statement(FConnection, sql);
    BindBookCells(statement, cells);
    if (!statement.Step()) return std::nullopt;
    return statement.Integer(0);
  }

  void Refuse(const std::vector<TBookFinding>& findings) {
    if (findings.empty()) return;
    const TBookFinding& finding = findings.front();
    const std::vector<std::size_t>& lines = LinesOf(finding.FTable.value());
    const std::size_t line = finding.FRow == 0 ? 1 : lines.at(static_cast<std::size_t>(finding.FRow - 1));
    throw TBookError(FileOf(BookTable(*finding.FTable)), line, finding.FColumn, finding.FReason);
  }

  TSqliteConnection& FConnection;
  const std::filesystem::path& FDirectory;
  std::array<std::vector<std::size_t>, kBookTables.size()> FLines;  // of the file, by row
  std::vector<TBookCell> FCells;                                    // of the row being imported
};

}  // namespace

void ImportBookFiles(TSqliteConnection& connection, const std::filesystem::path& directory) {
  TBookImport(connection, directory).Run();
}

}  // namespace margindesk
