#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/services/GlobalChannelManager.h"
#include "host/services/HostData.h"

namespace margindesk {

struct TOrderTakeActionRecord;

// The orders of one side and one currency.
struct TBatchTotal {
  std::string FSide;  // in the current language
  TCode FCurrency;    // empty for symbols that the market does not list
  double FAmount = 0;
  std::size_t FCount = 0;
  std::string FText;  // all of it on one line
};

// What is to be confirmed, as it stood when the question came up.
struct TBatchColumn {
  std::string FCaption;
  bool FNumeric = false;
};

struct TBatchQuestion {
  std::string FCaption;
  std::string FQuestion;
  std::int32_t FAction = 0;
  std::int32_t FViewID = 0;  // of the view that asks
  std::vector<TBatchColumn> FColumns;
  std::vector<std::vector<std::string>> FRows;  // a text for each column
  std::vector<TBatchTotal> FTotals;             // by the first order of their kind
};

// The batch confirmation (kMessageBatchConfirmation). It owns the orders of the message while the question
// stands and deletes them when it has been answered; whoever asked may be gone by then. A front answers;
// while none is installed the answer is no, because what has not been confirmed is not done.
class TBatchConfirmation {
 public:
  // True: the person confirms. It may run the loop, and so come to be asked again before it has answered.
  using TFront = std::function<bool(const TBatchQuestion& question)>;

  // Both must outlive it.
  TBatchConfirmation(TGlobalChannelManager& channels, const THostData& data);
  ~TBatchConfirmation();
  TBatchConfirmation(const TBatchConfirmation&) = delete;
  TBatchConfirmation& operator=(const TBatchConfirmation&) = delete;

  void SetFront(TFront front) { FFront = std::move(front); }  // an empty one takes it out

 private:
  void Respond(TOrderTakeActionRecord& record) const;

  TGlobalChannelManager& FChannels;
  const THostData& FData;
  TFront FFront;
};

}  // namespace margindesk
