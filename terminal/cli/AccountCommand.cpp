#include "terminal/cli/AccountCommand.h"

#include <CLI/CLI.hpp>

#include "model/ResourceText.h"
#include "terminal/cli/AccountColumns.h"
#include "terminal/cli/AccountLookup.h"
#include "terminal/cli/AccountOutput.h"
#include "terminal/cli/OpenedView.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

// Bits of TCustomAccount::GetStatusFlags.
constexpr std::int32_t kAccountSuspended = 1024;
constexpr std::int32_t kAccountSellOnly = 2048;

void AddStatus(const TCustomAccount& account, std::vector<std::string>& flags) {
  const std::int32_t status = account.GetStatusFlags();
  if ((status & kAccountSuspended) != 0) flags.push_back(GetResourceText("Res_AcctStatus_Suspend"));
  if ((status & kAccountSellOnly) != 0) flags.push_back(GetResourceText("Res_AcctStatus_Sell"));
}

}  // namespace

void TAccountCommand::AddOptions(CLI::App& app) {
  app.add_option("ACCOUNT", FAccount, "The account's identifier")->required();
  app.add_option("--columns", FColumns,
                 "The figures to show: column keys, as TradingLimit,MarginLevel\n"
                 "(default: the configured ones)")
      ->option_text("KEY,...|all");
  app.add_option("--convert", FConvert, "Show totals in this currency (default: the base currency)")
      ->option_text("CUR");
  app.add_option("--filter", FFilter, "Show this currency alone")->option_text("CUR");
  app.add_flag("--aggregate", FAggregate, "Show a master account together with its sub-accounts");
  app.add_option("--layout", FLayout,
                 "3: the currencies stand under the total that holds them;\n"
                 "2: every currency is a row of its own\n"
                 "(default: 3, or 2 where AcctInfoShow3LvInfo is configured as N)")
      ->option_text("3|2")
      ->check(CLI::IsMember({"3", "2"}));
  FFormat.AddTo(app);
}

std::optional<bool> TAccountCommand::IsThreeLevels() const {
  if (FLayout.empty()) return std::nullopt;
  return FLayout == "3";
}

int TAccountCommand::Run(TSession& session, std::ostream& out) {
  session.Host();
  const TCustomAccount& account = FindAccount(FAccount);
  TAccountView view = MakeAccountView(account, FConvert, FFilter, FAggregate);
  AddStatus(account, view.FFlags);
  const TColumnList columns = FColumns ? MakeNamedColumns(*FColumns) : MakeConfiguredColumns(account);

  TOpenedView(session, "TIAccountInfo", IsThreeLevels()).Read(columns, view);

  switch (FFormat.Get()) {
    case TOutputFormat::kText:
      WriteAccountText(out, view, session.Terminal().FColour);
      break;
    case TOutputFormat::kJson:
      WriteAccountJson(out, view);
      break;
    case TOutputFormat::kCsv:
      WriteAccountCsv(out, view);
      break;
  }
  return kExitFine;
}

}  // namespace margindesk
