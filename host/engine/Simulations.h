#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/services/AccountAdapter.h"
#include "host/services/HostData.h"
#include "host/services/UiLoop.h"

namespace margindesk {

// The simulated figures that accounts hold for the views that asked for them. They are told in a later turn
// of the loop, and are dropped when whoever asked has a newer one, when nobody listens to the account's
// simulations any more, and when the book is read again.
class TSimulations {
 public:
  // All must outlive the object, and the loop must not run after it has gone.
  TSimulations(THostData& data, TAccountAdapter& accounts, TUiLoop& loop);
  ~TSimulations();
  TSimulations(const TSimulations&) = delete;
  TSimulations& operator=(const TSimulations&) = delete;

  // Publishes figures under a key, of one account and where it has one also of its linked account. Whoever
  // asks is known by an address, which is only ever compared.
  void Publish(const void* asker, TCode account, std::string key, std::vector<TFigureFacts> figures);

  void DropAll();

 private:
  struct TSimulation {
    const void* FAsker;
    TCode FAccount;  // that was simulated
    TCode FLinked;   // empty for none
    std::string FKey;
  };

  void Store(const TSimulation& simulation, const std::vector<TFigureFacts>& figures);
  template <class TWhich>
  void DropWhere(TWhich which);

  THostData& FData;
  TAccountAdapter& FAccounts;
  TUiLoop& FLoop;
  std::vector<TSimulation> FSimulations;  // in the order of publication
  std::size_t FReadings = 0;              // how often the book has been read again
};

}  // namespace margindesk
