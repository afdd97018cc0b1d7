#pragma once

#include <filesystem>

namespace margindesk {

// Makes a book of the CSV files in a directory, and the directory that is to hold the book. The book is there
// whole or not at all, also when the process is killed meanwhile (its
// draft "FILE.new-..." is then left). False, and nothing changed, when a file of
// that name is there already. Throws TBookError and TCliError.
bool MakeBookFile(const std::filesystem::path& file, const std::filesystem::path& csvDirectory);

}  // namespace margindesk
