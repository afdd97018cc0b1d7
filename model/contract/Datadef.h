#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/contract/Handlers.h"

namespace margindesk {

class TComponent;
class TControl;
class TCustomDataControl;

// Records that travel with TCustomGlobalChannelManager::SendChannelMessage. The sender owns the record; the
// host may write its answer into it before the call returns.

// kMessageBatchConfirmation: the orders about to be sent.
struct TOrderTakeActionRecord {
  TCustomDataControl* FDataControl = nullptr;  // passes to the host with the message
  std::int32_t FAction = 0;
  std::int32_t FViewID = 0;  // of the view that asks
  bool FResult = false;      // set by the host when the user confirms
};

// kMessageCustomColumns: the columns of a view and which of them are shown. The host calls FCallback, once or
// not at all, before the message returns.
struct TCustomColumnRecord {
  std::vector<std::string> FAllCaptions;         // in list order
  std::vector<std::string> FVisibleCaptions;     // in list order
  std::array<std::string, 1> FReservedCaptions;  // cannot be hidden; empty for none
  THandler FCallback;                            // data: TCustomColumnResult*
};

// What the column dialog hands to the callback.
struct TCustomColumnResult {
  std::vector<std::string> FOrder;    // all captions in the chosen order
  std::vector<std::string> FVisible;  // those to be shown
};

// kMessageSymbolList: the host makes its symbol list panel. FSelect is called for as long as the panel lives.
struct TSymbolListRecord {
  THandler FSelect;              // data: TCustomMarketData* of the chosen symbol, or null
  TComponent* FOwner = nullptr;  // the frame that asks: the panel belongs to it and goes with it
  TControl* FControl = nullptr;  // answered by the host
};

// kMessageMoreInfo: the account's more-information page.
struct TWebViewRecord {
  std::string FAccount;
  std::string FSender;     // the sending frame's identity in decimal digits
  std::int32_t FMode = 0;  // 1 the account changed, 2 open the page, 3 the frame is going
  std::string FAddress;
  std::string FTitle;
};

}  // namespace margindesk
