#pragma once

#include <string>

#include "terminal/cli/Command.h"
#include "terminal/cli/OutputFormat.h"

namespace margindesk {

// Lists the orders of an account.
class TOrdersCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "orders"; }
  std::string_view GetHelp() const override {
    return "List the orders that an account has placed; cancel one";
  }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FAccount;
  std::string FCancel;  // empty: none
  TFormatOption FFormat;
};

}  // namespace margindesk
