#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace margindesk {

// A language file that cannot be used; what() reads "file:line: reason", or "file: reason" for a file that
// cannot be read at all. Such a file is refused whole, so that a half-translated terminal never starts.
class TLanguageFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The texts of one language: sections of keys with a text each, and for some keys named values beside it.
// docs/languages.md describes the file. Names are compared exactly, letter case included. Nothing that is
// looked up allocates, and what is handed out stays valid as long as the file does.
class TLanguageFile {
 public:
  // Reads the contents of a file; fileName only serves the message of a TLanguageFileError.
  static TLanguageFile Parse(std::string_view text, std::string_view fileName);

  // The text of a key, which may be empty; null when the section or the key is not there, or when the key has
  // named values only.
  const std::string* Text(std::string_view section, std::string_view key) const;

  // A named value of a key (the line "key.name=value"); null when there is none.
  const std::string* Value(std::string_view section, std::string_view key, std::string_view name) const;

  // The keys of a section in the order of the file; none for an unknown section. A key is listed where it is
  // first named, be it by its text or by a named value.
  const std::vector<std::string>& Keys(std::string_view section) const;

  // The sections in the order of the file.
  const std::vector<std::string>& Sections() const { return FSectionNames; }

 private:
  struct TTextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };
  template <typename TValue>
  using TTextMap = std::unordered_map<std::string, TValue, TTextHash, std::equal_to<>>;

  struct TEntry {
    std::optional<std::string> FText;
    std::map<std::string, std::string, std::less<>> FValues;
  };
  struct TSection {
    std::vector<std::string> FKeys;
    TTextMap<TEntry> FEntries;
  };

  TSection& OpenSection(std::string_view name);
  const TEntry* Find(std::string_view section, std::string_view key) const;

  std::vector<std::string> FSectionNames;
  TTextMap<TSection> FSections;
};

// Reads a language file from disk. Throws TLanguageFileError when it cannot be read or used.
TLanguageFile LoadLanguageFile(const std::filesystem::path& path);

}  // namespace margindesk
