// The account information view as a person has it open: opening it, changing its account, and prices that
// keep coming while it is on the screen.
#include <chrono>
#include <ctime>
#include <random>
#include <thread>

#include <benchmark/benchmark.h>

#include "accountinfo/view/AccountInfoView.h"
#include "bench/BenchBook.h"
#include "model/contract/ConfigManager.h"

namespace margindesk {
namespace {

constexpr std::size_t kPositions = 10'000;

// What a screen shows of the grid; the tree is small and shown whole.
constexpr std::size_t kGridRowsOnScreen = 40;

void Configure(TReferenceHost& host) {
  auto& config = host.Config();
  const std::string section = config.GetUserSection();
  config.WriteString(
      section, "Default_AccountInfoColumn",
      "TradingLimit,CashBalance,Equity,PL,UnrealizedPL,RealizedPL,MarketValue,I.Margin,M.Margin,"
      "MarginLevel,MarginCall,PurchasingPower",
      false);
  config.WriteString(section, "AcctInfo_PosCol", "Symbol,Qty,MarketValue,PL,UnrealizedPL,BODQty", true);
}

// Counts which controls want to be drawn, and draws them as a front does: by asking for what is on the
// screen.
class TScreen {
 public:
  explicit TScreen(TAccountInfoFrame& frame) : FFrame(frame) {
    frame.AccountInfoTree->SetOnUpdate(MakeEvent<&TScreen::TreeUpdated>(this));
    frame.PositionGridView->SetOnUpdate(MakeEvent<&TScreen::GridUpdated>(this));
  }

  std::size_t Draw() {
    std::size_t length = 0;
    if (std::exchange(FTreeUpdated, false)) {
      ++FDrawn;
      for (const TVirtualTreeNode* node : FFrame.AccountInfoTree->GetShownNodes()) {
        for (const TTreeColumn& column : FFrame.AccountInfoTree->GetColumns()) {
          length += FFrame.AccountInfoTree->GetDisplayText(node, column).size();
          benchmark::DoNotOptimize(FFrame.AccountInfoTree->GetEditProperties(node, column));
        }
      }
    }
    if (std::exchange(FGridUpdated, false)) {
      const auto& order = FFrame.PositionGridView->GetDisplayOrder();
      for (std::size_t row = 0; row < std::min(order.size(), kGridRowsOnScreen); ++row) {
        for (const TGridColumn& column : FFrame.PositionGridView->GetColumns()) {
          length += FFrame.PositionGridView->GetDisplayText(order[row], column).size();
        }
      }
    }
    return length;
  }

  int FDrawn = 0;

 private:
  void TreeUpdated() { FTreeUpdated = true; }
  void GridUpdated() { FGridUpdated = true; }

  TAccountInfoFrame& FFrame;
  bool FTreeUpdated = true;
  bool FGridUpdated = true;
};

// From nothing to the first picture; closing is not counted.
void OpenView(benchmark::State& state) {
  TReferenceHost host(MakeBenchBook(kPositions, 0), GetBenchOptions());
  Configure(host);
  for (auto _ : state) {
    auto frame = CreateViewFrame<TAccountInfoFrame>(nullptr);
    frame->SetAccount(TCode("M"));
    benchmark::DoNotOptimize(TScreen(*frame).Draw());
    state.PauseTiming();
    frame.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(OpenView)->Unit(benchmark::kMillisecond);

// There and back between an account of 10,000 positions and none, without a figure being read.
void ChangeAccount(benchmark::State& state) {
  TReferenceHost host(MakeBenchBook(kPositions, 0), GetBenchOptions());
  Configure(host);
  auto frame = CreateViewFrame<TAccountInfoFrame>(nullptr);
  bool there = false;
  for (auto _ : state) {
    there = !there;
    frame->SetAccount(there ? TCode("M") : TCode());
    benchmark::DoNotOptimize(frame->AccountInfoTree->GetShownNodes().size());
    benchmark::DoNotOptimize(frame->PositionGridView->GetRecordCount());
  }
}
BENCHMARK(ChangeAccount)->Unit(benchmark::kMillisecond);

double GetCpuSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// A thousand price updates a second for ten seconds of real time, each in a turn of the loop of its own, on a
// view that is drawn twenty times a second: the share of one core that it takes.
void PriceUpdates(benchmark::State& state) {
  using TClock = std::chrono::steady_clock;
  constexpr auto kInterval = std::chrono::milliseconds(1);
  constexpr auto kFrame = std::chrono::milliseconds(50);
  constexpr int kUpdates = 10'000;
  const THostContents contents = MakeBenchBook(kPositions, 0);
  TReferenceHost host(contents, GetBenchOptions());
  Configure(host);
  auto frame = CreateViewFrame<TAccountInfoFrame>(nullptr);
  frame->SetAccount(TCode("M"));
  TScreen screen(*frame);
  screen.Draw();
  std::mt19937 random(1);
  for (auto _ : state) {
    const double cpuBefore = GetCpuSeconds();
    const auto start = TClock::now();
    auto nextFrame = start + kFrame;
    screen.FDrawn = 0;
    for (int i = 0; i < kUpdates; ++i) {
      const auto& [symbol, old] = contents.FPrices[random() % contents.FPrices.size()];
      TPriceFacts prices = old;
      prices.FLast += 0.01 * static_cast<double>(i % 100);
      host.Data().SetPrice(symbol, prices);
      while (host.Loop().RunOnce()) {
      }
      if (TClock::now() >= nextFrame) {
        benchmark::DoNotOptimize(screen.Draw());
        nextFrame += kFrame;
      }
      std::this_thread::sleep_until(start + (i + 1) * kInterval);
    }
    const std::chrono::duration<double> took = TClock::now() - start;
    state.counters["core_percent"] = (GetCpuSeconds() - cpuBefore) / took.count() * 100;
    state.counters["updates_per_s"] = kUpdates / took.count();
    state.counters["pictures"] = screen.FDrawn;
  }
}
BENCHMARK(PriceUpdates)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace margindesk
