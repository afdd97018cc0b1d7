#pragma once

#include <string>

#include "model/contract/BaseAccountData.h"
#include "model/contract/Code.h"

namespace margindesk {

// The host's account of that identifier. Throws TCliError when there is none.
const TCustomAccount& FindAccount(const std::string& account);

// The host's currency of that code, in any letter case. Throws TCliError when there is none.
TCode FindCurrency(const std::string& currency);

// The account's name, "" when it has none.
std::string GetAccountName(const TCustomAccount& account);

}  // namespace margindesk
