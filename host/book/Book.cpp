#include "host/book/Book.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include <sqlite3.h>

#include "host/book/BookFiles.h"
#include "host/book/BookSchema.h"
#include "host/book/BookSql.h"

namespace margindesk {

namespace {

void RefuseFindings(const std::string& file, const std::vector<TBookFinding>& findings) {
  if (!findings.empty()) throw TBookError(file, findings.front().Text());
}

std::int64_t ReadVersion(TSqliteConnection& connection) {
  return connection.QueryInteger("PRAGMA data_version");
}

}  // namespace

TBook::TBook(const std::filesystem::path& file, TStoreMode mode)
    : FConnection(std::make_unique<TSqliteConnection>(file, mode)) {
  PrepareBookSchema(*FConnection, mode, kBookTables, kBookSchemaVersion);
}

void TBook::Import(const std::filesystem::path& directory) { ImportBookFiles(*FConnection, directory); }

void TBook::Export(const std::filesystem::path& directory) { ExportBookFiles(*FConnection, directory); }

std::vector<TBookFinding> TBook::Check() {
  TSqliteTransaction snapshot(*FConnection, TSqliteTransaction::TMode::kRead);
  std::vector<TBookFinding> findings;
  TSqliteStatement integrity(*FConnection, "PRAGMA integrity_check");
  while (integrity.Step()) {
    if (integrity.Text(0) != "ok") findings.push_back({.FReason = std::string(integrity.Text(0))});
  }
  std::ranges::move(FindBrokenReferences(*FConnection), std::back_inserter(findings));
  std::ranges::move(FindBrokenRules(*FConnection), std::back_inserter(findings));
  return findings;
}

TBookRows TBook::Read(TTable table) { return {*FConnection, BookTable(table)}; }

void TBook::Copy(const std::filesystem::path& file) {
  // A connection that opens only what is there makes no file either; an empty one is as good as none.
  if (!std::filesystem::exists(file)) std::ofstream(file, std::ios::binary);
  const std::string name = file.string();
  TSqliteStatement copy(*FConnection, "VACUUM INTO ?");
  copy.BindText(0, name);
  copy.Run();
}

void TBook::Upsert(std::span<const TBookRow> rows) {
  TBookTransaction transaction(*this);
  for (const TBookRow& row : rows) transaction.Upsert(row);
  transaction.Commit();
}

TBookSnapshot::TBookSnapshot(TBook& book)
    : FTransaction(*book.FConnection, TSqliteTransaction::TMode::kRead) {
  book.FSnapshotVersion = ReadVersion(*book.FConnection);
}

TBookTransaction::TBookTransaction(TBook& book)
    : FBook(book), FTransaction(*book.FConnection, TSqliteTransaction::TMode::kWrite) {}

void TBookTransaction::RequireUnchanged() {
  TSqliteConnection& connection = *FBook.FConnection;
  if (FBook.FSnapshotVersion && ReadVersion(connection) != *FBook.FSnapshotVersion)
    throw TBookChangedError(connection.File());
}

TSqliteStatement& TBookTransaction::Prepare(TBook::TStatements& statements, const TBookTable& table,
                                            const std::string& sql) {
  auto& statement = statements[static_cast<std::size_t>(table.FTable)];
  if (!statement) statement = std::make_unique<TSqliteStatement>(*FBook.FConnection, sql);
  FWritten.insert(table.FTable);
  return *statement;
}

void TBookTransaction::Upsert(const TBookRow& row) {
  const TBookTable& table = BookTable(row.Table());
  FCells.clear();
  for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
    const TBookColumn& column = table.FColumns[i];
    TBookCell cell = row.Cell(i);
    if (std::holds_alternative<std::monostate>(cell) && !column.FWhenEmpty.empty()) {
      cell = row.Cell(table.Column(column.FWhenEmpty));
    }
    if (const TBookRefusal refusal = CheckBookCell(column, cell)) {
      throw TBookError(FBook.FConnection->File(),
                       std::string(table.FName) + ":" + std::string(column.FName) + ": " + *refusal);
    }
    FCells.push_back(cell);
  }
  TSqliteStatement& statement = Prepare(FBook.FUpserts, table, UpsertSql(table));
  BindBookCells(statement, FCells);
  statement.Run();
}

bool TBookTransaction::Remove(const TBookRow& row) {
  const TBookTable& table = BookTable(row.Table());
  FCells.clear();
  for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
    if (table.FColumns[i].FKey) FCells.push_back(row.Cell(i));
  }
  TSqliteStatement& statement = Prepare(FBook.FRemovals, table, RemoveByKeySql(table));
  BindBookCells(statement, FCells);
  statement.Run();
  return sqlite3_changes64(FBook.FConnection->Handle()) > 0;
}

void TBookTransaction::Commit() {
  TSqliteConnection& connection = *FBook.FConnection;
  RefuseFindings(connection.File(), FindBrokenRules(connection, FWritten));
  try {
    FTransaction.Commit();
  } catch (const TSqliteError& error) {
    if (error.Code() == SQLITE_CONSTRAINT_FOREIGNKEY) {
      RefuseFindings(connection.File(), FindBrokenReferences(connection));
    }
    throw;
  }
}

}  // namespace margindesk
