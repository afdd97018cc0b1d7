#include <stdexcept>
#include <string>
#include <thread>

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
  EXPECT_FALSE(FLoop.RunOnce());
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

TEST_F(UiLoop, LetsATimerStopItselfAndItsNeighbourInTheSameTurn) {
  TUiLoop::TTimerId self = 0, last = 0;
  self = FLoop.StartTimer(10ms, [&] {
    FLoop.StopTimer(self);
    FLoop.StopTimer(last);
    FLog.emplace_back("self");
  });
  last = FLoop.StartTimer(10ms, [this] { FLog.emplace_back("stopped"); });
  EXPECT_THAT(After(10ms), ElementsAre("self"));
  EXPECT_THAT(After(10ms), IsEmpty());
}

TEST_F(UiLoop, TicksTheHandlersOfTheTimerControlTwiceASecondWhileItLives) {
  TListener listener{"tick", &FLog, {}};
  {
    TTimerControl timer(FLoop);
    timer.AddTimerHandler(&listener, listener.GetHandler());
    EXPECT_THAT(After(499ms), IsEmpty());
    EXPECT_THAT(After(1ms), ElementsAre("tick"));
  }
  EXPECT_THAT(After(500ms), IsEmpty());
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

}  // namespace
}  // namespace margindesk
