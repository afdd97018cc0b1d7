#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/engine/Ledger.h"
#include "host/engine/Simulations.h"
#include "model/contract/BaseOrderData.h"

namespace margindesk {

// Checks, places, matches and simulates orders. What an order does is one change of the book; the host's data
// changes when the book has taken it, and is published as every change is. Refusals are texts in the current
// language, "" for none; nothing has changed then.
class TOrderEngine {
 public:
  // Has a change on the disk when it returns; throws TBookError when it cannot. None: there is no book.
  using TBookWriter = std::function<void(const TBookChange& change)>;
  using TClock = std::function<std::chrono::system_clock::time_point()>;

  // Data, accounts and loop must outlive the engine.
  TOrderEngine(THostData& data, TAccountAdapter& accounts, TUiLoop& loop, TBookWriter writer, TClock clock);

  // Whether an order could be placed now with an action of kActionOrder, kActionOTCFund and kActionOTCBond.
  std::string Check(const TCustomClientOrder& order, std::int32_t action) const;

  // Places an order after checking it once more, and gives it its identifier. An order that the market takes
  // now is filled at the market's price, any other rests. An order that has an identifier was placed before
  // and is refused.
  std::string Place(TCustomClientOrder& order, std::int32_t action);

  // Simulates orders on the carrier's account: completed ones as filled at their price, the rest as resting,
  // in the order of the list; a price of 0 is the market's. The carrier gets the key of the simulation, and
  // the figures follow in a later turn of the loop (TCustomAccount::GetSimulatedAccountData). The account,
  // its positions and the book stay as they are.
  std::string Simulate(const TClientOrderList* orders, TCustomClientOrder& carrier);

  // Cancels a resting order of the account.
  std::string Cancel(TCode account, std::string_view orderID);

  // Fills the resting orders in these symbols that the market takes now: of each side the better price first,
  // and of one price the one that was entered first. An order that the book does not take goes on resting and
  // is tried again with the next price.
  void Match(const TCodeSet& symbols);

  // The book has been read again: no simulation is of this book.
  void DropSimulations() { FSimulations.DropAll(); }

 private:
  // Fills an order, which no longer holds anything. False: the book has not taken it.
  bool Fill(TLedger& ledger, TOrderFacts order, double price);
  bool Book(const TLedger& ledger, const TOrderFacts& order, const TFillFacts* fill);
  void TellBookFault();
  std::string NextOrderID();
  std::string FormatNow() const;

  THostData& FData;
  TSimulations FSimulations;
  const TBookWriter FWriter;
  const TClock FClock;
  std::uint64_t FLastOrder = 0;
  std::string FBookFault;       // of the last booking; "" when it went well
  bool FToldBookFault = false;  // since a booking last went well
};

}  // namespace margindesk
