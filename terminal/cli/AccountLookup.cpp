#include "terminal/cli/AccountLookup.h"

#include "host/book/BookError.h"
#include "model/AccountInfoConstDef.h"
#include "model/ResourceText.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/CurrencyAdapter.h"
#include "terminal/session/CliError.h"

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

TAccountView MakeAccountView(const TCustomAccount& account, const std::string& convert,
                             const std::string& filter, bool aggregate) {
  TAccountView view;
  view.FAccount = account.GetAccountID();
  if (aggregate && !account.IsMasterAccount()) {
    throw TCliError("account " + QuotedForMessage(view.FAccount.Text()) +
                    " is no master account: nothing to aggregate");
  }
  view.FName = GetAccountName(account);
  view.FBase = TCustomCurrencyAdapter::GetInstance().GetBaseCurrency();
  view.FConvert = convert.empty() ? view.FBase : FindCurrency(convert);
  if (!filter.empty()) view.FFilter = FindCurrency(filter);
  view.FAggregated = aggregate;
  if (aggregate) {
    view.FFlags.push_back(GetResourceText(account.GetMasterType() == kMasterTypeConsolidated
                                              ? "Res_Aggregate_CrossOut"
                                              : "Res_Aggregate_NonCrossOut"));
  }
  return view;
}

}  // namespace margindesk
