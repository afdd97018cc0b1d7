// A library that is loaded as a package is: everything hidden but its entry point.

#include "tests/framework/FrameworkModule.h"

#include "model/contract/FormatSettings.h"
#include "model/contract/LanguageManager.h"

namespace margindesk {
namespace {

class TModuleFrame : public TViewFrame {
 public:
  TModuleFrame() : TViewFrame(nullptr) {}
  bool GetViewCaption(std::string& caption) override { return caption = "from the module", true; }
};

constexpr TModuleEntry kEntry{
    []() -> void* {
      return TCustomLanguageManager::HasInstance() ? &TCustomLanguageManager::GetInstance() : nullptr;
    },
    [](std::string_view text) { return TCode(text); },
    []() -> const TFormatSettings* { return &GetProcessFormatSettings(); },
    []() -> std::unique_ptr<TFrame> { return std::make_unique<TModuleFrame>(); },
    [](std::string_view text) { throw EConvertError(std::string(text)); },
};

}  // namespace
}  // namespace margindesk

extern "C" [[gnu::visibility("default")]] const margindesk::TModuleEntry* GetModuleEntry() {
  return &margindesk::kEntry;
}
