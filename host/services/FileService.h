#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

#include "host/services/UiLoop.h"
#include "model/contract/FileService.h"

namespace margindesk {

// What a fetch or a read may take at most.
struct TFileLimits {
  std::chrono::milliseconds FConnectTime{10'000};
  std::chrono::milliseconds FTotalTime{60'000};         // of one fetch, redirects included
  std::int64_t FSize = std::int64_t{16} * 1024 * 1024;  // bytes
};

class TFileWorker;

// Fetches over http and https with libcurl, and from file addresses, on a thread of its own; completions are
// posted to the user-interface loop. Only these three kinds of address are fetched, and a redirect may lead
// to http and https alone. Fetched files lie in a private temporary folder; those that nobody has moved or
// deleted go when the service does. Everything is called on the user-interface thread. The loop must outlive
// the service.
class TFileService : public TCustomFileService {
 public:
  explicit TFileService(TUiLoop& loop, TFileLimits limits = {});
  // Breaks off what is under way: no handler is called any more.
  ~TFileService() override;

  void DownloadFile(void* sender, std::string_view address, TFileCompletionHandler handler,
                    std::int32_t option = 0, const void* extra = nullptr) override;
  // A byte order mark at the start is not part of the text.
  void LoadFileText(void* sender, std::string_view fileName, TFileCompletionHandler handler,
                    std::int32_t option = 0, bool flag = false, const void* extra = nullptr) override;
  void CancelHandlersOf(const void* object) override;

  std::size_t GetPendingCount() const noexcept;  // completions still to come

 private:
  struct TState;
  std::shared_ptr<TState> FState;  // shared with the completions that wait in the loop
  std::unique_ptr<TFileWorker> FWorker;
};

}  // namespace margindesk
