#pragma once

#include <string>

#include "terminal/cli/Command.h"

namespace margindesk {

// Shows how a figure of an account comes about.
class TExplainCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "explain"; }
  std::string_view GetHelp() const override {
    return "Show how a figure of an account comes about: its formula and the values that went into it";
  }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FAccount;
  std::string FField;
  std::string FConvert;  // empty: the base currency
  std::string FFilter;   // empty: every currency
  bool FAggregate = false;
  std::string FFormat = "text";
};

}  // namespace margindesk
