#pragma once

#include <QString>
#include <string_view>

#include "model/contract/LanguageManager.h"
#include "terminal/desktop/Text.h"

namespace margindesk {

// A text of the terminal itself in the current language ("Desktop_" and the name).
inline QString HostText(std::string_view key) {
  return ToQt(TCustomLanguageManager::GetInstance().GetLanguageText("Host", key));
}

}  // namespace margindesk
