#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/contract/BaseAccountData.h"
#include "terminal/cli/Command.h"
#include "terminal/cli/OutputFormat.h"

namespace margindesk {

// Shows the tree of an account's figures.
class TAccountCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "account"; }
  std::string_view GetHelp() const override { return "Show an account's figures, in total and by currency"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::optional<bool> IsThreeLevels() const;

  std::string FAccount;
  std::optional<std::string> FColumns;  // none: the configured ones
  std::string FConvert;                 // empty: the base currency
  std::string FFilter;                  // empty: every currency
  bool FAggregate = false;
  std::string FLayout;  // empty: the configured one
  TFormatOption FFormat;
};

}  // namespace margindesk
