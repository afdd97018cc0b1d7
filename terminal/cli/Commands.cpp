#include "terminal/cli/AccountCommand.h"
#include "terminal/cli/AccountsCommand.h"
#include "terminal/cli/BookCommands.h"
#include "terminal/cli/Command.h"
#include "terminal/cli/ConfigCommands.h"
#include "terminal/cli/ExplainCommand.h"
#include "terminal/cli/OrdersCommand.h"
#include "terminal/cli/PositionsCommand.h"
#include "terminal/cli/ScriptCommand.h"
#include "terminal/cli/SimulateCommand.h"

namespace margindesk {

std::vector<std::unique_ptr<TCommand>> CreateCommands() {
  std::vector<std::unique_ptr<TCommand>> commands;
  commands.push_back(std::make_unique<TAccountsCommand>());
  commands.push_back(std::make_unique<TAccountCommand>());
  commands.push_back(std::make_unique<TExplainCommand>());
  commands.push_back(std::make_unique<TPositionsCommand>());
  commands.push_back(std::make_unique<TOrdersCommand>());
  commands.push_back(std::make_unique<TSimulateCommand>());
  commands.push_back(std::make_unique<TScriptCommand>());
  commands.push_back(std::make_unique<TConfigGetCommand>());
  commands.push_back(std::make_unique<TConfigSetCommand>());
  commands.push_back(std::make_unique<TConfigListCommand>());
  commands.push_back(std::make_unique<TBookImportCommand>());
  commands.push_back(std::make_unique<TBookExportCommand>());
  commands.push_back(std::make_unique<TBookCheckCommand>());
  return commands;
}

}  // namespace margindesk
