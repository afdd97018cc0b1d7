#pragma once

#include <filesystem>

#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

// The book as CSV files, one a table, see TBook::Import and TBook::Export.
void ImportBookFiles(TSqliteConnection& connection, const std::filesystem::path& directory);
void ExportBookFiles(TSqliteConnection& connection, const std::filesystem::path& directory);

// Throws TBookError when the path is no directory or holds a CSV file that is not one of the book's.
void CheckBookDirectory(const std::filesystem::path& directory);

// The file of a table.
std::filesystem::path BookFile(const std::filesystem::path& directory, const TBookTable& table);

}  // namespace margindesk
