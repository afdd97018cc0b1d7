#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/TimerControl.h"
#include "host/services/UiLoop.h"
#include "tests/host/platform/Listener.h"

namespace margindesk {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// A loop whose timers go by a clock that the test moves.
class UiLoop : public testing::Test {
 protected:
  void Advance(std::chrono::milliseconds time) {
    FNow += time;
    FLoop.RunOnce();
  }

  TUiLoop::TTimePoint FNow{};
  TUiLoop FLoop{[this] { return FNow; }};
  std::vector<std::string> FLog;
};

TEST_F(UiLoop, RunsPostedFunctionsInOrderAndLeavesWhatTheyPostToTheNextTurn) {
  FLoop.Post([this] {
    FLog.emplace_back("first");
    FLoop.Post([this] { FLog.emplace_back("third"); });
  });
  FLoop.Post([this] { FLog.emplace_back("second"); });
  EXPECT_THAT(FLog, IsEmpty());
  EXPECT_TRUE(FLoop.RunOnce());
  EXPECT_THAT(FLog, ElementsAre("first", "second"));
  EXPECT_TRUE(FLoop.RunOnce());
  EXPECT_THAT(FLog, ElementsAre("first", "second", "third"));
  EXPECT_FALSE(FLoop.RunOnce());
}

TEST_F(UiLoop, KeepsTheOrderWhenAFunctionRunsTheLoopItselfOrThrows) {
  FLoop.Post([this] {
    FLoop.RunOnce();
    FLog.emplace_back("outer");
  });
  FLoop.Post([this] { FLog.emplace_back("inner"); });
  FLoop.RunOnce();
  EXPECT_THAT(FLog, ElementsAre("inner", "outer"));

  FLoop.Post([] { throw std::runtime_error("fault"); });
  FLoop.Post([this] { FLog.emplace_back("after the fault"); });
  EXPECT_THROW(FLoop.RunOnce(), std::runtime_error);
  FLoop.RunOnce();
  EXPECT_THAT(FLog, ElementsAre("inner", "outer", "after the fault"));
}

TEST_F(UiLoop, RunsTimersInTheOrderInWhichTheyFallDueAndDoesNotMakeUpForMissedTurns) {
  FLoop.StartTimer(30ms, [this] { FLog.emplace_back("30"); });
  const auto fast = FLoop.StartTimer(20ms, [this] { FLog.emplace_back("20"); });
  Advance(19ms);
  EXPECT_THAT(FLog, IsEmpty());
  Advance(11ms);  // at 30
  EXPECT_THAT(FLog, ElementsAre("20", "30"));
  FLog.clear();
  Advance(10ms);  // at 40: the fast timer keeps its beat
  EXPECT_THAT(FLog, ElementsAre("20"));
  FLog.clear();
  Advance(1000ms);  // both fell due at 60: the one that was started first goes first
  EXPECT_THAT(FLog, ElementsAre("30", "20"));
  FLog.clear();
  Advance(19ms);
  EXPECT_THAT(FLog, IsEmpty());
  FLoop.StopTimer(fast);
  Advance(1ms);
  EXPECT_THAT(FLog, IsEmpty());
}

TEST_F(UiLoop, LetsATimerStopItselfAndItsNeighbourInTheSameTurn) {
  TUiLoop::TTimerId self = 0;
  TUiLoop::TTimerId neighbour = 0;
  self = FLoop.StartTimer(10ms, [&] {
    FLoop.StopTimer(self);
    FLoop.StopTimer(neighbour);
    FLog.emplace_back("self");
  });
  neighbour = FLoop.StartTimer(10ms, [this] { FLog.emplace_back("neighbour"); });
  Advance(10ms);
  Advance(10ms);
  EXPECT_THAT(FLog, ElementsAre("self"));
}

TEST_F(UiLoop, RunsADueTimerOnceWhenTheOneBeforeItRunsTheLoopItself) {
  FLoop.StartTimer(10ms, [this] {
    FLog.emplace_back("asks");
    FLoop.RunOnce();
    FLog.emplace_back("answered");
  });
  FLoop.StartTimer(10ms, [this] { FLog.emplace_back("neighbour"); });
  Advance(10ms);
  EXPECT_THAT(FLog, ElementsAre("asks", "neighbour", "answered"));
}

TEST(UiLoopOnTheRealClock, WakesForAnotherThreadsPostAndGivesUpAfterItsTimeout) {
  TUiLoop loop;
  std::thread::id ranOn;
  std::thread poster([&] { loop.Post([&ranOn] { ranOn = std::this_thread::get_id(); }); });
  EXPECT_TRUE(loop.RunUntil([&] { return ranOn != std::thread::id(); }, 10s));
  poster.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());

  int ticks = 0;
  loop.StartTimer(5ms, [&ticks] { ++ticks; });
  EXPECT_TRUE(loop.RunUntil([&] { return ticks == 3; }, 10s));
  EXPECT_FALSE(loop.RunUntil([] { return false; }, 20ms));
}

TEST_F(UiLoop, TicksEveryHandlerOfTheTimerControlTwiceASecondWhileItLives) {
  TListener first{"first", &FLog, {}};
  TListener second{"second", &FLog, {}};
  {
    TTimerControl timer(FLoop);
    timer.AddTimerHandler(&first, first.GetHandler());
    timer.AddTimerHandler(&second, second.GetHandler());
    Advance(499ms);
    EXPECT_THAT(FLog, IsEmpty());
    Advance(1ms);
    EXPECT_THAT(FLog, ElementsAre("first", "second"));
    timer.RemoveTimerHandler(&first);
    Advance(500ms);
    EXPECT_THAT(FLog, ElementsAre("first", "second", "second"));
  }
  Advance(500ms);
  EXPECT_THAT(FLog, testing::SizeIs(3));
}

}  // namespace
}  // namespace margindesk
