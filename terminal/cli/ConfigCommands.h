#pragma once

#include <string>

#include "terminal/cli/Command.h"

namespace margindesk {

// Prints one value of the configuration; a key that is not set has the empty one.
class TConfigGetCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "config get"; }
  std::string_view GetHelp() const override { return "Print the value of a key; an empty line: not set"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FSection;
  std::string FKey;
};

// Stores one value; the empty one takes the key out.
class TConfigSetCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "config set"; }
  std::string_view GetHelp() const override { return "Set a key; an empty value takes it out"; }
  void AddOptions(CLI::App& app) override;
  int Run(TSession& session, std::ostream& out) override;

 private:
  std::string FSection;
  std::string FKey;
  std::string FValue;
};

// Prints everything that is set, section by section.
class TConfigListCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "config list"; }
  std::string_view GetHelp() const override { return "Print every key that is set"; }
  void AddOptions(CLI::App& /*app*/) override {}
  int Run(TSession& session, std::ostream& out) override;
};

}  // namespace margindesk
