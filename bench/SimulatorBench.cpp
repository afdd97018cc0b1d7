// The margin simulator over an account of 10,000 positions in ten currencies: a click on Simulate until the
// last figure is drawn, marking what changed, and collecting a long grid.
#include <chrono>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/BenchBook.h"
#include "marginsim/MarginSimulatorDataControl.h"
#include "marginsim/MarginSimulatorView.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/Constdef.h"

namespace margindesk {
namespace {

constexpr std::size_t kPositions = 10'000;

class TBenchSimulator {
 public:
  TBenchSimulator() : FContents(MakeBenchBook(kPositions, 0)), FHost(FContents, GetBenchOptions()) {
    auto& config = FHost.Config();
    config.WriteString(
        config.GetUserSection(), "Default_AccountInfoColumn",
        "TradingLimit,CashBalance,Equity,PL,UnrealizedPL,MarketValue,I.Margin,M.Margin,MarginLevel,"
        "MarginCall,PurchasingPower,CompBuy,CompSell",
        true);
    FFrame = CreateViewFrame<TMarginSimulatorFrame>(nullptr);
    FFrame->SetAccount(TCode("M"));
    for (const TVirtualTreeNode* node : FFrame->AccountInfoTree->GetNodes()) {
      if (node->HasChildren()) FFrame->AccountInfoTree->SetExpanded(*node, true);
    }
    Settle();
  }

  TMarginSimulatorFrame& Frame() { return *FFrame; }

  void Settle() {
    while (FHost.Loop().RunOnce()) {
    }
  }

  // Every other order counts as completed.
  void TypeOrders(std::int32_t count) {
    TGridTableView& grid = *FFrame->OrderGridView;
    for (std::int32_t row = 0; row < count; ++row) {
      const auto& [symbol, prices] =
          FContents.FPrices[static_cast<std::size_t>(row) * 7 % FContents.FPrices.size()];
      grid.EditCell(row, kOrderColumnSymbol, TVariant::Text(symbol.Text()));
      Settle();
      grid.EditCell(row, kOrderColumnPrice, TVariant::Float(prices.FLast));
      grid.EditCell(row, kOrderColumnQuantity, TVariant::Float(100));
      if (row % 2 == 0) grid.EditCell(row, kOrderColumnStatus, TVariant::Text("Completed"));
    }
  }

  // Everything of the tree that a screen shows, with the marks of what changed.
  std::size_t Draw() {
    std::size_t length = 0;
    TVirtualTree& tree = *FFrame->AccountInfoTree;
    for (const TVirtualTreeNode* node : tree.GetShownNodes()) {
      for (const TTreeColumn& column : tree.GetColumns()) {
        length += tree.GetDisplayText(node, column).size();
        benchmark::DoNotOptimize(tree.GetContentStyle(node, column));
      }
    }
    return length;
  }

  std::size_t DrawTexts() {
    std::size_t length = 0;
    TVirtualTree& tree = *FFrame->AccountInfoTree;
    for (const TVirtualTreeNode* node : tree.GetShownNodes()) {
      for (const TTreeColumn& column : tree.GetColumns()) length += tree.GetDisplayText(node, column).size();
    }
    return length;
  }

 private:
  THostContents FContents;
  TReferenceHost FHost;
  std::unique_ptr<TMarginSimulatorFrame> FFrame;
};

// A row may stay without a price; the host then takes the market's.
void SimulateFiftyOrders(benchmark::State& state) {
  TBenchSimulator simulator;
  simulator.TypeOrders(50);
  for (auto _ : state) {
    simulator.Frame().btnSimulateClick();
    simulator.Settle();
    benchmark::DoNotOptimize(simulator.Draw());
  }
}
BENCHMARK(SimulateFiftyOrders)->Unit(benchmark::kMillisecond);

// IsValueChanged for every row of the tree, beside the tree's texts alone with the real figures and with the
// simulated ones. Of a real profit and loss it walks the positions; a simulated one is read.
void CompareChangedWithRepaint(benchmark::State& state) {
  using TClock = std::chrono::steady_clock;
  TBenchSimulator simulator;
  simulator.TypeOrders(50);
  TMarginSimulatorFrame& frame = simulator.Frame();
  auto* control =
      dynamic_cast<TMarginSimulatorDataControl*>(frame.AccountInfoTree->GetDataSource()->GetDataControl());
  frame.btnSimulateClick();
  simulator.Settle();
  std::chrono::duration<double> real{};
  std::chrono::duration<double> simulated{};
  std::chrono::duration<double> changed{};
  std::size_t differing = 0;
  for (auto _ : state) {
    const auto start = TClock::now();
    benchmark::DoNotOptimize(simulator.DrawTexts());
    const auto drawn = TClock::now();
    differing = 0;
    std::string original;
    for (const TVirtualTreeNode* node : frame.AccountInfoTree->GetShownNodes()) {
      if (control->IsValueChanged(node->GetData(), kCellValue, original)) ++differing;
    }
    const auto compared = TClock::now();
    simulated += drawn - start;
    changed += compared - drawn;
    state.PauseTiming();
    control->SetAccountInfoMode(TAccountInfoMode::aimNormal);
    const auto before = TClock::now();
    benchmark::DoNotOptimize(simulator.DrawTexts());
    real += TClock::now() - before;
    frame.btnSimulateClick();
    simulator.Settle();
    state.ResumeTiming();
  }
  state.counters["by_real_repaint"] = changed / real;
  state.counters["by_simulated_repaint"] = changed / simulated;
  state.counters["changed_rows"] = static_cast<double>(differing);
}
BENCHMARK(CompareChangedWithRepaint)->Unit(benchmark::kMillisecond);

void CollectThousandRows(benchmark::State& state) {
  TBenchSimulator simulator;
  simulator.TypeOrders(1000);
  for (auto _ : state) {
    const bool fine = simulator.Frame().AddSimulateOrder(false);
    if (!fine) state.SkipWithError("a row was refused");
  }
}
BENCHMARK(CollectThousandRows)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace margindesk
