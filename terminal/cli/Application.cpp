#include "terminal/cli/Application.h"

#include <algorithm>
#include <cerrno>
#include <locale>
#include <map>
#include <optional>
#include <sstream>

#include <CLI/CLI.hpp>

#include "host/book/BookError.h"
#include "host/services/ConfigStore.h"
#include "host/services/LanguageFile.h"
#include "host/services/LanguageManager.h"
#include "terminal/cli/Command.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

// The first words of commands that have two.
const std::map<std::string, std::string_view, std::less<>> kGroups = {
    {"book", "Bring a back-office book in and out, and check it"},
    {"config", "Read and change the configuration"},
};

// The command line as the parser knows it, with a parser for each command.
class TCommandLine {
 public:
  TCommandLine() : FCommands(CreateCommands()) {
    FApp.set_help_flag("-h,--help", "Print this help");
    FApp.set_version_flag("--version", "margindesk " MARGINDESK_VERSION, "Print the version");
    FApp.add_option("--book", FBook, "The back-office book (default: the user's own)")->option_text("FILE");
    FApp.add_option("--config", FConfig, "The configuration (default: the user's own)")->option_text("FILE");
    FApp.add_option("--lang", FLanguage, "The language of captions (default: ENG)")
        ->option_text("ENG|CHS|ZHH")
        ->check(CLI::IsMember({"ENG", "CHS", "ZHH"}, CLI::ignore_case));
    const auto formatter = FApp.get_formatter();
    formatter->label("SUBCOMMAND", "COMMAND");
    formatter->label("Positionals", "Arguments");
    formatter->label("TEXT", "");
    formatter->label("REQUIRED", "");
    FApp.require_subcommand(0, 1);
    for (const auto& command : FCommands) AddCommand(*command);
    FApp.footer(
        "The user's own book is $XDG_DATA_HOME/margindesk/book.db (~/.local/share/...), made from the\n"
        "demo book when it is first used; the configuration is $XDG_CONFIG_HOME/margindesk/config.db\n"
        "(~/.config/...). \"margindesk COMMAND --help\" tells more of a command.");
  }

  // Throws what the parser throws; help and version are such throws too.
  void Parse(std::vector<std::string> arguments) {
    std::ranges::reverse(arguments);
    FApp.parse(std::move(arguments));
  }

  // The command that was called, null when none was.
  TCommand* GetCalled() const {
    const CLI::App* called = &FApp;
    while (!called->get_subcommands().empty()) called = called->get_subcommands().front();
    const auto found = FByApp.find(called);
    return found == FByApp.end() ? nullptr : found->second;
  }

  // What is wrong with the words that no command took, or with there being none.
  std::string GetComplaint() const {
    const std::vector<std::string> words = FApp.remaining(true);
    const auto groups = FApp.get_subcommands();
    const std::string group = groups.empty() ? "" : groups.front()->get_name() + " ";
    const std::string hint = "; see \"margindesk " + group + "--help\"";
    if (words.empty()) return "no command given" + hint;
    const std::string& word = words.front();
    if (word.starts_with('-')) return "unknown option " + QuotedForMessage(word) + hint;
    if (GetCalled() != nullptr) return "unexpected argument " + QuotedForMessage(word) + hint;
    return "unknown command " + QuotedForMessage(group + word) + hint;
  }

  TSessionOptions GetSessionOptions() const {
    TSessionOptions options;
    options.FBook = GetFile(FBook, "--book");
    options.FConfig = GetFile(FConfig, "--config");
    options.FLanguage = FindLanguage(FLanguage).value_or(kLanguageEnglish);
    return options;
  }

  CLI::App& App() noexcept { return FApp; }

 private:
  // An empty name is most likely a script's variable that was not set, not a wish for the user's own file.
  static std::optional<std::filesystem::path> GetFile(const std::optional<std::string>& name,
                                                      const std::string& option) {
    if (name && name->empty()) throw TCliError(option + " names no file");
    return name;
  }

