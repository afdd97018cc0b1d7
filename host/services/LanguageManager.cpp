#include "host/services/LanguageManager.h"

#include "model/contract/Constdef.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

const std::string kNoText;

bool IsLanguage(std::int32_t index) {
  return index >= 0 && index < static_cast<std::int32_t>(kLanguageCodes.size());
}

}  // namespace

std::optional<std::int32_t> FindLanguage(std::string_view code) {
  for (std::size_t i = 0; i < kLanguageCodes.size(); ++i) {
    if (SameTextIgnoringCase(kLanguageCodes[i], code)) return static_cast<std::int32_t>(i);
  }
  return std::nullopt;
}

TLanguageManager::TLanguageManager(const std::filesystem::path& directory) {
  for (const std::string_view code : kLanguageCodes) {
    FFiles.push_back(LoadLanguageFile(directory / std::string(code).append(".ini")));
  }
}

bool TLanguageManager::SetLanguage(std::int32_t index) {
  if (!IsLanguage(index)) return false;
  FCurrent = index;
  return true;
}

const std::string& TLanguageManager::GetLanguageText(std::string_view section, std::string_view key,
                                                     std::int32_t mode, std::int32_t /*number*/,
                                                     const std::string* defaultText) const {
  const std::string* text = File(IsLanguage(mode) ? mode : FCurrent).Text(section, key);
  if (text != nullptr) return *text;
  if (section == Const_ResourceStringTag || section == Const_ErrorCodeTag || section == "Currency") {
    const auto known = FMissingKeys.find(key);
    return known != FMissingKeys.end() ? *known : *FMissingKeys.emplace(key).first;
  }
  return defaultText != nullptr ? *defaultText : kNoText;
}

void TLanguageManager::GetSectionKeys(std::string_view section, std::vector<std::string>& keys) const {
  const std::vector<std::string>& found = File(FCurrent).Keys(section);
  keys.insert(keys.end(), found.begin(), found.end());
}

const std::string& TLanguageManager::GetSectionKeyValue(std::string_view section, std::string_view key,
                                                        std::string_view name) const {
  const std::string* value = File(FCurrent).Value(section, key, name);
  return value != nullptr ? *value : kNoText;
}

}  // namespace margindesk
