#include "host/engine/Simulations.h"

#include <utility>

namespace margindesk {

TSimulations::TSimulations(THostData& data, TAccountAdapter& accounts, TUiLoop& loop)
    : FData(data), FAccounts(accounts), FLoop(loop) {
  FAccounts.SetSimulateListenersGone([this](TCode account) {
    DropWhere([account](const TSimulation& simulation) { return simulation.FAccount == account; });
  });
}

TSimulations::~TSimulations() { FAccounts.SetSimulateListenersGone({}); }

void TSimulations::Publish(const void* asker, TCode account, std::string key,
                           std::vector<TFigureFacts> figures) {
  TSimulation simulation{asker, account, TCode(), std::move(key)};
  FLoop.Post([this, simulation = std::move(simulation), figures = std::move(figures), readings = FReadings] {
    // The book, the account or whoever asked may have gone meanwhile.
    if (readings != FReadings || FData.FindAccount(simulation.FAccount) == nullptr) return;
    if (FAccounts.CountSimulateListeners(simulation.FAccount) == 0) return;
    Store(simulation, figures);
    FAccounts.PublishSimulation(simulation.FAccount);
  });
}

void TSimulations::Store(const TSimulation& asked, const std::vector<TFigureFacts>& figures) {
  TSimulation simulation = asked;
  DropWhere([&](const TSimulation& other) {
    return other.FAsker == simulation.FAsker ||
           (other.FAccount == simulation.FAccount && other.FKey == simulation.FKey);
  });
  std::vector<TFigureFacts> own;
  std::vector<TFigureFacts> linked;
  for (const TFigureFacts& facts : figures) {
    (facts.FAccount == simulation.FAccount ? own : linked).push_back(facts);
  }
  if (!linked.empty()) {
    simulation.FLinked = linked.front().FAccount;
    FData.SetSimulation(simulation.FLinked, simulation.FKey, linked);
  }
  FData.SetSimulation(simulation.FAccount, simulation.FKey, own);
  FSimulations.push_back(std::move(simulation));
}

template <class TWhich>
void TSimulations::DropWhere(TWhich which) {
  std::erase_if(FSimulations, [&](const TSimulation& simulation) {
    if (!which(simulation)) return false;
    FData.RemoveSimulation(simulation.FAccount, simulation.FKey);
    if (!simulation.FLinked.IsEmpty()) FData.RemoveSimulation(simulation.FLinked, simulation.FKey);
    return true;
  });
}

void TSimulations::DropAll() {
  ++FReadings;
  DropWhere([](const TSimulation& /*simulation*/) { return true; });
}

}  // namespace margindesk
