// The whole tree: every text of it, and its rows built anew.
#include <benchmark/benchmark.h>

#include "bench/BenchBook.h"
#include "bench/BenchControl.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/Constdef.h"

namespace margindesk {
namespace {

TColumnList MakeAllAccountColumns() {
  TColumnList columns;
  for (const TCatalogueRow& row : GetCatalogue()) {
    if (IsAccountColumn(row)) columns.push_back(CreateCatalogueColumn(row));
  }
  return columns;
}

std::size_t ReadTexts(TBenchControl& control, TDataNode* parent, std::size_t& cells) {
  std::size_t length = 0;
  for (std::int32_t i = 0; i < control.GetChildNodeCount(parent); ++i) {
    TDataNode* node = control.GetChildNode(parent, i);
    length +=
        control.GetDisplayValue(node, kCellCaption).size() + control.GetDisplayValue(node, kCellValue).size();
    ++cells;
    length += ReadTexts(control, node, cells);
  }
  return length;
}

// The texts of every row of the three-level tree: every account column, ten currencies, each a row of its
// own.
void WholeTreeTexts(benchmark::State& state) {
  TReferenceHost host(MakeBenchBook(static_cast<std::size_t>(state.range(0)), 0), GetBenchOptions());
  const TColumnList columns = MakeAllAccountColumns();
  TBenchControl control;
  control.SetShow3LvInfo(true);
  control.SetColumnList(columns);
  control.SetAccount(TCode("M"));
  std::size_t rows = 0;
  for (auto _ : state) {
    rows = 0;
    benchmark::DoNotOptimize(ReadTexts(control, nullptr, rows));
  }
  state.counters["rows"] = static_cast<double>(rows);
}
BENCHMARK(WholeTreeTexts)->Arg(0)->Arg(10000)->Unit(benchmark::kMillisecond);

// The account is reported as loaded: the tree's currency rows are built anew.
void TreeRebuildOnAccountLoad(benchmark::State& state) {
  TReferenceHost host(MakeBenchBook(10, 0), GetBenchOptions());
  const TColumnList columns = MakeAllAccountColumns();
  TBenchControl control;
  control.SetShow3LvInfo(true);
  control.SetColumnList(columns);
  control.SetAccount(TCode("M"));
  TAccountMap loaded{{TCode("M"), host.Data().FindAccount(TCode("M"))}};
  for (auto _ : state) control.AccountInfoLoadUpdate(nullptr, &loaded);
}
BENCHMARK(TreeRebuildOnAccountLoad)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace margindesk
