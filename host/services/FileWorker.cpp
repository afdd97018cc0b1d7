#include "host/services/FileWorker.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

#include <curl/curl.h>

#include "host/book/Utf8.h"
#include "host/services/LocalFile.h"

namespace margindesk {

namespace {

constexpr long kMaximumRedirects = 5;
constexpr long kMaximumConnections = 8;
constexpr int kIdleMilliseconds = 60'000;  // a wake-up ends the wait at once

// An address that may be fetched, taken apart.
struct TAddress {
  std::string FScheme;
  std::string FPath;  // decoded; of a file address
};

std::optional<std::string> PartOf(CURLU* address, CURLUPart part, unsigned flags) {
  char* text = nullptr;
  if (curl_url_get(address, part, &text, flags) != CURLUE_OK) return std::nullopt;
  const std::unique_ptr<char, void (*)(void*)> held(text, &curl_free);
  return std::string(text);
}

std::optional<TAddress> ParseAddress(const std::string& text, std::string& reason) {
  const std::unique_ptr<CURLU, void (*)(CURLU*)> address(curl_url(), &curl_url_cleanup);
  const CURLUcode code = curl_url_set(address.get(), CURLUPART_URL, text.c_str(), CURLU_NON_SUPPORT_SCHEME);
  const auto scheme = PartOf(address.get(), CURLUPART_SCHEME, 0);
  if (code != CURLUE_OK || !scheme) {
    reason = "not an address";
    return std::nullopt;
  }
  if (*scheme != "http" && *scheme != "https" && *scheme != "file") {
    reason = "only http, https and file addresses are fetched";
    return std::nullopt;
  }
  const auto path = PartOf(address.get(), CURLUPART_PATH, *scheme == "file" ? CURLU_URLDECODE : 0U);
  if (!path) {
    reason = "not an address";
    return std::nullopt;
  }
  return TAddress{*scheme, *path};
}

void UseCurl() {
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  static_cast<void>(ready);
}

}  // namespace

struct TFileWorker::TMulti {
  TMulti() : FHandle(curl_multi_init()) {
    curl_multi_setopt(FHandle, CURLMOPT_MAX_TOTAL_CONNECTIONS, kMaximumConnections);
  }
  ~TMulti() { curl_multi_cleanup(FHandle); }
  TMulti(const TMulti&) = delete;
  TMulti& operator=(const TMulti&) = delete;

  CURLM* const FHandle;
};

// One http transfer into a file. The file goes with the transfer unless it is kept.
struct TFileWorker::TTransfer {
  TTransfer(TMulti& multi, std::uint64_t id, std::string target, std::int64_t limit)
      : FMulti(multi),
        FId(id),
        FLimit(limit),
        FTarget(std::move(target)),
        FEasy(curl_easy_init()),
        FFile(std::fopen(FTarget.c_str(), "wxb")) {}
  ~TTransfer() {
    curl_multi_remove_handle(FMulti.FHandle, FEasy);
    curl_easy_cleanup(FEasy);
    CloseFile();
    if (!FKept) std::remove(FTarget.c_str());
  }
  TTransfer(const TTransfer&) = delete;
  TTransfer& operator=(const TTransfer&) = delete;

  bool CloseFile() {
    std::FILE* const file = std::exchange(FFile, nullptr);
    return file != nullptr && std::fclose(file) == 0;
  }

  static std::size_t Write(char* data, std::size_t /*one*/, std::size_t size, void* transfer) {
    auto& self = *static_cast<TTransfer*>(transfer);
    self.FReceived += static_cast<std::int64_t>(size);
    self.FTooLarge = self.FReceived > self.FLimit;
    return self.FTooLarge ? 0 : std::fwrite(data, 1, size, self.FFile);
  }

