#include "host/services/ConfigStore.h"

#include <array>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>

#include <sqlite3.h>

namespace margindesk {

namespace {

constexpr std::int64_t kApplicationId = 0x4D444346;  // "MDCF" in the file's header
constexpr std::int64_t kVersion = 1;

[[noreturn]] void Refuse(const std::filesystem::path& file, std::string_view reason) {
  throw TConfigError(file.string().append(": ").append(reason));
}

std::uint32_t BigEndian(const std::array<char, 100>& header, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = at; i < at + 4; ++i) value = value << 8 | static_cast<unsigned char>(header[i]);
  return value;
}

// What the file says about itself is read without SQLite, which would write to a file of its kind that has
// changes pending.
void CheckHeader(const std::filesystem::path& file) {
  std::error_code ignored;
  const auto status = std::filesystem::status(file, ignored);
  if (!std::filesystem::exists(status)) return;
  if (!std::filesystem::is_regular_file(status)) Refuse(file, "not a file");
  std::ifstream stream(file, std::ios::binary);
  if (!stream) Refuse(file, "cannot be read");
  std::array<char, 100> header{};
  stream.read(header.data(), header.size());
  if (stream.gcount() == 0) return;  // made, but never filled
  constexpr std::string_view kMagic("SQLite format 3\0", 16);
  if (std::string_view(header.data(), kMagic.size()) != kMagic || BigEndian(header, 68) != kApplicationId) {
    Refuse(file, "not a MarginDesk configuration");
  }
  if (BigEndian(header, 60) > kVersion) Refuse(file, "a configuration of a newer version of MarginDesk");
}

// Opened for reading alone, so that nothing is written into a damaged file when it is closed. Other faults
// (a folder without access, a file in use) are left to the opening proper, which names them.
void CheckContents(const std::filesystem::path& file) {
  if (std::error_code ignored; !std::filesystem::exists(file, ignored)) return;
  sqlite3* opened = nullptr;
  sqlite3_stmt* prepared = nullptr;
  sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(opened, &sqlite3_close);
  sqlite3_busy_timeout(opened, 5000);
  sqlite3_prepare_v2(opened, "PRAGMA quick_check(1)", -1, &prepared, nullptr);
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, &sqlite3_finalize);
  std::string found = "ok";
  if (sqlite3_step(prepared) == SQLITE_ROW) {
    found = reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
  } else if (const int code = sqlite3_errcode(opened); code == SQLITE_CORRUPT || code == SQLITE_NOTADB) {
    found = sqlite3_errmsg(opened);
  }
  if (found != "ok") Refuse(file, "damaged: " + found.substr(0, found.find('\n')));
}

TSqliteConnection Open(const std::filesystem::path& file) {
  CheckHeader(file);
  CheckContents(file);
  return TSqliteConnection(file, TStoreMode::kCreate);
}

}  // namespace

// The marks of the header are made with the table, before there is a log that could hold them back.
TConfigStore::TConfigStore(const std::filesystem::path& file) try : FConnection(Open(file)) {
  if (FConnection.QueryInteger("PRAGMA application_id") != kApplicationId) {
    TSqliteTransaction transaction(FConnection, TSqliteTransaction::TMode::kWrite);
    FConnection.Execute(
        "CREATE TABLE IF NOT EXISTS setting(section TEXT NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL,"
        " PRIMARY KEY(section, key)) WITHOUT ROWID;"
        "PRAGMA application_id=" +
        std::to_string(kApplicationId) + ";PRAGMA user_version=" + std::to_string(kVersion));
    transaction.Commit();
  }
  FConnection.UseWriteAheadLog();
} catch (const TBookError& error) {
  throw TConfigError(error.what());
}

void TConfigStore::ReadAll(
    const std::function<void(std::string_view, std::string_view, std::string_view)>& take) try {
  TSqliteStatement query(FConnection, "SELECT section, key, value FROM setting");
  while (query.Step()) take(query.Text(0), query.Text(1), query.Text(2));
} catch (const TBookError& error) {
  throw TConfigError(error.what());
}

void TConfigStore::Put(std::string_view section, std::string_view key, std::string_view value) try {
  TSqliteStatement change(FConnection, value.empty()
                                           ? "DELETE FROM setting WHERE section=? AND key=?"
                                           : "INSERT INTO setting(section, key, value) VALUES(?, ?, ?)"
                                             " ON CONFLICT DO UPDATE SET value=excluded.value");
  change.BindText(0, section);
  change.BindText(1, key);
  if (!value.empty()) change.BindText(2, value);
  change.Run();
} catch (const TBookError& error) {
  throw TConfigError(error.what());
}

}  // namespace margindesk
