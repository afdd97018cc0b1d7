#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <sqlite3.h>

#include "host/book/BookFiles.h"
#include "host/book/BookRules.h"
#include "host/book/BookSql.h"
#include "host/book/Csv.h"

namespace margindesk {

namespace {

std::string ReadFile(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) throw TBookError(file.string(), "cannot be read");
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (error) throw TBookError(file.string(), "cannot be read");
  std::string text(static_cast<std::size_t>(size), '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (!stream) throw TBookError(file.string(), "cannot be read");
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

// The lines of a file that the stored rows came from.
class TRowLines {
 public:
  void Add(const TCsvReader& record, const TCsvHeader& header, std::size_t columns) {
    FFirst.push_back(record.FieldLine(0));
    if (record.FieldLine(record.FieldCount() - 1) == record.FieldLine(0)) return;
    std::vector<std::size_t>& lines = FSpread[FFirst.size()];
    for (std::size_t i = 0; i < columns; ++i) lines.push_back(record.FieldLine(header.FieldOf(i)));
  }

  // Line of a column of a row, which is counted from 1; row 0 is the table as a whole.
  std::size_t Of(std::int64_t row, std::size_t column) const {
    if (row == 0) return 1;
    const auto number = static_cast<std::size_t>(row);
    const auto spread = FSpread.find(number);
    return spread == FSpread.end() ? FFirst.at(number - 1) : spread->second[column];
  }

 private:
  std::vector<std::size_t> FFirst;                          // by row
  std::map<std::size_t, std::vector<std::size_t>> FSpread;  // by column, for a row of several lines
};

// Stores the rows of one file into an empty table. They get the numbers 1, 2, 3, ..., so that whatever is
// found out later about a stored row leads back to its line.
class TTableImport {
 public:
  TTableImport(TSqliteConnection& connection, const TBookTable& table, const std::filesystem::path& file)
      : FConnection(connection),
        FTable(table),
        FFile(file.string()),
        FText(ReadFile(file)),
        FReader(FText),
        FCells(table.FColumns.size()) {}

  TRowLines Run() {
    try {
      FReader.Next();
      FHeader.emplace(FTable, FFile, FReader);
      TSqliteStatement insert(FConnection, InsertSql(FTable));
      while (FReader.Next()) ImportRow(insert);
    } catch (const TCsvFault& fault) {
      const std::string column = FHeader ? FHeader->NameOf(fault.FField) : TCsvHeader::Ordinal(fault.FField);
      throw TBookError(FFile, fault.FLine, column, fault.FReason);
    }
    return std::move(FLines);
  }

 private:
  void ImportRow(TSqliteStatement& insert) {
    CheckFieldCount();
    for (std::size_t i = 0; i < FCells.size(); ++i) {
      if (const TBookRefusal refusal = ParseBookField(FTable.FColumns[i], FieldText(i), FCells[i])) {
        Refuse(i, *refusal);
      }
    }
    BindBookCells(insert, FCells);
    try {
      insert.Run();
    } catch (const TSqliteError& error) {
      if (error.Code() == SQLITE_CONSTRAINT_UNIQUE) RefuseDuplicate();
      throw;
    }
    FLines.Add(FReader, *FHeader, FCells.size());
  }

  void CheckFieldCount() const {
    const std::size_t count = FReader.FieldCount();
    const std::size_t wanted = FHeader->FieldCount();
    if (count == wanted) return;
    const std::string counts = " (" + std::to_string(count) + " of " + std::to_string(wanted) + " fields)";
    throw TBookError(FFile, FReader.FieldLine(std::min(count - 1, wanted)),
                     FHeader->NameOf(std::min(count, wanted)),
                     (count < wanted ? "too few fields" : "too many fields") + counts);
  }

  std::string_view FieldText(std::size_t index) const {
    const TBookColumn& column = FTable.FColumns[index];
    const std::string_view text = FReader.Field(FHeader->FieldOf(index));
    if (!text.empty() || column.FWhenEmpty.empty()) return text;
    return FReader.Field(FHeader->FieldOf(FTable.Column(column.FWhenEmpty)));
  }

  // The row just bound has the key of an earlier row, or its value in a column where no two rows have the
  // same.
  void RefuseDuplicate() {
    std::vector<TBookCell> key;
    std::size_t last = 0;
    for (std::size_t i = 0; i < FCells.size(); ++i) {
      if (!FTable.FColumns[i].FKey) continue;
      key.push_back(FCells[i]);
      last = i;
    }
    RefuseIfFound(FindByKeySql(FTable), key, last, "duplicate key");
    for (std::size_t i = 0; i < FCells.size(); ++i) {
      const TBookColumn& column = FTable.FColumns[i];
      if (column.FUnique)
        RefuseIfFound(FindByColumnSql(FTable, column), {&FCells[i], 1}, i, "duplicate value");
    }
  }

  void RefuseIfFound(const std::string& sql, std::span<const TBookCell> cells, std::size_t column,
                     const std::string& reason) {
    TSqliteStatement statement(FConnection, sql);
    BindBookCells(statement, cells);
    if (!statement.Step()) return;
    const std::size_t first = FLines.Of(statement.Integer(0), column);
    Refuse(column, reason + " (first on line " + std::to_string(first) + ")");
  }

  [[noreturn]] void Refuse(std::size_t column, const std::string& reason) const {
    throw TBookError(FFile, FReader.FieldLine(FHeader->FieldOf(column)), FTable.FColumns[column].FName,
                     reason);
  }

  TSqliteConnection& FConnection;
  const TBookTable& FTable;
  const std::string FFile;
  const std::string FText;
  TCsvReader FReader;
  std::optional<TCsvHeader> FHeader;
  std::vector<TBookCell> FCells;  // of the row being imported
  TRowLines FLines;
};

using TBookLines = std::map<TTable, TRowLines>;

// Refuses the files when the rows stored from them break a rule.
void RefuseFindings(const std::vector<TBookFinding>& findings, const std::filesystem::path& directory,
                    const TBookLines& lines) {
  if (findings.empty()) return;
  const TBookFinding& finding = findings.front();
  const TBookTable& table = BookTable(finding.FTable.value());
  throw TBookError(BookFile(directory, table).string(),
                   lines.at(table.FTable).Of(finding.FRow, table.Column(finding.FColumn)), finding.FColumn,
                   finding.FReason);
}

}  // namespace

void ImportBookFiles(TSqliteConnection& connection, const std::filesystem::path& directory) {
  CheckBookDirectory(directory);
  TSqliteTransaction transaction(connection, TSqliteTransaction::TMode::kWrite);
  for (auto table = kBookTables.rbegin(); table != kBookTables.rend(); ++table) {
    connection.Execute(ClearSql(*table));
  }
  TBookLines lines;
  for (const TBookTable& table : kBookTables) {
    const std::filesystem::path file = BookFile(directory, table);
    std::error_code error;
    if (std::filesystem::exists(file, error)) {
      lines[table.FTable] = TTableImport(connection, table, file).Run();
    } else if (table.FRequired) {
      throw TBookError(file.string(), "missing file");
    }
  }
  RefuseFindings(FindBrokenReferences(connection), directory, lines);
  RefuseFindings(FindBrokenRules(connection), directory, lines);
  transaction.Commit();
}

}  // namespace margindesk