  TMulti& FMulti;
  const std::uint64_t FId;
  const std::int64_t FLimit;
  const std::string FTarget;
  CURL* const FEasy;
  std::FILE* FFile;  // null when it could not be made
  std::int64_t FReceived = 0;
  bool FTooLarge = false;
  bool FKept = false;
  std::array<char, CURL_ERROR_SIZE> FMessage{};
};

TFileWorker::TFileWorker(TFileLimits limits, TDone done) : FLimits(limits), FDone(std::move(done)) {
  UseCurl();
  FMulti = std::make_unique<TMulti>();
  FThread = std::thread([this] { Run(); });
}

TFileWorker::~TFileWorker() {
  {
    const std::lock_guard lock(FMutex);
    FStopping = true;
  }
  Wake();
  FThread.join();
  FTransfers.clear();
  std::error_code ignored;
  if (!FFolder.empty()) std::filesystem::remove_all(FFolder, ignored);
}

void TFileWorker::Start(TFileRequest request) {
  {
    const std::lock_guard lock(FMutex);
    FRequests.push_back(std::move(request));
  }
  Wake();
}

void TFileWorker::Cancel(std::uint64_t id) {
  {
    const std::lock_guard lock(FMutex);
    FCancelled.push_back(id);
  }
  Wake();
}

void TFileWorker::Wake() { curl_multi_wakeup(FMulti->FHandle); }

void TFileWorker::Run() {
  for (;;) {
    std::vector<TFileRequest> requests;
    std::vector<std::uint64_t> cancelled;
    {
      const std::lock_guard lock(FMutex);
      if (FStopping) return;
      requests.swap(FRequests);
      cancelled.swap(FCancelled);
    }
    for (const TFileRequest& request : requests) Serve(request);
    for (const std::uint64_t id : cancelled) FTransfers.erase(id);
    int running = 0;
    curl_multi_perform(FMulti->FHandle, &running);
    FinishTransfers();
    curl_multi_poll(FMulti->FHandle, nullptr, 0, kIdleMilliseconds, nullptr);
  }
}

void TFileWorker::Serve(const TFileRequest& request) {
  if (!request.FDownload) {
    FDone(request.FId, ReadText(request.FAddress));
    return;
  }
  std::string reason;
  const auto address = ParseAddress(request.FAddress, reason);
  const std::string target = address ? NewFileName(request.FId, reason) : std::string();
  if (target.empty()) {
    FDone(request.FId, {false, "", reason});
  } else if (address->FScheme == "file") {
    FDone(request.FId, CopyFile(address->FPath, target));
  } else {
    Begin(request.FId, request.FAddress, target);
  }
}

TFileResult TFileWorker::ReadText(const std::string& fileName) const {
  std::string reason;
  std::optional<std::string> text = ReadLocalFile(fileName, FLimits.FSize, reason);
  if (!text) return {false, "", reason};
  if (!IsUtf8(*text)) return {false, "", "not UTF-8 text"};
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text->starts_with(kByteOrderMark)) text->erase(0, kByteOrderMark.size());
  return {true, "", std::move(*text)};
}

TFileResult TFileWorker::CopyFile(const std::string& source, const std::string& target) const {
  std::string reason;
  const std::optional<std::string> contents = ReadLocalFile(source, FLimits.FSize, reason);
  if (!contents || !WriteLocalFile(target, *contents, reason)) return {false, "", reason};
  return {true, target, ""};
}

void TFileWorker::Begin(std::uint64_t id, const std::string& address, const std::string& target) {
  auto transfer = std::make_unique<TTransfer>(*FMulti, id, target, FLimits.FSize);
  if (transfer->FFile == nullptr) {
    FDone(id, {false, "", std::generic_category().message(errno)});
    return;
  }
  CURL* const easy = transfer->FEasy;
  curl_easy_setopt(easy, CURLOPT_URL, address.c_str());
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");  // of redirects too
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMaximumRedirects);
  curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(FLimits.FConnectTime.count()));
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(FLimits.FTotalTime.count()));
  curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(FLimits.FSize));
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);  // no waiting for a name that is still being looked up
  curl_easy_setopt(easy, CURLOPT_USERAGENT, "MarginDesk");
  curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, transfer->FMessage.data());
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &TTransfer::Write);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, transfer.get());
  curl_easy_setopt(easy, CURLOPT_PRIVATE, transfer.get());
  curl_multi_add_handle(FMulti->FHandle, easy);
  FTransfers.emplace(id, std::move(transfer));
}

void TFileWorker::FinishTransfers() {
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(FMulti->FHandle, &left)) {
    if (message->msg != CURLMSG_DONE) continue;
    const CURLcode code = message->data.result;
    char* held = nullptr;
    curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &held);
    auto& transfer = *reinterpret_cast<TTransfer*>(held);
    long status = 0;
    curl_easy_getinfo(transfer.FEasy, CURLINFO_RESPONSE_CODE, &status);

    const bool written = transfer.CloseFile();
    TFileResult result;
    if (transfer.FTooLarge || code == CURLE_FILESIZE_EXCEEDED) {
      result.FText = TooLarge(FLimits.FSize);
    } else if (code == CURLE_OPERATION_TIMEDOUT) {
      result.FText = "no complete answer within the time limit";
    } else if (code != CURLE_OK) {
      result.FText = transfer.FMessage[0] != '\0' ? transfer.FMessage.data() : curl_easy_strerror(code);
    } else if (status < 200 || status > 299) {
      result.FText = "HTTP status " + std::to_string(status);
    } else if (!written) {
      result.FText = "the file cannot be written";
    } else {
      transfer.FKept = true;
      result = {true, transfer.FTarget, ""};
    }
    const std::uint64_t id = transfer.FId;
    FTransfers.erase(id);
    FDone(id, std::move(result));
  }
}

std::string TFileWorker::NewFileName(std::uint64_t id, std::string& reason) {
  std::error_code fault;
  if (FFolder.empty()) {
    std::string pattern = (std::filesystem::temp_directory_path(fault) / "margindesk-XXXXXX").string();
    if (fault || ::mkdtemp(pattern.data()) == nullptr) {
      reason = "no temporary folder: " +
               (fault ? fault : std::error_code(errno, std::generic_category())).message();
      return {};
    }
    FFolder = pattern;
  }
  return (FFolder / ("fetched-" + std::to_string(id))).string();
}

}  // namespace margindesk
