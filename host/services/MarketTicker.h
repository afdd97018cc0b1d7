#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "host/services/HostData.h"
#include "host/services/UiLoop.h"

namespace margindesk {

// A tick file that cannot be used; the text is "line 3: reason".
class TTickFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TTick {
  std::chrono::milliseconds FTime{0};  // of the day
  TCode FSymbol;
  double FLast = 0;
  double FBid = 0;
  double FAsk = 0;
};

// Reads a tick file: CSV with the columns time,symbol,last,bid,ask in this order; times as 09:30:05 or
// 09:30:05.250 that never go back, symbols that the host knows, prices above 0, a bid not above its ask.
// Throws TTickFileError.
std::vector<TTick> ReadTickFile(std::string_view text, const THostData& data);

// Moves the host's prices: at random, or as a tick file says. The previous close stays. What it does follows
// from the seed, the ticks, the speed and the number of beats alone, so a run can be repeated.
//
// At random only symbols that have a price, a spread table and an exchange that trades now move: one tick up
// or down, the last price being the bid or the ask of a spread that is one tick wide.
class TMarketTicker {
 public:
  static constexpr std::chrono::milliseconds kBeat{100};
  static constexpr double kChangesPerSecond = 20;  // at random, at speed 1
  static constexpr std::uint64_t kFirstSeed = 1;

  // Both must outlive it. It stands still until it is started.
  TMarketTicker(THostData& data, TUiLoop& loop, std::uint64_t seed = kFirstSeed);
  ~TMarketTicker();
  TMarketTicker(const TMarketTicker&) = delete;
  TMarketTicker& operator=(const TMarketTicker&) = delete;

  void Start();  // a replay that has ended starts again at its first tick
  void Pause();
  bool IsRunning() const noexcept { return FTimer != 0; }

  void SetSpeed(double speed) noexcept { FSpeed = speed; }  // above 0; 1 is real time
  double GetSpeed() const noexcept { return FSpeed; }

  // What moves the prices from now on; a replay begins at its first tick, without waiting for it. It stops
  // after its last.
  void Replay(std::vector<TTick> ticks);
  void WalkAtRandom();
  bool IsReplay() const noexcept { return !FTicks.empty(); }

  void Beat();  // one beat of the timer

 private:
  void BeatAtRandom();
  void BeatOfReplay();
  bool MayMove(TCode symbol) const;
  void Move(TCode symbol);
  void SetPrices(TCode symbol, double last, double bid, double ask);

  THostData& FData;
  TUiLoop& FLoop;
  TUiLoop::TTimerId FTimer = 0;
  std::mt19937_64 FRandom;
  double FSpeed = 1;
  double FChangesDue = 0;       // the part of a change that is left from the beats before
  std::vector<TCode> FMovable;  // of this beat
  std::vector<TTick> FTicks;    // empty while the prices walk at random
  std::size_t FNext = 0;        // the tick that comes next
  double FReplayTime = 0;       // milliseconds since the first tick
};

}  // namespace margindesk
