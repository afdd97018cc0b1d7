// The desktop under load: how long the pointer and the keys wait for their picture while prices keep coming,
// what that costs, how soon the terminal is there and how much memory it takes.
#include <QAbstractItemView>
#include <QDockWidget>
#include <QEventLoop>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include <sys/resource.h>

#include "bench/BenchBook.h"
#include "bench/DesktopPerson.h"
#include "bench/DesktopStart.h"
#include "model/AccountInfoConstDef.h"
#include "terminal/desktop/Dialogs.h"
#include "terminal/desktop/FirstSettings.h"
#include "terminal/desktop/LoopPump.h"
#include "terminal/desktop/MainWindow.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {
namespace {

constexpr std::size_t kPositions = 10'000;
constexpr int kPricesPerSecond = 1'000;
constexpr std::chrono::seconds kWarmUp{2};
constexpr int kStarts = 5;

constexpr double kMostWait = 50;        // milliseconds, of 99 deeds in 100
constexpr double kMostCpu = 50;         // percent of a core
constexpr double kMostStart = 500;      // milliseconds
constexpr double kMostMegabytes = 150;  // resident

bool allHeld = true;

// One line of the report; `most` is the limit, 0 for none.
void Tell(const char* what, double value, const char* unit, double most = 0) {
  if (most == 0) {
    std::printf("%-58s %8.1f %s\n", what, value, unit);
  } else {
    const bool held = value < most;
    allHeld = allHeld && held;
    std::printf("%-58s %8.1f %-3s under %.0f wanted: %s\n", what, value, unit, most, held ? "yes" : "NO");
  }
  std::fflush(stdout);
}

double GetCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void Wait(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, &loop, &QEventLoop::quit);
  loop.exec();
}

// Prices that come from another thread, as from a line: one every millisecond, of a symbol at random.
class TPriceLine {
 public:
  TPriceLine(TReferenceHost& host, std::vector<std::pair<TCode, TPriceFacts>> prices)
      : FHost(host), FPrices(std::move(prices)), FThread([this] { Send(); }) {}
  ~TPriceLine() {
    FEnough = true;
    FThread.join();
  }
  TPriceLine(const TPriceLine&) = delete;
  TPriceLine& operator=(const TPriceLine&) = delete;

  int GetTaken() const noexcept { return FTaken; }  // by the host so far

 private:
  void Send() {
    std::mt19937 random(1);
    auto next = TBenchClock::now();
    for (int i = 0; !FEnough; ++i) {
      const auto& [symbol, first] = FPrices[random() % FPrices.size()];
      TPriceFacts prices = first;
      prices.FLast += 0.01 * static_cast<double>(i % 100);
      FHost.Loop().Post([this, symbol = symbol, prices] {
        FHost.Data().SetPrice(symbol, prices);
        ++FTaken;
      });
      next += std::chrono::microseconds(1'000'000 / kPricesPerSecond);
      std::this_thread::sleep_until(next);
    }
  }

  TReferenceHost& FHost;
  const std::vector<std::pair<TCode, TPriceFacts>> FPrices;
  int FTaken = 0;
  std::atomic<bool> FEnough = false;
  std::thread FThread;
};

void TellWaits(TMeasuringApplication& application) {
  std::vector<double> all;
  const auto tell = [](const char* what, std::vector<double>& times) {
    std::ranges::sort(times);
    const auto part = [&](std::size_t hundredths) { return times[(times.size() - 1) * hundredths / 100]; };
    std::printf("%-58s p50 %.1f  p99 %.1f  max %.1f ms, of %zu\n", what, part(50), part(99), times.back(),
                times.size());
    return part(99);
  };
  constexpr std::pair<TDeed, const char*> kDeeds[] = {{TDeed::Move, "pointer moved until painted"},
                                                      {TDeed::Click, "clicked until painted"},
                                                      {TDeed::Key, "arrow key until painted"}};
  for (const auto& [deed, name] : kDeeds) {
    std::vector<double> times = application.TakeTimes(deed);
    if (times.empty()) continue;
    tell(name, times);
    all.insert(all.end(), times.begin(), times.end());
  }
  if (all.empty()) {
    allHeld = false;
    std::puts("nothing was painted");
    return;
  }
  Tell("all of them, 99th percentile", tell("all of them", all), "ms", kMostWait);
}

// Every figure that the tree can show, instead of the few of a first start.
void ChooseAllFigures(TConfigManager& config) {
  std::string keys;
  for (const TCatalogueRow& row : GetCatalogue()) {
    if (IsAccountColumn(row)) keys.append(keys.empty() ? "" : ",").append(row.FKey);
  }
  config.WriteString(config.GetUserSection(), "Default_AccountInfoColumn", keys, false);
}

int CountRows(const QAbstractItemModel& model, const QModelIndex& parent = {}) {
  const int count = model.rowCount(parent);
  int all = count;
  for (int row = 0; row < count; ++row) all += CountRows(model, model.index(row, 0, parent));
  return all;
}

