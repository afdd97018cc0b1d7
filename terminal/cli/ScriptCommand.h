#pragma once

#include <optional>
#include <string>

#include "terminal/cli/Command.h"

namespace margindesk {

// Runs a script of steps against the views of the package, see docs/script.md.
//
// A script that runs twice should do the same twice. So it begins with an empty configuration and without
// workspaces, whose changes are gone when it ends, unless files are named for them; the user's own are not
// touched. The book is only read.
class TScriptCommand : public TCommand {
 public:
  std::string_view GetName() const override { return "script"; }
  std::string_view GetHelp() const override {
    return "Drive the views as a person would: a JSON step a line";
  }
  void AddOptions(CLI::App& app) override;
  bool IsStreaming() const override { return true; }
  int Run(TSession& session, std::ostream& out) override;

 private:
  bool RunSteps(TSession& session, std::istream& in, std::ostream& out, int& outputError);

  std::string FFile;
  std::optional<std::string> FWorkspaces;
  bool FStrict = false;
};

}  // namespace margindesk
