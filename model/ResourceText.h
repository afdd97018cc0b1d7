#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "model/contract/Constdef.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {

// The text of a resource key in the current language.
inline const std::string& GetResourceText(std::string_view key) {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag, key);
}

// A text with its places %1s, %2s and so on, which a translation may turn round, filled by the values. A
// place without a value stays as it is; what looks like a place inside a value is not one.
inline std::string FillText(std::string_view text, std::initializer_list<std::string_view> values) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool place = text[at] == '%' && at + 2 < text.size() && text[at + 2] == 's' &&
                       text[at + 1] >= '1' && text[at + 1] <= '9';
    const auto index = place ? static_cast<std::size_t>(text[at + 1] - '1') : values.size();
    if (index >= values.size()) {
      result += text[at];
      continue;
    }
    result += values.begin()[index];
    at += 2;
  }
  return result;
}

}  // namespace margindesk
