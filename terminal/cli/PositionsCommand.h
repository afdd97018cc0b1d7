#pragma once

#include <string>

#include "terminal/cli/Command.h"
#include "terminal/cli/OutputFormat.h"

namespace margindesk {

// Lists an account's positions. Quantities are in units, amounts in the product's currency.
class TPositionsCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "positions"; }
  std::string_view GetHelp() const override { return "List an account's positions"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FAccount;
  TFormatOption FFormat;
};

}  // namespace margindesk
