#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/services/FileService.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/platform/HttpTestServer.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

struct TCompletion {
  void* FSender = nullptr;
  std::string FFileName;
  std::string FText;
  bool FSuccess = false;
  std::thread::id FThread;
};

// Somebody who asks for files.
struct TAsker {
  std::vector<TCompletion> FCompletions;

  void Complete(void* sender, const std::string& fileName, const std::string& text, bool success) {
    FCompletions.push_back({sender, fileName, text, success, std::this_thread::get_id()});
  }
  TFileCompletionHandler Handler() { return MakeFileCompletionHandler<&TAsker::Complete>(this); }
};

class Files : public testing::Test {
 protected:
  void SetUp() override {
    setenv("TMPDIR", FFolder.Path().c_str(), 1);
    setenv("no_proxy", "127.0.0.1", 1);
    std::filesystem::create_directory(FSource);
    FService = std::make_unique<TFileService>(FLoop, TFileLimits{2s, 400ms, 1000});
  }
  void TearDown() override { unsetenv("TMPDIR"); }

  bool WaitFor(const TAsker& asker, std::size_t count) {
    return FLoop.RunUntil([&] { return asker.FCompletions.size() == count; }, 20s);
  }

  TCompletion Download(const std::string& address) {
    TAsker asker;
    FService->DownloadFile(nullptr, address, asker.Handler());
    EXPECT_TRUE(asker.FCompletions.empty()) << "completed inside the call";
    if (!WaitFor(asker, 1)) return {nullptr, "", "never completed", false, {}};
    return asker.FCompletions[0];
  }

  TCompletion LoadText(const std::string& fileName) {
    TAsker asker;
    FService->LoadFileText(nullptr, fileName, asker.Handler());
    EXPECT_TRUE(asker.FCompletions.empty()) << "completed inside the call";
    if (!WaitFor(asker, 1)) return {nullptr, "", "never completed", false, {}};
    return asker.FCompletions[0];
  }

  // The files below the temporary folder that the service makes.
  std::size_t FetchedCount() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(FFolder.Path())) {
      if (entry.is_regular_file() && entry.path().parent_path() != FSource) ++count;
    }
    return count;
  }

  std::size_t FolderCount() const {
    const std::filesystem::directory_iterator entries(FFolder.Path());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

  TTemporaryFolder FFolder;
  const std::filesystem::path FSource = FFolder.Path() / "source";
  TUiLoop FLoop;
  std::unique_ptr<TFileService> FService;
};

