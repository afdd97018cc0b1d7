#include "host/book/Sqlite.h"

#include <cstddef>

#include <sqlite3.h>

namespace margindesk {

namespace {

constexpr int kBusyMilliseconds = 5000;

// Reasons that say more to a user than SQLite's own text.
std::string ReasonOf(sqlite3* handle, int code) {
  switch (code & 0xFF) {
    case SQLITE_NOTADB:
      return "not a book: the file is no SQLite database";
    case SQLITE_BUSY:
      return "in use by another program";
    case SQLITE_CANTOPEN:
      return "cannot be opened (is it there, and may it be read and written?)";
    default:
      return handle == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(handle);
  }
}

}  // namespace

void TSqliteStatement::TFinalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

TSqliteStatement::TSqliteStatement(TSqliteConnection& connection, std::string_view sql)
    : FConnection(connection) {
  sqlite3_stmt* statement = nullptr;
  Check(
      sqlite3_prepare_v2(connection.Handle(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
  FStatement.reset(statement);
}

void TSqliteStatement::Check(int code) const {
  if (code != SQLITE_OK) FConnection.Fail(code);
}

void TSqliteStatement::BindText(int parameter, std::string_view text) {
  Check(sqlite3_bind_text64(FStatement.get(), parameter + 1, text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
}

void TSqliteStatement::BindNumber(int parameter, double value) {
  Check(sqlite3_bind_double(FStatement.get(), parameter + 1, value));
}

void TSqliteStatement::BindInteger(int parameter, std::int64_t value) {
  Check(sqlite3_bind_int64(FStatement.get(), parameter + 1, value));
}

void TSqliteStatement::BindNull(int parameter) { Check(sqlite3_bind_null(FStatement.get(), parameter + 1)); }

bool TSqliteStatement::Step() {
  const int code = sqlite3_step(FStatement.get());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  // The connection keeps the code and the text of the failure through the reset.
  sqlite3_reset(FStatement.get());
  FConnection.Fail(code);
}

void TSqliteStatement::Run() {
  Step();
  Reset();
}

void TSqliteStatement::Reset() { Check(sqlite3_reset(FStatement.get())); }

bool TSqliteStatement::IsNull(int column) const {
  return sqlite3_column_type(FStatement.get(), column) == SQLITE_NULL;
}

std::int64_t TSqliteStatement::Integer(int column) const {
  return sqlite3_column_int64(FStatement.get(), column);
}

double TSqliteStatement::Number(int column) const { return sqlite3_column_double(FStatement.get(), column); }

std::string_view TSqliteStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(FStatement.get(), column));
  if (text == nullptr) return {};
  return {text, static_cast<std::size_t>(sqlite3_column_bytes(FStatement.get(), column))};
}

void TSqliteConnection::TClose::operator()(sqlite3* handle) const { sqlite3_close(handle); }

TSqliteConnection::TSqliteConnection(const std::filesystem::path& file, TStoreMode mode)
    : FFile(file.string()) {
  const int flags = SQLITE_OPEN_READWRITE | (mode == TStoreMode::kCreate ? SQLITE_OPEN_CREATE : 0);
  sqlite3* handle = nullptr;
  const int code = sqlite3_open_v2(FFile.c_str(), &handle, flags, nullptr);
  FHandle.reset(handle);
  if (code != SQLITE_OK) Fail(code);
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, kBusyMilliseconds);
  Execute("PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON");
}

void TSqliteConnection::UseWriteAheadLog() { Execute("PRAGMA journal_mode=WAL"); }

void TSqliteConnection::Execute(const std::string& sql) {
  const int code = sqlite3_exec(FHandle.get(), sql.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) Fail(code);
}

std::int64_t TSqliteConnection::QueryInteger(std::string_view sql) {
  TSqliteStatement statement(*this, sql);
  statement.Step();
  return statement.Integer(0);
}

bool TSqliteConnection::InTransaction() const { return sqlite3_get_autocommit(FHandle.get()) == 0; }

void TSqliteConnection::Fail(int code) const {
  throw TSqliteError(FFile, ReasonOf(FHandle.get(), code), code);
}

TSqliteTransaction::TSqliteTransaction(TSqliteConnection& connection, TMode mode) : FConnection(connection) {
  FConnection.Execute(mode == TMode::kWrite ? "BEGIN IMMEDIATE" : "BEGIN");
}

TSqliteTransaction::~TSqliteTransaction() {
  // A failed rollback means that SQLite has already undone the transaction.
  if (FOpen && FConnection.InTransaction())
    sqlite3_exec(FConnection.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void TSqliteTransaction::Commit() {
  FConnection.Execute("COMMIT");
  FOpen = false;
}

}  // namespace margindesk
