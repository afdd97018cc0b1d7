// Position totals, beside a flat loop over arrays and SQLite in memory.
#include <cmath>

#include <benchmark/benchmark.h>

#include "bench/Allocations.h"
#include "bench/BenchBook.h"
#include "bench/BenchControl.h"
#include "bench/Peers.h"

namespace margindesk {
namespace {

// The time of a position visit, and how often a visit asks for memory.
void ReportVisits(benchmark::State& state, double visits, std::size_t allocations) {
  const double all = visits * static_cast<double>(state.iterations());
  state.counters["visit"] =
      benchmark::Counter(all, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
  state.counters["allocations"] = static_cast<double>(allocations) / all;
}

void OnePositionTotal(benchmark::State& state, TCode currency) {
  const auto count = static_cast<std::size_t>(state.range(0));
  TReferenceHost host(MakeBenchBook(count, 0), GetBenchOptions());
  TBenchControl control;
  control.SetAccount(TCode("M"));
  const std::size_t before = GetAllocationCount();
  for (auto _ : state) benchmark::DoNotOptimize(control.GetTotalCompBuy(currency));
  ReportVisits(state, static_cast<double>(count), GetAllocationCount() - before);
}

void OnePositionTotal_OneCurrency(benchmark::State& state) { OnePositionTotal(state, TCode("USD")); }
void OnePositionTotal_AllCurrencies(benchmark::State& state) { OnePositionTotal(state, TCode()); }
BENCHMARK(OnePositionTotal_OneCurrency)->Arg(1000)->Arg(10000)->Arg(100000);
BENCHMARK(OnePositionTotal_AllCurrencies)->Arg(1000)->Arg(10000)->Arg(100000);

constexpr std::size_t kPositions = 10000;
constexpr double kSixTimesElevenVisits = 66.0 * kPositions;

// Six totals for each of ten currencies and for all of them.
void SixTotalsTimesEleven(benchmark::State& state) {
  const auto subAccounts = static_cast<std::size_t>(state.range(0));
  TReferenceHost host(MakeBenchBook(kPositions, subAccounts), GetBenchOptions());
  TBenchControl control;
  control.SetAccount(TCode("M"));
  if (subAccounts > 0) control.SetAggregate();
  std::vector<TCode> currencies = GetBenchCurrencies();
  currencies.emplace_back();
  const std::size_t before = GetAllocationCount();
  for (auto _ : state) {
    for (const TCode currency : currencies) benchmark::DoNotOptimize(control.GetSixTotals(currency));
  }
  ReportVisits(state, kSixTimesElevenVisits, GetAllocationCount() - before);
}
BENCHMARK(SixTotalsTimesEleven)->Arg(0)->Arg(20)->Unit(benchmark::kMillisecond);

void SixTotalsTimesEleven_FlatArrays(benchmark::State& state) {
  const TFlatTotals flat(MakeBenchBook(kPositions, 0));
  for (auto _ : state) {
    for (int currency = -1; currency < static_cast<int>(kCurrencyCount); ++currency) {
      benchmark::DoNotOptimize(flat.GetSixTotals(currency));
    }
  }
  ReportVisits(state, kSixTimesElevenVisits, 0);
}
BENCHMARK(SixTotalsTimesEleven_FlatArrays)->Unit(benchmark::kMillisecond);

void SixTotals_SqliteInMemory(benchmark::State& state) {
  const THostContents contents = MakeBenchBook(kPositions, 0);
  TSqliteTotals peer(contents);
  TReferenceHost host(contents, GetBenchOptions());
  TBenchControl control;
  control.SetAccount(TCode("M"));
  // All three must have computed the same, or the comparison means nothing.
  const double ours = control.GetSixTotals(TCode());
  const double tolerance = std::abs(ours) * 1e-9;
  if (std::abs(ours - peer.GetSixTotals()) > tolerance ||
      std::abs(ours - TFlatTotals(contents).GetSixTotals(-1)) > tolerance) {
    state.SkipWithError("the peers' totals differ from the data control's");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(peer.GetSixTotals());
}
BENCHMARK(SixTotals_SqliteInMemory)->Unit(benchmark::kMillisecond);

// One price changes, the host publishes it, and every total is read again.
void PriceChangeUntilAllTotalsAreRead(benchmark::State& state) {
  TReferenceHost host(MakeBenchBook(kPositions, 0), GetBenchOptions());
  TBenchControl control;
  control.SetAccount(TCode("M"));
  host.Publish();
  const TCode symbol("P7");
  TPriceFacts prices;
  prices.FLast = 10;
  for (auto _ : state) {
    prices.FLast += 0.01;
    host.Data().SetPrice(symbol, prices);
    host.Publish();
    benchmark::DoNotOptimize(control.GetSixTotals(TCode()));
  }
}
BENCHMARK(PriceChangeUntilAllTotalsAreRead)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace margindesk
