#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "host/book/BookError.h"
#include "host/book/BookRow.h"
#include "host/book/BookRules.h"
#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

class TBookSnapshot;
class TBookTransaction;

// The back-office book: currencies, exchanges, products, prices, accounts, their figures and their positions,
// in one SQLite file. Every change is one transaction; what an operation has done when it returns is on the
// disk and survives a crash of the process or of the machine, and what it has not finished leaves no trace.
// Several programs may have the same book open; a change waits some seconds for another one. Everything that
// fails throws TBookError and leaves the stored book as it was.
class TBook {
 public:
  // Opens a book. With kCreate, a missing (or empty) file becomes an empty book. A file that is no book and a
  // book of a newer schema version are refused; an older one is brought up to date.
  TBook(const std::filesystem::path& file, TStoreMode mode);

  // Replaces the whole contents by the CSV files of a directory, one for each table, named after it. Files of
  // tables that are not required may be missing, which leaves the table empty; other files are not looked at,
  // but any other
  // ".csv" is refused, because it is most likely a misspelt one. All or nothing.
  void Import(const std::filesystem::path& directory);

  // Writes every table into the directory, which is made if it is not there. Importing the files gives the
  // same book, and exporting that the same bytes. A directory with a CSV file that is not the book's is
  // refused.
  void Export(const std::filesystem::path& directory);

  // Writes the book as it is now into a new file; one that is there already is refused.
  void Copy(const std::filesystem::path& file);

  // Looks at the stored book as a whole: the file itself, what each value may be, references and the rules
  // between tables. Nothing is found in a book that only this class has written and that has had at least one
  // import.
  std::vector<TBookFinding> Check();

  // The rows of a table as they are now. While they are being read, the same table must not be written.
  TBookRows Read(TTable table);

  // Writes rows of one table in one transaction, see TBookTransaction.
  void Upsert(std::span<const TBookRow> rows);

 private:
  friend class TBookSnapshot;
  friend class TBookTransaction;

  // Statements are prepared when they are first needed and kept.
  using TStatements = std::array<std::unique_ptr<TSqliteStatement>, kBookTables.size()>;

  std::unique_ptr<TSqliteConnection> FConnection;
  TStatements FUpserts;
  TStatements FRemovals;
  // Of what the last snapshot held, none before it; other programs' changes alone move it.
  std::optional<std::int64_t> FSnapshotVersion;
};

// Holds the book as it is now: while it lives, reads of several tables are of one moment, whatever other
// programs write. One at a time, not together with a transaction; must not outlive its book.
class TBookSnapshot {
 public:
  explicit TBookSnapshot(TBook& book);

 private:
  TSqliteTransaction FTransaction;
};

// A change of one or several tables. It holds when Commit returns, and is undone when it is destroyed before
// that. One at a time; must not outlive its book. After an exception it can only be thrown away.
class TBookTransaction {
 public:
  explicit TBookTransaction(TBook& book);

  // For changes that were reckoned from what the last snapshot held: throws TBookChangedError when another
  // program has changed the book since then.
  void RequireUnchanged();

  // Writes a row: replaces the one with the same key, which keeps its place in the order of reading, or adds
  // one.
  void Upsert(const TBookRow& row);
  // Removes the row with the key of the given one; false when there is none.
  bool Remove(const TBookRow& row);

  // Checks references and the rules of the tables that were written; throws TBookError when one is broken.
  void Commit();

 private:
  TSqliteStatement& Prepare(TBook::TStatements& statements, const TBookTable& table, const std::string& sql);

  TBook& FBook;
  TSqliteTransaction FTransaction;
  std::set<TTable> FWritten;
  std::vector<TBookCell> FCells;
};

}  // namespace margindesk
