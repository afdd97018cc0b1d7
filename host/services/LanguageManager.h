#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/services/LanguageFile.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {

// The languages by their index: also the names of their files.
inline constexpr std::array<std::string_view, 3> kLanguageCodes = {"ENG", "CHS", "ZHH"};

// The index of a language code, letter case ignored; none for an unknown code.
std::optional<std::int32_t> FindLanguage(std::string_view code);

// The texts of the three languages, all loaded at construction. References that it hands out stay valid as
// long as it lives, whatever language is current.
class TLanguageManager : public TCustomLanguageManager {
 public:
  // Loads ENG.ini, CHS.ini and ZHH.ini; English is current. Throws TLanguageFileError for a file that cannot
  // be used.
  explicit TLanguageManager(const std::filesystem::path& directory);

  // Makes a language (kLanguage...) current; false, and nothing changed, for an unknown one. Open views are
  // told by whoever switches.
  bool SetLanguage(std::int32_t index);

  // mode 0, 1 or 2 asks for that language; any other mode for the current one.
  const std::string& GetLanguageText(std::string_view section, std::string_view key, std::int32_t mode = 3,
                                     std::int32_t number = 0,
                                     const std::string* defaultText = nullptr) const override;
  std::int32_t GetLanguageIndex() const override { return FCurrent; }
  void GetSectionKeys(std::string_view section, std::vector<std::string>& keys) const override;
  const std::string& GetSectionKeyValue(std::string_view section, std::string_view key,
                                        std::string_view name) const override;

 private:
  const TLanguageFile& File(std::int32_t index) const { return FFiles[static_cast<std::size_t>(index)]; }

  std::vector<TLanguageFile> FFiles;  // by language index
  std::int32_t FCurrent = kLanguageEnglish;
  // The keys that had no text, as they were handed out. They are the program's own names, so there are few.
  mutable std::set<std::string, std::less<>> FMissingKeys;
};

}  // namespace margindesk
