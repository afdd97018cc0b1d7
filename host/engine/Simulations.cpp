#include "host/engine/Simulations.h"

#include <algorithm>
#include <utility>

namespace margindesk {

namespace {

// Kept for every listener: what its view shows and the one before, which a view that was refused a newer one
// goes on showing.
constexpr std::size_t kKeptPerListener = 2;

}  // namespace

TSimulations::TSimulations(THostData& data, TAccountAdapter& accounts, TUiLoop& loop)
    : FData(data), FAccounts(accounts), FLoop(loop) {
  FAccounts.SetSimulateListenersGone([this](TCode account) { DropOf(account, 0); });
}

TSimulations::~TSimulations() { FAccounts.SetSimulateListenersGone({}); }

void TSimulations::Publish(TCode account, std::string key, std::vector<TFigureFacts> figures) {
  FLoop.Post([this, account, key = std::move(key), figures = std::move(figures), readings = FReadings] {
    const std::size_t listeners = FAccounts.CountSimulateListeners(account);
    // The book, the account or whoever asked may have gone meanwhile.
    if (readings != FReadings || FData.FindAccount(account) == nullptr || listeners == 0) return;
    Store(account, key, figures);
    DropOf(account, kKeptPerListener * listeners);
    FAccounts.PublishSimulation(account);
  });
}

void TSimulations::Store(TCode account, const std::string& key, const std::vector<TFigureFacts>& figures) {
  static const TCode mainland("CNY");
  TSimulation simulation{account, TCode(), key};
  std::vector<TFigureFacts> own;
  std::vector<TFigureFacts> linked;
  for (const TFigureFacts& facts : figures) (facts.FAccount == account ? own : linked).push_back(facts);
  if (!linked.empty()) {
    simulation.FLinked = linked.front().FAccount;
    // The account's mainland side shows the linked account's figures.
    const auto side = std::ranges::find(linked, mainland, &TFigureFacts::FCurrency);
    std::erase_if(own, [](const TFigureFacts& facts) { return facts.FCurrency == mainland; });
    if (side != linked.end()) own.push_back(*side);
    FData.SetSimulation(simulation.FLinked, key, linked);
  }
  FData.SetSimulation(account, key, own);
  std::erase_if(FSimulations,
                [&](const TSimulation& other) { return other.FAccount == account && other.FKey == key; });
  FSimulations.push_back(std::move(simulation));
}

void TSimulations::DropOf(TCode account, std::size_t keep) {
  auto left = static_cast<std::size_t>(std::ranges::count(FSimulations, account, &TSimulation::FAccount));
  std::erase_if(FSimulations, [&](const TSimulation& simulation) {
    if (simulation.FAccount != account || left <= keep) return false;
    --left;
    Drop(simulation);
    return true;
  });
}

void TSimulations::Drop(const TSimulation& simulation) {
  FData.RemoveSimulation(simulation.FAccount, simulation.FKey);
  if (!simulation.FLinked.IsEmpty()) FData.RemoveSimulation(simulation.FLinked, simulation.FKey);
}

void TSimulations::DropAll() {
  ++FReadings;
  for (const TSimulation& simulation : FSimulations) Drop(simulation);
  FSimulations.clear();
}

}  // namespace margindesk
