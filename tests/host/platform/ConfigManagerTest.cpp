#include <csignal>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/services/ConfigManager.h"
#include "host/services/MessageBoxCtrl.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/platform/Listener.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Configuration : public testing::Test {
 protected:
  static std::string RefusalOf(const std::filesystem::path& file) {
    try {
      const TConfigManager config(file, "ann");
    } catch (const TConfigError& error) {
      return error.what();
    }
    return "";
  }

  TTemporaryFolder FFolder;
  const std::filesystem::path FFile = FFolder.Path() / "settings.db";
};

TEST_F(Configuration, KeepsEveryValueOverARestartAndForgetsWhatIsSetToNothing) {
  const std::string odd = std::string("line\nhalf '\" %s \xE6\x8C\x89 ") + '\0' + "\xFF";
  {
    TConfigManager config(FFile, "ann");
    config.WriteString("User.ann", "AmountPrecision", "3", true);
    config.WriteString("LayoutTemplate", "AccountInfo", odd, true);
    config.WriteString("User.ann", "Gone", "x", true);
    config.WriteString("User.ann", "Gone", "", true);
    config.WriteString("User.ann", "AmountPrecision", "6", false);
  }
  const TConfigManager config(FFile, "ann");
  EXPECT_EQ(config.ReadString("User.ann", "AmountPrecision"), "6");
  EXPECT_EQ(config.ReadString("LayoutTemplate", "AccountInfo"), odd);
  EXPECT_EQ(config.ReadString("User.ann", "Gone"), "");
}

TEST_F(Configuration, ReadsFlagsAndIntegersStrictly) {
  TConfigManager config("");
  for (const auto& [text, integer] : {std::pair("-3", -3), {"1.5", 0}, {" 7", 0}, {"99999999999", 0}}) {
    config.WriteString("User", "key", text, true);
    EXPECT_EQ(config.ReadInteger("User", "key"), integer) << text;
  }
  for (const auto& [text, flag] : {std::pair("Y", true), {"y", true}, {"Yes", false}, {"", false}}) {
    config.WriteString("User", "key", text, true);
    EXPECT_EQ(config.ReadBool("User", "key"), flag) << text;
  }
}

TEST_F(Configuration, TellsOfAnAnnouncedChangeThatWasWrittenAndOfNothingElse) {
  TConfigManager config(FFile, "ann");
  TCallLog log;
  TListener listener{"told", &log, {}};
  config.AddConfigUpdateHandler(listener.GetHandler(), &listener);
  const auto told = [&](std::string_view key, std::string_view value, bool notify) {
    config.WriteString("s", key, value, notify);
    return std::exchange(log, {}).size();
  };
  EXPECT_EQ(told("k", "new", true), 1U);
  EXPECT_EQ(told("k", "new", true), 0U);  // no change
  EXPECT_EQ(told("other", "quiet", false), 0U);
  EXPECT_EQ(told("k", "new", true), 1U);  // announces the quiet change

  TSqliteConnection(FFile, TStoreMode::kExisting).Execute("DROP TABLE setting");
  TMessageBoxCtrl box;
  TCallLog messages;
  box.SetSink([&](std::string_view text) { messages.emplace_back(text); });
  const TServiceScope<TCustomMessageBoxCtrl> installed(box);
  EXPECT_EQ(told("k", "lost", true), 0U);
  EXPECT_EQ(config.ReadString("s", "k"), "new");
  EXPECT_THAT(messages, ElementsAre(HasSubstr(FFile.string() + ": ")));
}

TEST_F(Configuration, LosesNothingThatWasAcknowledgedWhenTheProcessIsKilled) {
  int acknowledged[2];
  ASSERT_EQ(pipe(acknowledged), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    TConfigManager config(FFile, "ann");
    for (int i = 0;; ++i) {
      config.Store("s", std::to_string(i), "value " + std::to_string(i), true);
      if (write(acknowledged[1], "+", 1) != 1) _exit(1);
    }
  }
  close(acknowledged[1]);
  int count = 0;
  char mark = 0;
  while (count < 40 && read(acknowledged[0], &mark, 1) == 1) ++count;
  kill(child, SIGKILL);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status)) << "the writer ended by itself";
  while (read(acknowledged[0], &mark, 1) == 1) ++count;
  close(acknowledged[0]);

  const TConfigManager config(FFile, "ann");
  ASSERT_GE(count, 40);
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(config.ReadString("s", std::to_string(i)), "value " + std::to_string(i));
  }
}

TEST_F(Configuration, RefusesAForeignOrDamagedFileInOneLineAndLeavesItAlone) {
  {
    TConfigManager config(FFile, "ann");
    for (int i = 0; i < 20; ++i) config.Store("s", std::to_string(i), std::string(1000, 'x'), true);
  }
  const std::string sound = ReadWholeFile(FFile);
  std::string newer = sound;
  newer[63] = 9;  // the last byte of the version in the header
  std::string torn = sound;
  torn.replace(8192, 4096, std::string(4096, '\xFF'));
  const std::filesystem::path other = FFolder.Path() / "other.db";
  TSqliteConnection(other, TStoreMode::kCreate).Execute("CREATE TABLE t(x)");

  const std::filesystem::path file = FFolder.Path() / "refused.db";
  for (const auto& [contents, reason] : std::vector<std::pair<std::string, const char*>>{
           {"AmountPrecision=3\n", "not a MarginDesk configuration"},
           {ReadWholeFile(other), "not a MarginDesk configuration"},
           {newer, "newer version"},
           {torn, "damaged"},
           {sound.substr(0, 4096 + 100), "damaged"}}) {
    WriteWholeFile(file, contents);
    const std::string refusal = RefusalOf(file);
    EXPECT_THAT(refusal, StartsWith(file.string() + ": "));
    EXPECT_THAT(refusal, HasSubstr(reason));
    EXPECT_THAT(refusal, Not(HasSubstr("\n")));
    EXPECT_EQ(ReadWholeFile(file), contents);
  }
  EXPECT_THAT(RefusalOf(FFolder.Path() / "no folder" / "settings.db"), HasSubstr("cannot be opened"));
}

}  // namespace
}  // namespace margindesk