// The heaviest that the view can be: all figures, every row open, the grid sorted by a figure that moves.
void MeasureLoad(TMeasuringApplication& application, std::chrono::seconds time) {
  const QTemporaryDir folder;
  const std::filesystem::path place = folder.path().toStdString();
  TReferenceHostOptions options = GetBenchOptions();
  options.FConfigFile = place / "config.db";
  options.FWorkspaceFolder = place / "workspaces";
  std::vector<std::pair<TCode, TPriceFacts>> prices;
  const auto host = [&] {
    const THostContents contents = MakeBenchBook(kPositions, 0);
    prices = contents.FPrices;
    return std::make_unique<TReferenceHost>(contents, options);
  }();
  WriteFirstSettings(host->Config(), MARGINDESK_SOURCE_DIR "/resources");
  ChooseAllFigures(host->Config());
  const TLoopPump pump(host->Loop());
  const TDialogs dialogs(*host);
  TPackages packages(*host);
  if (const std::string refusal = packages.Load(MARGINDESK_PACKAGE_FILE); !refusal.empty()) {
    std::fprintf(stderr, "desktop_bench: %s\n", refusal.c_str());
    std::exit(2);
  }
  ApplySkin(application, "Light", 100);
  TMainWindow window(*host, packages);
  window.Restore("M");
  window.show();
  Wait(kWarmUp);
  std::vector<QAbstractItemView*> seen;
  for (auto* view : window.findChildren<QAbstractItemView*>()) {
    if (!view->isVisible() || qobject_cast<QHeaderView*>(view) != nullptr) continue;
    seen.push_back(view);
    if (auto* tree = qobject_cast<QTreeView*>(view)) {
      tree->expandAll();
    } else {
      view->model()->sort(view->model()->columnCount() - 1, Qt::DescendingOrder);
    }
    std::printf("%s %d\n",
                qobject_cast<QTreeView*>(view) != nullptr ? "open rows of the tree" : "rows of the grid",
                CountRows(*view->model()));
  }

  const auto measure = [&](const char* cpuLine) {
    const double cpuBefore = GetCpuSeconds();
    const auto start = TBenchClock::now();
    Wait(time);
    const std::chrono::duration<double> took = TBenchClock::now() - start;
    Tell(cpuLine, (GetCpuSeconds() - cpuBefore) / took.count() * 100, "%", kMostCpu);
    return took.count();
  };
  {
    const TPriceLine line(*host, prices);
    Wait(kWarmUp);
    measure("prices alone, of one core");
    const TPerson person(seen);
    Wait(kWarmUp);
    for (const TDeed deed : {TDeed::Move, TDeed::Click, TDeed::Key}) application.TakeTimes(deed);
    const int taken = line.GetTaken();
    const double took = measure("prices and a person, of one core");
    Tell("prices taken in", (line.GetTaken() - taken) / took, "a second");
    TellWaits(application);
  }
  Tell("resident with 10,000 positions", GetResidentMegabytes(), "MB", kMostMegabytes);
}

void MeasureStarts() {
  const QTemporaryDir folder;
  std::vector<double> times;
  for (int i = 0; i <= kStarts; ++i) {
    const std::optional<TStart> start = MeasureStart(folder.path().toStdString());
    if (!start) {
      allHeld = false;
      std::puts("the desktop did not start");
      return;
    }
    if (i == 0) {
      Tell("very first start, the demo book is made", start->FMilliseconds, "ms");
      continue;
    }
    times.push_back(start->FMilliseconds);
    if (i < kStarts) continue;
    std::ranges::sort(times);
    Tell("start until painted with the demo book, median of 5", times[kStarts / 2], "ms", kMostStart);
    Tell("the slowest of them", times.back(), "ms");
    Tell("resident with the demo book", start->FMegabytes, "MB", kMostMegabytes);
  }
}

// What a screen that is none complains of is no news.
void DropMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (text.startsWith(u"This plugin does not support")) return;
  if (type != QtDebugMsg) std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

// desktop_bench [SECONDS]: how long to measure the load; 10 unless told.
int Run(int argc, char** argv) {
  if (const std::optional<int> started = RunStarted(argc, argv)) return *started;
  qInstallMessageHandler(&DropMessage);
  TMeasuringApplication application(argc, argv);
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 10;
  if (seconds < 1) {
    std::fprintf(stderr, "usage: desktop_bench [SECONDS]\n");
    return 2;
  }
  std::printf("screen: %s\n", qPrintable(QGuiApplication::platformName()));
  MeasureStarts();
  MeasureLoad(application, std::chrono::seconds(seconds));
  return allHeld ? 0 : 1;
}

}  // namespace
}  // namespace margindesk

int main(int argc, char** argv) { return margindesk::Run(argc, argv); }