TEST_F(Files, ArriveWholeOnTheUserInterfaceThreadAndBelongToTheAsker) {
  const std::string body = std::string("a\0b\r\n", 5) + std::string(900, 'x');
  THttpTestServer server({{"/file", HttpAnswer("200 OK", body)},
                          {"/moved", HttpAnswer("302 Found", "", "Location: /file\r\n")}});
  for (const char* path : {"/file", "/moved"}) {
    SCOPED_TRACE(path);
    TAsker asker;
    int sender = 0;
    FService->DownloadFile(&sender, server.Address(path), asker.Handler());
    ASSERT_TRUE(WaitFor(asker, 1));
    const TCompletion& completion = asker.FCompletions[0];
    ASSERT_TRUE(completion.FSuccess) << completion.FText;
    EXPECT_EQ(completion.FSender, &sender);
    EXPECT_EQ(completion.FText, "");
    EXPECT_EQ(completion.FThread, std::this_thread::get_id());
    EXPECT_EQ(ReadWholeFile(completion.FFileName), body);
  }
  EXPECT_EQ(FetchedCount(), 2U);
  struct stat folder {};
  for (const auto& entry : std::filesystem::directory_iterator(FFolder.Path())) {
    if (entry.path() == FSource) continue;
    ASSERT_EQ(stat(entry.path().c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
  }
  FService.reset();
  EXPECT_EQ(FolderCount(), 1U) << "the temporary folder outlives the service";
}

TEST_F(Files, ThatCannotBeFetchedLeaveAReasonAndNothingElse) {
  WriteWholeFile(FSource / "secret", "secret");
  WriteWholeFile(FSource / "large", std::string(1001, 'x'));
  ASSERT_EQ(mkfifo((FSource / "pipe").c_str(), 0600), 0);
  const std::string secret = "file://" + (FSource / "secret").string();
  THttpTestServer server({{"/missing", HttpAnswer("404 Not Found", "no such page")},
                          {"/unchanged", HttpAnswer("304 Not Modified", "")},
                          {"/to-file", HttpAnswer("302 Found", "", "Location: " + secret + "\r\n")},
                          {"/round", HttpAnswer("302 Found", "", "Location: /round\r\n")},
                          {"/large", HttpAnswer("200 OK", std::string(1001, 'x'))},
                          {"/endless", "HTTP/1.1 200 OK\r\n\r\n" + std::string(100'000, 'x')},
                          {"/cut", "HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\nonly this"},
                          {"/nonsense", "what?\r\n\r\n"}});
  struct TCase {
    std::string FAddress;
    const char* FReason;
  };
  for (const TCase& example : {TCase{server.Address("/missing"), "HTTP status 404"},
                               {server.Address("/unchanged"), "HTTP status 304"},
                               {server.Address("/to-file"), "file"},
                               {server.Address("/round"), "redirects"},
                               {server.Address("/large"), "larger than 1000 bytes"},
                               {server.Address("/endless"), "larger than 1000 bytes"},
                               {server.Address("/cut"), ""},
                               {server.Address("/nonsense"), ""},
                               {server.Address("/silent"), "time limit"},
                               {"http://127.0.0.1:1/", ""},
                               {"ftp://127.0.0.1/x", "only http, https and file"},
                               {"data:text/plain,x", ""},
                               {(FSource / "secret").string(), "not an address"},
                               {"127.0.0.1/x", "not an address"},
                               {"", "not an address"},
                               {"http://127.0.0.1/a b\n", "not an address"},
                               {"file://elsewhere" + (FSource / "secret").string(), "not an address"},
                               {"file://" + (FSource / "none").string(), "No such file"},
                               {"file://" + (FSource / "large").string(), "larger than 1000 bytes"},
                               {"file://" + (FSource / "pipe").string(), "not a file"},
                               {"file://" + FSource.string(), "not a file"}}) {
    SCOPED_TRACE(example.FAddress);
    const TCompletion completion = Download(example.FAddress);
    EXPECT_FALSE(completion.FSuccess);
    EXPECT_EQ(completion.FFileName, "");
    EXPECT_NE(completion.FText, "");
    EXPECT_THAT(completion.FText, HasSubstr(example.FReason));
    EXPECT_EQ(FetchedCount(), 0U);
  }
}

TEST_F(Files, AreCopiedFromFileAddressesAndTheSourceStays) {
  const std::filesystem::path source = FSource / "form\xC3\xBCl #1.txt";
  WriteWholeFile(source, "K=A/B\n");
  const TCompletion completion = Download("FILE://localhost" + FSource.string() + "/form%C3%BCl%20%231.txt");
  ASSERT_TRUE(completion.FSuccess) << completion.FText;
  EXPECT_NE(completion.FFileName, source);
  EXPECT_EQ(ReadWholeFile(completion.FFileName), "K=A/B\n");
  EXPECT_EQ(ReadWholeFile(source), "K=A/B\n");
}

TEST_F(Files, AreReadAsUtf8TextOrNotAtAll) {
  const std::string file = (FSource / "text").string();
  WriteWholeFile(file, "\xEF\xBB\xBF[ENG]\r\nK=\xE6\x98\xAF\n");
  TCompletion completion = LoadText(file);
  EXPECT_TRUE(completion.FSuccess) << completion.FText;
  EXPECT_EQ(completion.FFileName, file);
  EXPECT_EQ(completion.FText, "[ENG]\r\nK=\xE6\x98\xAF\n");
  EXPECT_EQ(completion.FThread, std::this_thread::get_id());

  WriteWholeFile(file, "K=\xE6\x98");
  const std::string none = (FSource / "none").string();
  for (const auto& [name, reason] :
       {std::pair(file, "not UTF-8"), {none, "No such file"}, {FSource.string(), "not a file"}}) {
    completion = LoadText(name);
    EXPECT_FALSE(completion.FSuccess);
    EXPECT_EQ(completion.FFileName, name);
    EXPECT_THAT(completion.FText, HasSubstr(reason));
  }
  EXPECT_TRUE(std::filesystem::exists(file)) << "a file that belongs to somebody else was deleted";
}

TEST_F(Files, AreFetchedSideBySide) {
  THttpTestServer server({{"/file", HttpAnswer("200 OK", "x")}});
  TAsker stalled;
  TAsker asker;
  FService->DownloadFile(nullptr, server.Address("/silent"), stalled.Handler());
  FService->DownloadFile(nullptr, server.Address("/file"), asker.Handler());
  ASSERT_TRUE(WaitFor(asker, 1));
  EXPECT_TRUE(stalled.FCompletions.empty());
}

TEST_F(Files, OfAnAskerThatIsGoneAreDroppedUnderWayAndAfterTheirArrival) {
  THttpTestServer server({{"/file", HttpAnswer("200 OK", "x")}});
  WriteWholeFile(FSource / "text", "t");
  FService = std::make_unique<TFileService>(FLoop, TFileLimits{60s, 60s, 1000});
  TAsker gone;
  TAsker other;
  FService->DownloadFile(nullptr, server.Address("/silent"), gone.Handler());
  FService->DownloadFile(nullptr, server.Address("/file"), gone.Handler());
  FService->LoadFileText(nullptr, (FSource / "text").string(), gone.Handler());
  // Long enough for the completions of the latter two to wait in the loop.
  for (int i = 0; i < 2000 && (FetchedCount() < 2 || server.RequestCount() < 2); ++i)
    std::this_thread::sleep_for(5ms);
  std::this_thread::sleep_for(50ms);
  FService->CancelHandlersOf(&gone);
  EXPECT_EQ(FService->GetPendingCount(), 0U);
  FService->DownloadFile(nullptr, server.Address("/file"), other.Handler());
  ASSERT_TRUE(WaitFor(other, 1));
  EXPECT_TRUE(FLoop.RunUntil([&] { return FetchedCount() == 1; }, 20s)) << "a dropped file stays behind";
  FLoop.RunOnce(500ms);
  EXPECT_TRUE(gone.FCompletions.empty());
  EXPECT_TRUE(std::filesystem::exists(other.FCompletions[0].FFileName));
  EXPECT_TRUE(std::filesystem::exists(FSource / "text"));
}

TEST_F(Files, UnderWayDoNotHoldUpTheEndOfTheServiceAndCompleteNoMore) {
  THttpTestServer server({{"/file", HttpAnswer("200 OK", "x")}});
  FService = std::make_unique<TFileService>(FLoop, TFileLimits{60s, 60s, 1000});
  TAsker asker;
  FService->DownloadFile(nullptr, server.Address("/silent"), asker.Handler());
  FService->DownloadFile(nullptr, server.Address("/file"), asker.Handler());
  for (int i = 0; i < 2000 && server.RequestCount() < 2; ++i) std::this_thread::sleep_for(5ms);
  const auto begin = std::chrono::steady_clock::now();
  FService.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  EXPECT_EQ(FolderCount(), 1U);
  while (FLoop.RunOnce()) continue;
  EXPECT_TRUE(asker.FCompletions.empty());
}

}  // namespace
}  // namespace margindesk
