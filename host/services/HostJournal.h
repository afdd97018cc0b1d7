#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "model/contract/Baseview.h"
#include "model/contract/Code.h"

namespace margindesk {

class TReferenceHost;

// A frame told the host that its state changed (SendViewNotify).
struct TViewNotice {
  TViewHandle FView = 0;  // 0: the frame is not open yet, so nobody hears it
  std::int32_t FCode = 0;
};

struct TShownMessage {
  std::string FText;
};

struct TAskedQuestion {
  std::string FText;
  bool FYes = false;  // how it was answered
};

// PostChannelData.
struct TChannelPost {
  std::int32_t FChannel = 0;
  std::string FText;
  std::int64_t FValue = 0;
};

// SendChannelMessage. Which fields count depends on the message; the record is as it was sent.
struct TChannelMessage {
  std::int32_t FMessage = 0;
  std::string FAccount;  // kMessageMoreInfo, with the two below
  std::int32_t FMode = 0;
  std::string FAddress;
  std::vector<std::string> FAllCaptions;  // kMessageCustomColumns, with the one below
  std::vector<std::string> FVisibleCaptions;
  std::vector<std::vector<std::string>> FOrders;  // kMessageBatchConfirmation: a text for each column
};

// OpenCustomView, with the account and the symbol of the order that came with it, if one did.
struct TViewRequest {
  std::int32_t FViewID = 0;
  TCode FAccount;
  TCode FSymbol;
  bool FOpened = false;
};

// CheckOrderAction, or TakeOrderAction where FTaken says so.
struct TOrderRequest {
  bool FTaken = false;
  std::int32_t FAction = 0;
  TCode FAccount;
  TCode FSymbol;
  std::int32_t FSide = 0;
  double FQuantity = 0;
  double FPrice = 0;
  std::string FOrderType;  // "Market", or empty
  bool FAccepted = false;  // what the host answered
};

using TJournalEntry = std::variant<TViewNotice, TShownMessage, TAskedQuestion, TChannelPost, TChannelMessage,
                                   TViewRequest, TOrderRequest>;

// Keeps what packages ask of a host, in the order in which they asked, until somebody takes it. A request
// that led to others stands before them.
//
// The journal stands in front of the services that were installed when it was made, whoever's they are, and
// hands everything on to them; without one, nothing is spent. It goes before those services and before the
// host. TReferenceHost::GetSubscriptions answers what is registered besides. Not to be made or to go while a
// package is calling the host.
class THostJournal {
 public:
  explicit THostJournal(TReferenceHost& host);
  ~THostJournal();
  THostJournal(const THostJournal&) = delete;
  THostJournal& operator=(const THostJournal&) = delete;

  // What has come since the last call. Taken inside a request, that request is still without its answer.
  std::vector<TJournalEntry> Take();

 private:
  struct TServices;

  std::unique_ptr<TServices> FServices;
};

}  // namespace margindesk
