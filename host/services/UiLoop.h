#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace margindesk {

// The queue of the user-interface thread: the thread that made the loop and alone runs it. Posted functions
// run in the order of posting, timers in the order in which they fell due (at the same time: in which they
// were started). Everything but Post belongs to that thread.
class TUiLoop {
 public:
  using TTimePoint = std::chrono::steady_clock::time_point;
  using TDuration = std::chrono::steady_clock::duration;
  // Tells the time that timers go by; a replaced one lets a test move time by hand.
  using TClock = std::function<TTimePoint()>;
  using TTimerId = std::uint64_t;  // never given out twice, 0 for none

  explicit TUiLoop(TClock clock = &std::chrono::steady_clock::now);
  TUiLoop(const TUiLoop&) = delete;
  TUiLoop& operator=(const TUiLoop&) = delete;

  // Hands a function to the loop, from any thread. It runs in a later turn, never inside this call.
  void Post(std::function<void()> function);

  // Called after every Post, on the thread that posted: a front with a loop of its own then has this one run.
  // Set while nothing posts from other threads.
  void SetWaker(std::function<void()> waker) { FWaker = std::move(waker); }

  // Calls a function every `period` (at least a millisecond), first one period from now. Turns that were
  // missed are not made up for. A timer may stop itself and others while it runs.
  TTimerId StartTimer(TDuration period, std::function<void()> function);
  void StopTimer(TTimerId timer);  // an unknown timer is no fault

  // One turn: what had been posted when it began, then the timers that are due. What these post waits for the
  // next turn. With nothing to do it first waits for something, `wait` at most. False: nothing ran. An
  // exception out of a function leaves the turn; what it had not run yet stays queued.
  bool RunOnce(TDuration wait = TDuration::zero());

  // Runs turns until `done` holds, which is asked before every turn. False: it still does not after `timeout`
  // of real time.
  bool RunUntil(const std::function<bool()>& done, TDuration timeout);

 private:
  struct TTimer {
    TTimePoint FDue;
    TDuration FPeriod;
    std::shared_ptr<const std::function<void()>> FFunction;  // outlives a timer that stops itself
  };

  bool RunPosted();
  bool RunTimers();
  void WaitForWork(TDuration wait);

  const TClock FClock;
  std::map<TTimerId, TTimer> FTimers;
  TTimerId FLastTimer = 0;

  std::mutex FMutex;  // guards the queue alone
  std::condition_variable FPostedSomething;
  std::function<void()> FWaker;
  std::deque<std::function<void()>> FPosted;
};

}  // namespace margindesk
