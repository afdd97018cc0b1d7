#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string_view>

#include "host/book/Sqlite.h"

namespace margindesk {

// A configuration that cannot be opened or written. what() is one line, "file: reason".
class TConfigError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The file behind the configuration: an SQLite file of its own with one table of section, key and value. A
// change is one transaction that is on the disk when Put returns, whatever happens to the process or the
// machine afterwards. Several programs may have the file open; they do not see each other's changes until
// they open it again.
class TConfigStore {
 public:
  // Opens the file, or makes it in a folder that exists. Throws TConfigError when it cannot, and when the
  // file is something else, comes from a newer version or is damaged; such a file is left as it is.
  explicit TConfigStore(const std::filesystem::path& file);

  // Hands over every stored value.
  void ReadAll(const std::function<void(std::string_view section, std::string_view key,
                                        std::string_view value)>& take);

  // Stores a value; an empty one removes the key. Throws TConfigError, with nothing changed, when it cannot.
  void Put(std::string_view section, std::string_view key, std::string_view value);

 private:
  TSqliteConnection FConnection;
};

}  // namespace margindesk
