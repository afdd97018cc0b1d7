#include <array>
#include <cstddef>
#include <fstream>
#include <string>
#include <system_error>

#include "host/book/BookCell.h"
#include "host/book/BookFiles.h"
#include "host/book/BookSql.h"

namespace margindesk {

namespace {

std::string TableAsCsv(TSqliteConnection& connection, const TBookTable& table) {
  std::string text;
  for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
    if (i > 0) text += ',';
    text += table.FColumns[i].FName;
  }
  text += '\n';
  TSqliteStatement rows(connection, ReadSql(table));
  while (rows.Step()) {
    for (std::size_t i = 0; i < table.FColumns.size(); ++i) {
      if (i > 0) text += ',';
      AppendBookField(text, table.FColumns[i], ReadBookCell(rows, table, i));
    }
    text += '\n';
  }
  return text;
}

// A name that no import looks at.
std::filesystem::path UnfinishedFile(const std::filesystem::path& file) {
  std::filesystem::path unfinished = file;
  unfinished += ".unfinished";
  return unfinished;
}

void WriteFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (!stream) throw TBookError(file.string(), "cannot be written");
}

}  // namespace

void ExportBookFiles(TSqliteConnection& connection, const std::filesystem::path& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw TBookError(directory.string(), "cannot be made a directory: " + error.message());
  CheckBookDirectory(directory);
  {
    // All tables as they are at one moment.
    TSqliteTransaction snapshot(connection, TSqliteTransaction::TMode::kRead);
    for (const TBookTable& table : kBookTables) {
      WriteFile(UnfinishedFile(BookFile(directory, table)), TableAsCsv(connection, table));
    }
  }
  for (const TBookTable& table : kBookTables) {
    const std::filesystem::path file = BookFile(directory, table);
    std::filesystem::rename(UnfinishedFile(file), file, error);
    if (error) throw TBookError(file.string(), "cannot be written: " + error.message());
  }
}

}  // namespace margindesk
