#pragma once

#include <string>

#include "model/contract/BaseAccountData.h"
#include "model/contract/Code.h"
#include "terminal/cli/AccountOutput.h"

namespace margindesk {

// The host's account of that identifier. Throws TCliError when there is none.
const TCustomAccount& FindAccount(const std::string& account);

// The host's currency of that code, in any letter case. Throws TCliError when there is none.
TCode FindCurrency(const std::string& currency);

// The account's name, "" when it has none.
std::string GetAccountName(const TCustomAccount& account);

// How an account is to be shown, still without rows: converted into a currency (empty: the base currency),
// one currency alone (empty: all of them), a master together with its sub-accounts. Throws TCliError for what
// the host does not know, and for an account that has no sub-accounts to be summed.
TAccountView MakeAccountView(const TCustomAccount& account, const std::string& convert,
                             const std::string& filter, bool aggregate);

}  // namespace margindesk
