#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/FileService.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/support/HttpTestServer.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

struct TCompletion {
  std::string FFileName, FText;
  bool FSuccess = false;
  std::thread::id FThread;
};

// Somebody who asks for files.
struct TAsker {
  void Complete(void* /*sender*/, const std::string& fileName, const std::string& text, bool success) {
    FCompletions.push_back({fileName, text, success, std::this_thread::get_id()});
  }
  TFileCompletionHandler Handler() { return MakeFileCompletionHandler<&TAsker::Complete>(this); }
  std::vector<TCompletion> FCompletions;
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

  // What came of a request that is given the asker's handler.
  template <class TRequest>
  TCompletion Await(TRequest request) {
    TAsker asker;
    request(asker.Handler());
    EXPECT_TRUE(asker.FCompletions.empty()) << "completed inside the call";
    if (!WaitFor(asker, 1)) return {"", "never completed", false, {}};
    EXPECT_EQ(asker.FCompletions[0].FThread, std::this_thread::get_id());
    return asker.FCompletions[0];
  }
  TCompletion Download(const std::string& address) {
    return Await([&](const auto& handler) { FService->DownloadFile(nullptr, address, handler); });
  }

  // The files below the temporary folder that the service makes.
  std::size_t FetchedCount() const {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(FFolder.Path())) {
      if (entry.is_regular_file() && entry.path().parent_path() != FSource) ++count;
    }
    return count;
  }

  TTemporaryFolder FFolder;
  const std::filesystem::path FSource = FFolder.Path() / "source";
  TUiLoop FLoop;
  std::unique_ptr<TFileService> FService;
};

TEST_F(Files, ArriveWholeAndStayUntilTheServiceGoes) {
  const std::string body = std::string("a\0b\r\n", 5) + std::string(900, 'x');
  THttpTestServer server({{"/file", HttpAnswer("200 OK", body)},
                          {"/moved", HttpAnswer("302 Found", "", "Location: /file\r\n")}});
  const std::filesystem::path source = FSource / "form\xC3\xBCl #1.txt";
  WriteWholeFile(source, body);
  for (const std::string& address : {server.Address("/file"), server.Address("/moved"),
                                     "FILE://localhost" + FSource.string() + "/form%C3%BCl%20%231.txt"}) {
    const TCompletion completion = Download(address);
    ASSERT_TRUE(completion.FSuccess) << completion.FText;
    EXPECT_NE(completion.FFileName, source);
    EXPECT_EQ(ReadWholeFile(completion.FFileName), body) << address;
  }
  EXPECT_EQ(FetchedCount(), 3U);
  FService.reset();
  EXPECT_EQ(FetchedCount(), 0U) << "fetched files outlive the service";
  EXPECT_EQ(ReadWholeFile(source), body);
}

TEST_F(Files, ThatCannotBeFetchedLeaveAReasonAndNothingElse) {
  WriteWholeFile(FSource / "secret", "secret");
  WriteWholeFile(FSource / "large", std::string(1001, 'x'));
  const std::string secret = "file://" + (FSource / "secret").string();
  THttpTestServer server({{"/missing", HttpAnswer("404 Not Found", "no such page")},
                          {"/to-file", HttpAnswer("302 Found", "", "Location: " + secret + "\r\n")},
                          {"/endless", "HTTP/1.1 200 OK\r\n\r\n" + std::string(100'000, 'x')},
                          {"/cut", "HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\nonly this"}});
  const std::string files = "file://" + FSource.string();
  for (const auto& [address, reason] :
       {std::pair<std::string, const char*>{server.Address("/missing"), "HTTP status 404"},
        {server.Address("/to-file"), "file"},
        {server.Address("/endless"), "larger than 1000 bytes"},
        {server.Address("/cut"), ""},
        {server.Address("/silent"), "time limit"},
        {"ftp://127.0.0.1/x", "only http, https and file"},
        {"http://127.0.0.1/a b\n", "not an address"},
        {files + "/none", "No such file"},
        {files + "/large", "larger than 1000 bytes"},
        {files, "not a file"}}) {
    SCOPED_TRACE(address);
    const TCompletion completion = Download(address);
    EXPECT_FALSE(completion.FSuccess);
    EXPECT_EQ(completion.FFileName, "");
    EXPECT_NE(completion.FText, "");
    EXPECT_THAT(completion.FText, HasSubstr(reason));
    EXPECT_EQ(FetchedCount(), 0U);
  }
}

TEST_F(Files, AreReadAsUtf8TextOrNotAtAll) {
  const std::string file = (FSource / "text").string();
  const auto load = [&] {
    return Await([&](const auto& handler) { FService->LoadFileText(nullptr, file, handler); });
  };
  WriteWholeFile(file, "\xEF\xBB\xBF[ENG]\r\nK=\xE6\x98\xAF\n");
  EXPECT_EQ(load().FText, "[ENG]\r\nK=\xE6\x98\xAF\n");
  WriteWholeFile(file, "K=\xE6\x98");
  const TCompletion refused = load();
  EXPECT_FALSE(refused.FSuccess);
  EXPECT_THAT(refused.FText, HasSubstr("not UTF-8"));
}

TEST_F(Files, OfAnAskerThatIsGoneAreDroppedUnderWayAndAfterTheirArrival) {
  THttpTestServer server({{"/file", HttpAnswer("200 OK", "x")}});
  WriteWholeFile(FSource / "text", "t");
  FService = std::make_unique<TFileService>(FLoop, TFileLimits{60s, 60s, 1000});
  TAsker gone, other;
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
  FService->DownloadFile(nullptr, server.Address("/silent"), other.Handler());
  const auto begin = std::chrono::steady_clock::now();
  FService.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << "the service waited for the silent one";
  while (FLoop.RunOnce()) continue;
  EXPECT_TRUE(gone.FCompletions.empty());
  EXPECT_EQ(other.FCompletions.size(), 1U);
}

}  // namespace
}  // namespace margindesk
