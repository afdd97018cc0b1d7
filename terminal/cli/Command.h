#pragma once

#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace margindesk {

class TSession;

// One command of the command line.
class TCommand {
 public:
  TCommand() = default;
  virtual ~TCommand() = default;
  TCommand(const TCommand&) = delete;
  TCommand& operator=(const TCommand&) = delete;

  virtual std::string_view GetName() const = 0;  // the words that call it: "account", "book import"
  virtual std::string_view GetHelp() const = 0;  // one sentence
  virtual void AddOptions(CLI::App& app) = 0;    // bound to this object, which outlives the parsing

  // Whether what it writes is shown at once, for a command whose reader answers it.
  virtual bool IsStreaming() const { return false; }

  // Does the work and gives the exit code. What it writes to `out` is shown when it returns, and not at all
  // when it throws, unless it streams. A stream that takes no more is no fault of the command's: it ends, and
  // leaves the reason in errno. TCliError and the errors of the book, the configuration and the language
  // files are the user's, any other is a failure of the program.
  virtual int Run(TSession& session, std::ostream& out) = 0;
};

// Every command, in the order of the help.
std::vector<std::unique_ptr<TCommand>> CreateCommands();

}  // namespace margindesk
