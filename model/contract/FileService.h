#pragma once

#include <cstdint>
#include <string_view>

#include "model/contract/Handlers.h"
#include "model/contract/Service.h"

namespace margindesk {

// Fetches and reads files away from the user-interface thread; completions are called on it, never inside the
// call that asked.
class TCustomFileService : public TService<TCustomFileService> {
 public:
  // Fetches an address (http, https or file) into a new local file, which then belongs to whoever handles the
  // completion: (sender, local file name, "", true). A refused or failed fetch leaves no file: (sender, "",
  // reason, false). The last two arguments are 0 and null.
  virtual void DownloadFile(void* sender, std::string_view address, TFileCompletionHandler handler,
                            std::int32_t option = 0, const void* extra = nullptr) = 0;
  // Reads a local UTF-8 file: (sender, file name, the file's text, true), or (sender, file name, reason,
  // false). The last three arguments are 0, false and null.
  virtual void LoadFileText(void* sender, std::string_view fileName, TFileCompletionHandler handler,
                            std::int32_t option = 0, bool flag = false, const void* extra = nullptr) = 0;
  // Drops what is under way for an object that is going: its handler is not called any more, and a file
  // already fetched for it is deleted.
  virtual void CancelHandlersOf(const void* object) = 0;
};

extern template class TService<TCustomFileService>;

}  // namespace margindesk
