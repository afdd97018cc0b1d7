#include "host/book/BookFiles.h"

#include <string>
#include <system_error>

namespace margindesk {

namespace {

constexpr std::string_view kExtension = ".csv";

bool IsCsvName(const std::string& name) {
  if (name.size() < kExtension.size()) return false;
  for (std::size_t i = 0; i < kExtension.size(); ++i) {
    const char c = name[name.size() - kExtension.size() + i];
    const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    if (lower != kExtension[i]) return false;
  }
  return true;
}

}  // namespace

std::filesystem::path BookFile(const std::filesystem::path& directory, const TBookTable& table) {
  return directory / (std::string(table.FName) + std::string(kExtension));
}

void CheckBookDirectory(const std::filesystem::path& directory) {
  std::error_code error;
  if (!std::filesystem::is_directory(directory, error))
    throw TBookError(directory.string(), "no such directory");
  std::filesystem::directory_iterator entries(directory, error);
  for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
    const std::string name = entries->path().filename().string();
    if (!IsCsvName(name)) continue;
    const TBookTable* const table =
        FindBookTable(std::string_view(name).substr(0, name.size() - kExtension.size()));
    if (table == nullptr || !name.ends_with(kExtension)) {
      throw TBookError(entries->path().string(), "no table of the book has this name");
    }
  }
  if (error) throw TBookError(directory.string(), "cannot be read: " + error.message());
}

}  // namespace margindesk
