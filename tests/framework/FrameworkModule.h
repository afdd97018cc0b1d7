#pragma once

#include <memory>
#include <string_view>

#include "model/contract/Baseview.h"
#include "model/contract/Code.h"
#include "model/contract/Variant.h"

namespace margindesk {

// What the test's loadable library offers: how it sees, from its side, what there must be one of.
struct TModuleEntry {
  void* (*FGetMessages)();  // null while none are installed
  TCode (*FMakeCode)(std::string_view text);
  std::unique_ptr<TFrame> (*FMakeFrame)();  // its caption is "from the module"
  void (*FThrow)(std::string_view text);    // an EConvertError
};

using TGetModuleEntry = const TModuleEntry* (*)();  // exported as "GetModuleEntry"

}  // namespace margindesk
