#pragma once

#include "terminal/cli/Command.h"
#include "terminal/cli/OutputFormat.h"

namespace margindesk {

// Lists the accounts of the book.
class TAccountsCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "accounts"; }
  std::string_view GetHelp() const override { return "List the accounts"; }
  void AddOptions(CLI::App& app) override { FFormat.AddTo(app); }
  int Run(TSession& session, std::ostream& out) override;

 private:
  TFormatOption FFormat;
};

}  // namespace margindesk
