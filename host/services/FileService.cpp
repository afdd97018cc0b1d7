#include "host/services/FileService.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "host/services/FileWorker.h"

namespace margindesk {

// What the completions need. It belongs to the user-interface thread.
struct TFileService::TState {
  struct TPending {
    void* FSender;
    TFileCompletionHandler FHandler;
    std::string FFileName;  // of a local file that is read
  };

  void Complete(std::uint64_t id, const TFileResult& result) {
    const auto node = FPending.extract(id);
    if (node.empty() || !node.mapped().FHandler) {
      std::error_code ignored;
      if (!result.FFetched.empty()) std::filesystem::remove(result.FFetched, ignored);
      return;
    }
    const TPending& pending = node.mapped();
    const std::string& fileName = pending.FFileName.empty() ? result.FFetched : pending.FFileName;
    pending.FHandler(pending.FSender, fileName, result.FText, result.FSuccess);
  }

  std::map<std::uint64_t, TPending> FPending;
  std::uint64_t FLastId = 0;
};

TFileService::TFileService(TUiLoop& loop, TFileLimits limits) : FState(std::make_shared<TState>()) {
  // A completion that the loop runs after the service has gone finds no state; its file went with the folder.
  FWorker = std::make_unique<TFileWorker>(
      limits, [&loop, weak = std::weak_ptr(FState)](std::uint64_t id, TFileResult result) {
        loop.Post([weak, id, held = std::make_shared<const TFileResult>(std::move(result))] {
          if (const auto state = weak.lock()) state->Complete(id, *held);
        });
      });
}

TFileService::~TFileService() = default;

void TFileService::DownloadFile(void* sender, std::string_view address, TFileCompletionHandler handler,
                                std::int32_t /*option*/, const void* /*extra*/) {
  const std::uint64_t id = ++FState->FLastId;
  FState->FPending.emplace(id, TState::TPending{sender, handler, ""});
  FWorker->Start({id, true, std::string(address)});
}

void TFileService::LoadFileText(void* sender, std::string_view fileName, TFileCompletionHandler handler,
                                std::int32_t /*option*/, bool /*flag*/, const void* /*extra*/) {
  const std::uint64_t id = ++FState->FLastId;
  FState->FPending.emplace(id, TState::TPending{sender, handler, std::string(fileName)});
  FWorker->Start({id, false, std::string(fileName)});
}

void TFileService::CancelHandlersOf(const void* object) {
  std::erase_if(FState->FPending, [&](const auto& entry) {
    if (entry.second.FHandler.FObject != object) return false;
    FWorker->Cancel(entry.first);
    return true;
  });
}

std::size_t TFileService::GetPendingCount() const noexcept { return FState->FPending.size(); }

}  // namespace margindesk
