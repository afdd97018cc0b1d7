#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "host/services/FileService.h"

namespace margindesk {

struct TFileRequest {
  std::uint64_t FId = 0;
  bool FDownload = false;  // else the text of a local file
  std::string FAddress;    // or its name
};

struct TFileResult {
  bool FSuccess = false;
  std::string FFetched;  // the new local file of a download
  std::string FText;     // of a local file, or the reason of a failure
};

// The thread of the file service. It runs any number of http transfers side by side and reads local files in
// between. Every request that has not been cancelled in time gets one result.
class TFileWorker {
 public:
  using TDone = std::function<void(std::uint64_t id, TFileResult result)>;  // called on the thread

  TFileWorker(TFileLimits limits, TDone done);
  // Breaks off every transfer, ends the thread and deletes the temporary folder.
  ~TFileWorker();
  TFileWorker(const TFileWorker&) = delete;
  TFileWorker& operator=(const TFileWorker&) = delete;

  void Start(TFileRequest request);
  void Cancel(std::uint64_t id);  // its result, if it still comes, is the caller's to drop

 private:
  struct TTransfer;
  struct TMulti;

  void Wake();
  void Run();
  void Serve(const TFileRequest& request);
  TFileResult ReadText(const std::string& fileName) const;
  TFileResult CopyFile(const std::string& source, const std::string& target) const;
  void Begin(std::uint64_t id, const std::string& address, const std::string& target);
  void FinishTransfers();
  // The name for a new file in the temporary folder, which is made when first needed; "" with the reason.
  std::string NewFileName(std::uint64_t id, std::string& reason);

  const TFileLimits FLimits;
  const TDone FDone;

  std::mutex FMutex;  // guards the three below
  std::vector<TFileRequest> FRequests;
  std::vector<std::uint64_t> FCancelled;
  bool FStopping = false;

  // The thread's own.
  std::unique_ptr<TMulti> FMulti;
  std::map<std::uint64_t, std::unique_ptr<TTransfer>> FTransfers;
  std::filesystem::path FFolder;

  std::thread FThread;
};

}  // namespace margindesk
