#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/Service.h"

namespace margindesk {

inline constexpr std::int32_t kLanguageEnglish = 0;
inline constexpr std::int32_t kLanguageSimplifiedChinese = 1;
inline constexpr std::int32_t kLanguageTraditionalChinese = 2;

// The texts of the current language. References stay valid until the language changes.
class TCustomLanguageManager : public TService<TCustomLanguageManager> {
 public:
  // The text of a key in a section (Const_ResourceStringTag for resource keys). A missing resource key, error
  // code or currency gives the key itself, so that the gap is seen; a missing key of any other section gives
  // `defaultText`, or "". mode 3 asks for the current language; number is 0.
  virtual const std::string& GetLanguageText(std::string_view section, std::string_view key,
                                             std::int32_t mode = 3, std::int32_t number = 0,
                                             const std::string* defaultText = nullptr) const = 0;
  virtual std::int32_t GetLanguageIndex() const = 0;  // kLanguage...
  // Appends the keys of a section in file order.
  virtual void GetSectionKeys(std::string_view section, std::vector<std::string>& keys) const = 0;
  // One named value of a key of a section ("Type"); "" when absent.
  virtual const std::string& GetSectionKeyValue(std::string_view section, std::string_view key,
                                                std::string_view name) const = 0;
};

extern template class TService<TCustomLanguageManager>;

}  // namespace margindesk
