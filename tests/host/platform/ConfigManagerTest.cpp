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

namespace margindesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class Configuration : public testing::Test {
 protected:
  std::string RefusalOf(const std::filesystem::path& file) {
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
    config.WriteString("User.ann", "amountprecision", "4", true);  // letter case counts
    config.WriteString("user.ann", "AmountPrecision", "5", true);
    config.WriteString("LayoutTemplate", "AccountInfo", odd, true);
    config.WriteString("User.ann", "Gone", "x", true);
    config.WriteString("User.ann", "Gone", "", true);
    config.WriteString("User.ann", "AmountPrecision", "6", false);
  }
  const TConfigManager config(FFile, "ann");
  EXPECT_EQ(config.GetUserSection(), "User.ann");
  EXPECT_EQ(config.ReadString("User.ann", "AmountPrecision"), "6");
  EXPECT_EQ(config.ReadString("User.ann", "amountprecision"), "4");
  EXPECT_EQ(config.ReadString("user.ann", "AmountPrecision"), "5");
  EXPECT_EQ(config.ReadString("LayoutTemplate", "AccountInfo"), odd);
  EXPECT_EQ(config.ReadString("User.ann", "Gone"), "");
}

TEST_F(Configuration, ReadsFlagsAndIntegersStrictly) {
  TConfigManager config("");
  const std::string section = config.GetUserSection();
  EXPECT_EQ(section, "User");
  struct TCase {
    const char* FText;
    std::int32_t FInteger;
    bool FFlag;
  };
  for (const TCase& example : {TCase{"Y", 0, true},
                               {"y", 0, true},
                               {"Yes", 0, false},
                               {"N", 0, false},
                               {"115", 115, false},
                               {"-3", -3, false},
                               {"1.5", 0, false},
                               {" 7", 0, false},
                               {"99999999999", 0, false},
                               {"", 0, false}}) {
    config.WriteString(section, "key", example.FText, true);
    EXPECT_EQ(config.ReadInteger(section, "key"), example.FInteger) << example.FText;
    EXPECT_EQ(config.ReadBool(section, "key"), example.FFlag) << example.FText;
  }
  EXPECT_TRUE(config.CanApplyLayout());
  config.WriteString(kPlatformSection, "ApplyGridLayout", "N", true);
  EXPECT_FALSE(config.CanApplyLayout());
}

TEST_F(Configuration, TellsEveryHandlerOfAnAnnouncedChangeAndOfNothingElse) {
  TConfigManager config(FFile, "ann");
  TCallLog log;
  TListener first{"first", &log, {}};
  TListener second{"second", &log, [&] { EXPECT_EQ(config.ReadString("s", "k"), "new"); }};
  config.AddConfigUpdateHandler(first.GetHandler(), &first);
  config.AddConfigUpdateHandler(second.GetHandler(), &second);

  config.WriteString("s", "k", "new", true);
  EXPECT_THAT(log, ElementsAre("first", "second"));
  config.WriteString("s", "k", "new", true);  // no change
  EXPECT_THAT(log, SizeIs(2));
  config.WriteString("s", "other", "quiet", false);
  EXPECT_THAT(log, SizeIs(2));
  config.WriteString("s", "k", "new", true);  // announces the quiet change
  EXPECT_THAT(log, SizeIs(4));
  config.RemoveConfigUpdateHandler(&first);
  config.WriteString("s", "other", "", true);
  EXPECT_THAT(log, ElementsAre("first", "second", "first", "second", "second"));
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
  ASSERT_GT(sound.size(), 3U * 4096U);
  std::string newer = sound;
  newer[63] = 9;  // the last byte of the version in the header
  std::string torn = sound;
  torn.replace(8192, 4096, std::string(4096, '\xFF'));
  const std::filesystem::path other = FFolder.Path() / "other.db";
  TSqliteConnection(other, TStoreMode::kCreate).Execute("CREATE TABLE t(x)");

  struct TCase {
    const char* FName;
    std::string FContents;
    const char* FReason;
  };
  for (const TCase& example : {TCase{"text", "AmountPrecision=3\n", "not a MarginDesk configuration"},
                               {"other database", ReadWholeFile(other), "not a MarginDesk configuration"},
                               {"newer", newer, "newer version"},
                               {"torn page", torn, "damaged"},
                               {"cut off", sound.substr(0, 4096 + 100), "damaged"},
                               {"header alone", sound.substr(0, 100), "damaged"}}) {
    SCOPED_TRACE(example.FName);
    const std::filesystem::path file = FFolder.Path() / example.FName;
    WriteWholeFile(file, example.FContents);
    const std::string refusal = RefusalOf(file);
    EXPECT_THAT(refusal, testing::StartsWith(file.string() + ": "));
    EXPECT_THAT(refusal, HasSubstr(example.FReason));
    EXPECT_THAT(refusal, testing::Not(HasSubstr("\n")));
    EXPECT_EQ(ReadWholeFile(file), example.FContents);
  }
  EXPECT_THAT(RefusalOf(FFolder.Path()), HasSubstr("not a file"));
  EXPECT_THAT(RefusalOf(FFolder.Path() / "no folder" / "settings.db"), HasSubstr("cannot be opened"));
}

TEST_F(Configuration, MakesUseOfAFileThatWasMadeButNeverFilled) {
  WriteWholeFile(FFile, "");
  TConfigManager(FFile, "ann").Store("s", "k", "v", true);
  EXPECT_EQ(TConfigManager(FFile, "ann").ReadString("s", "k"), "v");
}

TEST_F(Configuration, KeepsTheStoredValueAndTellsTheUserWhenAWriteFails) {
  TConfigManager config(FFile, "ann");
  config.WriteString("s", "k", "old", true);
  TSqliteConnection(FFile, TStoreMode::kExisting).Execute("DROP TABLE setting");
  TMessageBoxCtrl box;
  std::vector<std::string> messages;
  box.SetSink([&](std::string_view text) { messages.emplace_back(text); });
  const TServiceScope<TCustomMessageBoxCtrl> installed(box);
  TCallLog log;
  TListener listener{"told", &log, {}};
  config.AddConfigUpdateHandler(listener.GetHandler(), &listener);

  config.WriteString("s", "k", "new", true);
  EXPECT_EQ(config.ReadString("s", "k"), "old");
  EXPECT_THAT(messages, ElementsAre(HasSubstr(FFile.string() + ": ")));
  EXPECT_THROW(config.Store("s", "k", "new", true), TConfigError);
  EXPECT_THAT(log, testing::IsEmpty());
}

}  // namespace
}  // namespace margindesk
