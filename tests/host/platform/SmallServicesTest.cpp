#include <csignal>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/services/ConfigManager.h"
#include "host/services/GlobalChannelManager.h"
#include "host/services/LookAndFeelService.h"
#include "host/services/MessageBoxCtrl.h"
#include "host/services/TimerControl.h"
#include "host/services/UiLoop.h"
#include "host/services/UserAppProfile.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/Handlers.h"
#include "tests/host/book/BookTestFiles.h"
#include "tests/host/services/Recorder.h"
#include "tests/support/WholeFile.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using TCallLog = std::vector<std::string>;

// A loop whose timers go by a clock that the test moves.
class UiLoop : public testing::Test {
 protected:
  // What was logged while the time went on by so much.
  TCallLog After(std::chrono::milliseconds time) {
    FNow += time;
    FLoop.RunOnce();
    return std::exchange(FLog, {});
  }

  TUiLoop::TTimePoint FNow{};
  TUiLoop FLoop{[this] { return FNow; }};
  TCallLog FLog;
};

TEST_F(UiLoop, RunsPostedFunctionsInOrderWhateverTheyDo) {
  FLoop.Post([this] {
    FLog.emplace_back("first");
    FLoop.Post([this] { FLog.emplace_back("next turn"); });
  });
  FLoop.Post([this] { FLog.emplace_back("second"); });
  EXPECT_THAT(FLog, IsEmpty());
  EXPECT_THAT(After(0ms), ElementsAre("first", "second"));
  EXPECT_THAT(After(0ms), ElementsAre("next turn"));
  FLoop.Post([] { throw std::runtime_error("fault"); });
  FLoop.Post([this] { FLog.emplace_back("after the fault"); });
  EXPECT_THROW(FLoop.RunOnce(), std::runtime_error);
  EXPECT_THAT(After(0ms), ElementsAre("after the fault"));
}

TEST_F(UiLoop, RunsTimersInTheOrderInWhichTheyFallDueAndDoesNotMakeUpForMissedTurns) {
  FLoop.StartTimer(30ms, [this] { FLog.emplace_back("30"); });
  const auto fast = FLoop.StartTimer(20ms, [this] { FLog.emplace_back("20"); });
  EXPECT_THAT(After(19ms), IsEmpty());
  EXPECT_THAT(After(11ms), ElementsAre("20", "30"));
  EXPECT_THAT(After(10ms), ElementsAre("20"));          // at 40: the fast timer keeps its beat
  EXPECT_THAT(After(1000ms), ElementsAre("30", "20"));  // both fell due at 60: in the order of their start
  FLoop.StopTimer(fast);
  EXPECT_THAT(After(1ms), IsEmpty());
}

TEST_F(UiLoop, TicksTheHandlersOfTheTimerControlTwiceASecondWhileItLives) {
  TRecorder recorder;
  {
    TTimerControl timer(FLoop);
    timer.AddTimerHandler(&recorder, recorder.Plain());
    After(499ms);
    EXPECT_THAT(recorder.Take(), IsEmpty());
    After(1ms);
    EXPECT_THAT(recorder.Take(), ElementsAre("called"));
  }
  After(500ms);
  EXPECT_THAT(recorder.Take(), IsEmpty());
}

TEST(UiLoopOnTheRealClock, WakesForAnotherThreadsPostAndGivesUpAfterItsTimeout) {
  TUiLoop loop;
  std::thread::id ranOn;
  std::thread poster([&] { loop.Post([&ranOn] { ranOn = std::this_thread::get_id(); }); });
  EXPECT_TRUE(loop.RunUntil([&] { return ranOn != std::thread::id(); }, 10s));
  poster.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
  EXPECT_FALSE(loop.RunUntil([] { return false; }, 20ms));
}

// The orders of a batch, of which only the end matters here.
struct TOrders : TCustomDataControl {
  explicit TOrders(int& alive) : TCustomDataControl(nullptr), FAlive(alive) { ++FAlive; }
  ~TOrders() override { --FAlive; }
  std::int32_t GetCount() override { return 0; }
  const TColumnList* GetColList() override { return nullptr; }
  TVariant GetValue(std::int32_t, std::int32_t) override { return {}; }
  std::string GetDisplayValue(std::int32_t, std::int32_t) override { return {}; }
  bool GetRowValue(std::int32_t, const void*&) override { return false; }
  bool GetColValue(std::int32_t, const void*&) override { return false; }
  int& FAlive;
};

struct TLinked {
  void Take(void* /*sender*/, void* data) {
    const auto& sent = *static_cast<TChannelData*>(data);
    FHeard += std::string(sent.FText) + " " + std::to_string(sent.FValue) + " ";
  }
  std::string FHeard;
};

TEST(Channels, HandDataToTheirOwnHandlersAndOwnOrdersThatNobodyTakes) {
  TGlobalChannelManager channels;
  TLinked linked;
  channels.AddChannelHandler(kChannelLinkedAccount, MakeHandler<&TLinked::Take>(&linked), &linked);
  channels.PostChannelData(kChannelLinkedAccount, "A100", nullptr, 7);
  channels.PostChannelData(kChannelLayoutLoaded, "nobody", nullptr, 0);
  EXPECT_EQ(linked.FHeard, "A100 7 ");

  int alive = 0;
  TOrderTakeActionRecord record;
  record.FDataControl = new TOrders(alive);
  channels.SendChannelMessage(kMessageBatchConfirmation, &record);
  EXPECT_EQ(alive, 0);
  EXPECT_EQ(record.FDataControl, nullptr);
}

TEST(UserAndSkin, MayDoEverythingThatIsNotTakenAwayAndSeeTheColoursOfTheirSkin) {
  TConfigManager config("ann");
  const TServiceScope<TCustomConfigManager> installed(config);
  const TUserAppProfile user;
  EXPECT_TRUE(user.IsFunctionEnabled("MarginSim"));
  config.WriteString("User.ann", "Function_MarginSim", "N", true);
  EXPECT_FALSE(user.IsFunctionEnabled("MarginSim"));

  const TLookAndFeelService look;
  constexpr std::string_view kChanged = "coMarginSimulateDiffBgColor";
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 255U);
  config.WriteString("Light", kChanged, "$00FFFF", true);
  EXPECT_EQ(look.GetColor(nullptr, kChanged), 0xFFFFU);
  for (const char* text : {"", "$", "red", "-1", "16777216", "255 "}) {
    EXPECT_FALSE(ParseColor(text)) << text;
  }
}

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
  for (const auto& [text, integer, flag] : {std::tuple("-3", -3, false),
                                            {"1.5", 0, false},
                                            {" 7", 0, false},
                                            {"99999999999", 0, false},
                                            {"y", 0, true},
                                            {"Yes", 0, false}}) {
    config.WriteString("User", "key", text, true);
    EXPECT_EQ(config.ReadInteger("User", "key"), integer) << text;
    EXPECT_EQ(config.ReadBool("User", "key"), flag) << text;
  }
}

TEST_F(Configuration, TellsOfAnAnnouncedChangeThatWasWrittenAndOfNothingElse) {
  TConfigManager config(FFile, "ann");
  TRecorder recorder;
  config.AddConfigUpdateHandler(recorder.Plain(), &recorder);
  const auto told = [&](std::string_view key, std::string_view value, bool notify) {
    config.WriteString("s", key, value, notify);
    return recorder.Take().size();
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
