#include "host/book/BookSchema.h"

#include <cstdint>
#include <string>

#include "host/book/BookSql.h"

namespace margindesk {

namespace {

// Marks an SQLite file as a book ("MDbk").
constexpr std::int64_t kBookMark = 0x4D44626B;

// The schema version of the store; 0 for one that nothing has been written to.
std::int64_t StoredVersion(TSqliteConnection& connection) {
  const std::int64_t mark = connection.QueryInteger("PRAGMA application_id");
  if (mark == 0 && connection.QueryInteger("SELECT count(*) FROM sqlite_master") == 0) return 0;
  if (mark != kBookMark)
    throw TBookError(connection.File(), "not a book: the file belongs to another program");
  return connection.QueryInteger("PRAGMA user_version");
}

}  // namespace

void PrepareBookSchema(TSqliteConnection& connection, TStoreMode mode, std::span<const TBookTable> tables,
                       int version) {
  const std::int64_t found = StoredVersion(connection);
  if (found > version) {
    throw TBookError(connection.File(),
                     "the book was written by a newer version of the program (schema version " +
                         std::to_string(found) + ", this program knows up to " + std::to_string(version) +
                         ")");
  }
  if (found == 0 && mode == TStoreMode::kExisting)
    throw TBookError(connection.File(), "not a book: the file is empty");
  connection.UseWriteAheadLog();
  if (found == version) return;

  TSqliteTransaction transaction(connection, TSqliteTransaction::TMode::kWrite);
  // Another program may have been faster.
  const std::int64_t from = StoredVersion(connection);
  if (from >= version) return;
  for (const TBookTable& table : tables) {
    if (table.FSince > from) connection.Execute(CreateTableSql(table));
  }
  connection.Execute("PRAGMA application_id = " + std::to_string(kBookMark) +
                     "; PRAGMA user_version = " + std::to_string(version));
  transaction.Commit();
}

}  // namespace margindesk
