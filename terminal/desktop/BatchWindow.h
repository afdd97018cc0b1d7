#pragma once

#include <QWidget>

#include "host/services/BatchConfirmation.h"

namespace margindesk {

// Asks the person to confirm a batch of orders: the orders, their totals by side and currency, and two
// buttons of which the one that cancels is the default.
bool AskForBatch(const TBatchQuestion& question, QWidget* parent);

}  // namespace margindesk
