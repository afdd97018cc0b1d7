#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "host/book/BookError.h"

struct sqlite3;
struct sqlite3_stmt;

namespace margindesk {

// A refusal by SQLite. what() is "file: reason".
class TSqliteError : public TBookError {
 public:
  TSqliteError(std::string_view file, std::string_view reason, int code)
      : TBookError(file, reason), FCode(code) {}

  // SQLite's extended result code.
  int Code() const { return FCode; }

 private:
  int FCode;
};

class TSqliteConnection;

// A prepared statement. Parameters and columns are counted from 0. Must not outlive its connection. Every
// operation throws TSqliteError when SQLite refuses.
class TSqliteStatement {
 public:
  TSqliteStatement(TSqliteConnection& connection, std::string_view sql);

  // Text is borrowed until the statement has been stepped to its end or reset.
  void BindText(int parameter, std::string_view text);
  void BindNumber(int parameter, double value);
  void BindInteger(int parameter, std::int64_t value);
  void BindNull(int parameter);

  // Runs to the next row; false when there is none.
  bool Step();
  // Runs a statement that gives no rows and makes it ready for the next run.
  void Run();
  void Reset();

  bool IsNull(int column) const;
  std::int64_t Integer(int column) const;
  double Number(int column) const;
  // Valid until the next Step or Reset.
  std::string_view Text(int column) const;

 private:
  struct TFinalize {
    void operator()(sqlite3_stmt* statement) const;
  };

  void Check(int code) const;

  TSqliteConnection& FConnection;
  std::unique_ptr<sqlite3_stmt, TFinalize> FStatement;
};

enum class TStoreMode {
  kExisting,  // the file has to be there
  kCreate,    // a missing file is made
};

// An open SQLite file with the settings that the host's stores share: synchronous FULL (what has been
// committed survives a crash of the process and of the machine), foreign keys enforced, a wait of some
// seconds for another program's change. Opening changes nothing in a file that exists.
class TSqliteConnection {
 public:
  // Throws TSqliteError when the file is missing (kExisting) or cannot be opened.
  TSqliteConnection(const std::filesystem::path& file, TStoreMode mode);
  TSqliteConnection(const TSqliteConnection&) = delete;
  TSqliteConnection& operator=(const TSqliteConnection&) = delete;

  // Makes the file keep its changes in a write-ahead log, so that reading and writing do not wait for each
  // other.
  void UseWriteAheadLog();

  // Runs one or several statements that give no rows.
  void Execute(const std::string& sql);
  // The first column of the first row of a query that gives one.
  std::int64_t QueryInteger(std::string_view sql);

  const std::string& File() const { return FFile; }
  bool InTransaction() const;
  sqlite3* Handle() const { return FHandle.get(); }
  [[noreturn]] void Fail(int code) const;

 private:
  struct TClose {
    void operator()(sqlite3* handle) const;
  };

  std::string FFile;
  std::unique_ptr<sqlite3, TClose> FHandle;
};

// A transaction that is undone unless it is committed.
class TSqliteTransaction {
 public:
  enum class TMode { kRead, kWrite };

  TSqliteTransaction(TSqliteConnection& connection, TMode mode);
  ~TSqliteTransaction();
  TSqliteTransaction(const TSqliteTransaction&) = delete;
  TSqliteTransaction& operator=(const TSqliteTransaction&) = delete;

  // When it throws, the transaction is still open: it may be looked at and is then undone.
  void Commit();

 private:
  TSqliteConnection& FConnection;
  bool FOpen = true;
};

}  // namespace margindesk
