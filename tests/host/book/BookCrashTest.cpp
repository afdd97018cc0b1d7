#include <chrono>
#include <csignal>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/host/book/BookTestFiles.h"

namespace margindesk {
namespace {

using TClock = std::chrono::steady_clock;

constexpr char kPosition[] = ",OPT1,-2,0,0,0,1,0,0.25,Y,-2,0,0,0,-2,0,S,0,0,2\n";

struct BookCrash : testing::Test {
  BookCrash() {
    TBookTexts large = SmallBookTexts();
    std::string& rows = large["positions.csv"];
    for (int i = 0; i < 50000; ++i) rows += "A1,K" + std::to_string(i) + kPosition;
    WriteBookTexts(FFolder.Path() / "old", SmallBookTexts());
    WriteBookTexts(FFolder.Path() / "new", large);
  }

  void Import(const std::string& directory) const {
    TBook(FBook, TStoreMode::kCreate).Import(FFolder.Path() / directory);
  }

  // Imports the new book over the old one in a process that acknowledges through a pipe, kills it after the
  // acknowledgement or as soon as rows are on the disk, and gives what the book then holds.
  TBookTexts TextsAfterKill(bool waitForAcknowledgement) {
    Import("old");
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t process = fork();
    if (process == 0) {
      Import("new");
      while (write(ends[1], "!", 1) == 1) pause();
      _exit(1);
    }
    close(ends[1]);
    char byte = 0;
    std::error_code error;
    const auto deadline = TClock::now() + std::chrono::seconds(60);
    EXPECT_EQ(waitForAcknowledgement && read(ends[0], &byte, 1) == 1, waitForAcknowledgement);
    while (!waitForAcknowledgement && TClock::now() < deadline &&
           (std::filesystem::file_size(FBook.string() + "-wal", error) < 500'000 || error)) {
    }
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(ends[0]);
    TBook book(FBook, TStoreMode::kExisting);
    EXPECT_TRUE(book.Check().empty());
    return ExportedTexts(book);
  }

  TTemporaryFolder FFolder;
  const std::filesystem::path FBook = FFolder.Path() / "book.db";
};

TEST_F(BookCrash, AnImportKilledWhileItWritesLeavesTheOldBookAndAnAcknowledgedOneSurvives) {
  EXPECT_EQ(TextsAfterKill(true), ReadBookTexts(FFolder.Path() / "new"));
  // On a busy machine the import may be through before the kill; then it is tried again.
  TBookTexts texts;
  for (int attempt = 0; texts != SmallBookTexts() && attempt < 10; ++attempt) {
    texts = TextsAfterKill(false);
    EXPECT_TRUE(texts == SmallBookTexts() || texts == ReadBookTexts(FFolder.Path() / "new"));
  }
  EXPECT_EQ(texts, SmallBookTexts());
}

}  // namespace
}  // namespace margindesk