  static CLI::App& AddApp(CLI::App& parent, const std::string& name, std::string_view help) {
    CLI::App* app = parent.add_subcommand(name, std::string(help));
    app->group("Commands");
    app->fallthrough();  // the options before the command may stand after it, too
    return *app;
  }

  CLI::App& GetGroup(const std::string& name) {
    CLI::App*& group = FGroups[name];
    if (group == nullptr) group = AddApp(FApp, name, kGroups.at(name)).require_subcommand(0, 1);
    return *group;
  }

  void AddCommand(TCommand& command) {
    const std::string name(command.GetName());
    const std::size_t blank = name.find(' ');
    CLI::App& parent = blank == std::string::npos ? FApp : GetGroup(name.substr(0, blank));
    CLI::App& app = AddApp(parent, name.substr(blank + 1), command.GetHelp());  // npos + 1 is the beginning
    command.AddOptions(app);
    FByApp[&app] = &command;
  }

  std::vector<std::unique_ptr<TCommand>> FCommands;
  std::optional<std::string> FBook;
  std::optional<std::string> FConfig;
  std::string FLanguage = "ENG";
  CLI::App FApp{"Margin accounts from a back-office book: figures per currency and in total.", "margindesk"};
  std::map<std::string, CLI::App*> FGroups;
  std::map<const CLI::App*, TCommand*> FByApp;
};

int Fail(TTerminal& terminal, std::string_view message, int code) {
  terminal.FErr << "margindesk: " << MakeOneLine(message) << std::endl;
  return code;
}

int RunAndShow(TCommand& command, TSession& session, std::ostream& shown) {
  std::ostringstream out;
  out.imbue(std::locale::classic());
  const int code = command.Run(session, out);
  shown << out.view() << std::flush;
  return code;
}

int RunCommand(TCommand& command, const TSessionOptions& options, TTerminal& terminal) {
  TSession session(terminal, options);
  const int code = command.IsStreaming() ? command.Run(session, terminal.FOut)
                                         : RunAndShow(command, session, terminal.FOut);
  if (terminal.FOut) return code;
  // A reader that has seen enough is no failure.
  return errno == EPIPE ? code : Fail(terminal, "cannot write to the standard output", kExitFault);
}

int Dispatch(const std::vector<std::string>& arguments, TTerminal& terminal) {
  TCommandLine line;
  try {
    line.Parse(arguments);
  } catch (const CLI::CallForHelp&) {
    terminal.FOut << line.App().help() << std::flush;
    return kExitFine;
  } catch (const CLI::CallForVersion& version) {
    terminal.FOut << version.what() << std::endl;
    return kExitFine;
  } catch (const CLI::ParseError& error) {
    const bool extra = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
    throw TCliError(extra ? line.GetComplaint() : error.what());
  }
  TCommand* command = line.GetCalled();
  if (command == nullptr) throw TCliError(line.GetComplaint());
  return RunCommand(*command, line.GetSessionOptions(), terminal);
}

}  // namespace

int RunApplication(const std::vector<std::string>& arguments, TTerminal& terminal) {
  try {
    return Dispatch(arguments, terminal);
  } catch (const TCliError& error) {
    return Fail(terminal, error.what(), kExitUsage);
  } catch (const TBookError& error) {
    return Fail(terminal, error.what(), kExitUsage);
  } catch (const TConfigError& error) {
    return Fail(terminal, error.what(), kExitUsage);
  } catch (const TLanguageFileError& error) {
    return Fail(terminal, error.what(), kExitUsage);
  } catch (const std::filesystem::filesystem_error& error) {
    return Fail(terminal, error.path1().string() + ": " + error.code().message(), kExitUsage);
  } catch (const std::exception& error) {
    return Fail(terminal, std::string("internal failure: ") + error.what(), kExitFault);
  }
}

}  // namespace margindesk
