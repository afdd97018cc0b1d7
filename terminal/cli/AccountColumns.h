#pragma once

#include <string_view>

#include "model/contract/BaseAccountData.h"
#include "model/contract/ColumnInfo.h"

namespace margindesk {

// The columns that are configured for an account: those for its type (key "Stock_AccountInfoColumn" of the
// user's section for type "S", "Futures_AccountInfoColumn" for "F") where there are any, else those of
// "Default_AccountInfoColumn", else the built-in ones; then the custom columns.
TColumnList MakeConfiguredColumns(const TCustomAccount& account);

// The columns of a key list, old keys included and custom columns by their numbers; "all" for every account
// column of the catalogue and every custom column. Throws TCliError for an unknown key.
TColumnList MakeNamedColumns(std::string_view keys);

}  // namespace margindesk
