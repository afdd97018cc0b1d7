// A library that is loaded as a package is: everything hidden but its entry point.

#include "tests/framework/FrameworkModule.h"

#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {
namespace {

struct TModuleFrame : TViewFrame {
  TModuleFrame() : TViewFrame(nullptr) {}
  bool GetViewCaption(std::string& caption) override { return caption = "from the module", true; }
};

constexpr TModuleEntry kEntry{
    []() -> void* {
      return TCustomMessageBoxCtrl::HasInstance() ? &TCustomMessageBoxCtrl::GetInstance() : nullptr;
    },
    [](std::string_view text) { return TCode(text); },
    []() -> std::unique_ptr<TFrame> { return std::make_unique<TModuleFrame>(); },
    [](std::string_view text) { throw EConvertError(std::string(text)); },
};

}  // namespace
}  // namespace margindesk

extern "C" [[gnu::visibility("default")]] const margindesk::TModuleEntry* GetModuleEntry() {
  return &margindesk::kEntry;
}
