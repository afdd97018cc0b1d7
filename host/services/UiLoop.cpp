#include "host/services/UiLoop.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace margindesk {

TUiLoop::TUiLoop(TClock clock) : FClock(std::move(clock)) {}

void TUiLoop::Post(std::function<void()> function) {
  {
    const std::lock_guard lock(FMutex);
    FPosted.push_back(std::move(function));
  }
  FPostedSomething.notify_one();
  if (FWaker) FWaker();
}

TUiLoop::TTimerId TUiLoop::StartTimer(TDuration period, std::function<void()> function) {
  period = std::max<TDuration>(period, std::chrono::milliseconds(1));
  FTimers.emplace(++FLastTimer, TTimer{FClock() + period, period,
                                       std::make_shared<const std::function<void()>>(std::move(function))});
  return FLastTimer;
}

void TUiLoop::StopTimer(TTimerId timer) { FTimers.erase(timer); }

bool TUiLoop::RunOnce(TDuration wait) {
  WaitForWork(wait);
  const bool ranPosted = RunPosted();
  const bool ranTimers = RunTimers();
  return ranPosted || ranTimers;
}

bool TUiLoop::RunUntil(const std::function<bool()>& done, TDuration timeout) {
  const TTimePoint end = std::chrono::steady_clock::now() + timeout;
  while (!done()) {
    const TDuration left = end - std::chrono::steady_clock::now();
    if (left <= TDuration::zero()) return false;
    RunOnce(left);
  }
  return true;
}

// A function may run the loop itself (a modal question does), which then goes on with the same queue; so the
// turn ends by its number of functions, or earlier when the inner turns have run them.
bool TUiLoop::RunPosted() {
  std::unique_lock lock(FMutex);
  std::size_t left = FPosted.size();
  const bool ran = left != 0;
  for (; left != 0 && !FPosted.empty(); --left) {
    const std::function<void()> function = std::move(FPosted.front());
    FPosted.pop_front();
    lock.unlock();
    function();
    lock.lock();
  }
  return ran;
}

bool TUiLoop::RunTimers() {
  const TTimePoint now = FClock();
  std::vector<std::pair<TTimePoint, TTimerId>> due;
  for (const auto& [id, timer] : FTimers) {
    if (timer.FDue <= now) due.emplace_back(timer.FDue, id);
  }
  std::sort(due.begin(), due.end());

  bool ran = false;
  for (const auto& [time, id] : due) {
    const auto found = FTimers.find(id);
    // Stopped by a timer before it in this turn, or already run by a turn inside it.
    if (found == FTimers.end() || found->second.FDue != time) continue;
    TTimer& timer = found->second;
    timer.FDue += timer.FPeriod;
    if (timer.FDue <= now) timer.FDue = now + timer.FPeriod;
    const auto function = timer.FFunction;
    (*function)();
    ran = true;
  }
  return ran;
}

void TUiLoop::WaitForWork(TDuration wait) {
  for (const auto& [id, timer] : FTimers) wait = std::min(wait, timer.FDue - FClock());
  if (wait <= TDuration::zero()) return;
  std::unique_lock lock(FMutex);
  FPostedSomething.wait_for(lock, wait, [this] { return !FPosted.empty(); });
}

}  // namespace margindesk
