#pragma once

#include <optional>
#include <string>

#include "terminal/cli/Command.h"
#include "terminal/cli/OutputFormat.h"
#include "terminal/cli/SimulationOutput.h"

namespace margindesk {

// Shows an account's figures as they would be after a file of orders, and places the orders where asked to.
class TSimulateCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "simulate"; }
  std::string_view GetHelp() const override {
    return "Show an account's figures as they would be after a file of orders; place these where asked to";
  }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  void Write(TSession& session, std::ostream& out, const TSimulation& simulation) const;

  std::string FAccount;
  std::string FOrders;
  std::optional<std::string> FColumns;
  std::string FConvert;  // empty: the base currency
  bool FSubmit = false;
  bool FYes = false;
  TFormatOption FFormat;
};

}  // namespace margindesk
