#include "terminal/cli/SimulateCommand.h"

#include <CLI/CLI.hpp>

#include "terminal/cli/AccountColumns.h"
#include "terminal/cli/AccountLookup.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

void TSimulateCommand::AddOptions(CLI::App& app) {
  app.add_option("ACCOUNT", FAccount, "The account's identifier")->required();
  app.add_option("--orders", FOrders,
                 "The orders: CSV with the columns symbol, side, price, quantity and, where\n"
                 "wanted, openclose, principal, status; - for standard input")
      ->required()
      ->option_text("FILE");
  app.add_option("--columns", FColumns,
                 "The figures to show: column keys, as TradingLimit,MarginLevel\n"
                 "(default: the configured ones)")
      ->option_text("KEY,...|all");
  app.add_option("--convert", FConvert, "Show totals in this currency (default: the base currency)")
      ->option_text("CUR");
  app.add_flag("--submit", FSubmit, "Place the orders as well; needs --yes");
  app.add_flag("--yes", FYes, "Confirm the orders that --submit places");
  FFormat.AddTo(app);
}

int TSimulateCommand::Run(TSession& session, std::ostream& out) {
  if (FSubmit && !FYes) throw TCliError("--submit places orders: confirm them with --yes");
  if (FYes && !FSubmit) throw TCliError("--yes confirms nothing without --submit");
  TReferenceHost& host = session.Host();
  const TCustomAccount& account = FindAccount(FAccount);
  TSimulation simulation;
  simulation.FView = MakeAccountView(account, FConvert, "", false);
  simulation.FOrders = ReadOrdersFile(FOrders, session.Terminal().FIn);
  const TColumnList columns = FColumns ? MakeNamedColumns(*FColumns) : MakeConfiguredColumns(account);
  const std::size_t placedBefore = host.Data().GetOrders(account.GetAccountID()).size();

  TSimulatorDriver driver(session, simulation.FView.FAccount);
  TCustomAccountInfoDataControl& control = driver.Control();
  control.SetColumnList(columns);
  control.SetCurrency(simulation.FView.FConvert);
  simulation.FView.FRows = ReadAccountTree(control, columns);
  driver.TypeOrders(simulation.FOrders);
  simulation.FRefusal = driver.Simulate();
  if (!simulation.FRefusal) {
    simulation.FRows = CompareTrees(simulation.FView.FRows, ReadAccountTree(control, columns));
    simulation.FRefusal = driver.Submit(FSubmit);
  }
  const auto& orders = host.Data().GetOrders(account.GetAccountID());
  for (std::size_t i = placedBefore; i < orders.size(); ++i) simulation.FPlaced.push_back(*orders[i]);

  Write(session, out, simulation);
  if (!simulation.FRefusal) return kExitFine;
  session.Terminal().FErr << "margindesk: " << DescribeRefusal(simulation) << '\n';
  return kExitRefused;
}

void TSimulateCommand::Write(TSession& session, std::ostream& out, const TSimulation& simulation) const {
  switch (FFormat.Get()) {
    case TOutputFormat::kText:
      WriteSimulationText(out, simulation, session.Terminal());
      break;
    case TOutputFormat::kJson:
      WriteSimulationJson(out, simulation);
      break;
    case TOutputFormat::kCsv:
      WriteSimulationCsv(out, simulation);
      break;
  }
}

}  // namespace margindesk
