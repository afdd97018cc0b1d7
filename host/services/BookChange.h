#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/services/HostContents.h"

namespace margindesk {

class TBook;

// What one booking changes in a book: rows to be put in the place of those with the same key, or added, and
// positions that go.
struct TBookChange {
  std::vector<TFigureFacts> FFigures;       // without the custom figures, which stay as they are
  std::vector<TFigureFacts> FConsolidated;  // likewise
  std::vector<TPositionFacts> FPositions;
  std::vector<std::pair<TCode, std::string>> FRemovedPositions;  // account and key; gone already is no fault
  std::vector<TOrderFacts> FOrders;
  std::vector<TFillFacts> FFills;
};

// Writes the change as one transaction: when it returns, the whole of it is on the disk and survives a crash.
// Throws TBookError, and leaves the book as it was, when a value is not allowed, a reference is unknown or
// the book cannot be written; TBookChangedError when another program has written to it since it was read.
void WriteBookChange(TBook& book, const TBookChange& change);

}  // namespace margindesk
