#pragma once

#include <vector>

#include "host/services/HostJournal.h"
#include "host/services/SubscriptionCount.h"
#include "terminal/cli/Json.h"

namespace margindesk {

// One object a request, its "kind" first; see docs/script.md.
TJson MakeJournalJson(const std::vector<TJournalEntry>& entries);
TJson MakeSubscriptionsJson(const std::vector<TSubscriptionCount>& subscriptions);

}  // namespace margindesk
