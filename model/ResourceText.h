#pragma once

#include <string>
#include <string_view>

#include "model/contract/Constdef.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {

// The text of a resource key in the current language.
inline const std::string& GetResourceText(std::string_view key) {
  return TCustomLanguageManager::GetInstance().GetLanguageText(Const_ResourceStringTag, key);
}

}  // namespace margindesk
