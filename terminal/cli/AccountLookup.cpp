#include "terminal/cli/AccountLookup.h"

#include "host/book/BookError.h"
#include "model/AccountInfoConstDef.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/CurrencyAdapter.h"
#include "terminal/cli/CliError.h"

namespace margindesk {

const TCustomAccount& FindAccount(const std::string& account) {
  const TCustomAccount* found = TCustomAccountAdapter::GetInstance().GetAccount(TCode(account));
  if (found == nullptr) {
    throw TCliError("unknown account " + QuotedForMessage(account) + "; \"accounts\" lists them");
  }
  return *found;
}

TCode FindCurrency(const std::string& currency) {
  const auto& currencies = TCustomCurrencyAdapter::GetInstance();
  const TCode wanted(currency);
  std::string known;
  for (std::int32_t i = 0; i < currencies.GetCurrencyCount(); ++i) {
    const TCode code = currencies.GetCurrencyCode(i);
    if (code.SameText(wanted)) return code;
    known.append(i > 0 ? ", " : "").append(code.Text());
  }
  throw TCliError("unknown currency " + QuotedForMessage(currency) + "; the book has " + known);
}

std::string GetAccountName(const TCustomAccount& account) { return account.GetDataString(kFieldAccountName); }

}  // namespace margindesk
