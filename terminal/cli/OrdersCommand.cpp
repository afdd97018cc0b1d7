#include "terminal/cli/OrdersCommand.h"

#include <CLI/CLI.hpp>

#include "terminal/cli/AccountLookup.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/OrdersOutput.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

void TOrdersCommand::AddOptions(CLI::App& app) {
  app.add_option("ACCOUNT", FAccount, "The account's identifier")->required();
  app.add_option("--cancel", FCancel, "Cancel this order first, as far as it rests")
      ->option_text("ORDER")
      ->check([](const std::string& order) { return order.empty() ? "no order is named" : std::string(); });
  FFormat.AddTo(app);
}

int TOrdersCommand::Run(TSession& session, std::ostream& out) {
  TReferenceHost& host = session.Host();
  const TCode account = FindAccount(FAccount).GetAccountID();
  if (!FCancel.empty()) {
    const std::string refusal = host.Engine().Cancel(account, FCancel);
    if (!refusal.empty()) {
      session.Terminal().FErr << "margindesk: " << MakeOneLine(refusal) << '\n';
      return kExitRefused;
    }
  }
  std::vector<TOrderFacts> orders;
  for (const TOrderFacts* order : host.Data().GetOrders(account)) orders.push_back(*order);
  switch (FFormat.Get()) {
    case TOutputFormat::kText:
      WriteOrdersText(out, orders, session.Terminal());
      break;
    case TOutputFormat::kJson:
      WriteJson(out, {{"account", account.Text()}, {"orders", MakeOrdersJson(orders)}});
      break;
    case TOutputFormat::kCsv:
      WriteOrdersCsv(out, orders);
      break;
  }
  return kExitFine;
}

}  // namespace margindesk
