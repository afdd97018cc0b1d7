#include "terminal/cli/ScriptCommand.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include <CLI/CLI.hpp>

#include "host/book/BookError.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/Script.h"
#include "terminal/cli/ScriptSteps.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

namespace fs = std::filesystem;

// A folder that goes with its contents.
class TTemporaryFolder {
 public:
  TTemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "margindesk-script-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw TCliError("cannot make the directory " + name);
    FPath = name;
  }
  ~TTemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(FPath, ignored);
  }
  TTemporaryFolder(const TTemporaryFolder&) = delete;
  TTemporaryFolder& operator=(const TTemporaryFolder&) = delete;

  const fs::path& Path() const noexcept { return FPath; }

 private:
  fs::path FPath;
};

}  // namespace

void TScriptCommand::AddOptions(CLI::App& app) {
  app.add_option("FILE", FFile, "The script; - for standard input")->required();
  app.add_flag("--strict", FStrict, "End with the first step that fails");
  app.add_option("--workspaces", FWorkspaces, "Keep workspaces here (default: gone at the end)")
      ->option_text("FOLDER");
  constexpr std::size_t kWidth = 78;
  std::string steps = "Steps (docs/script.md describes them):\n ";
  std::size_t column = 1;
  for (const TScriptStep& step : GetScriptSteps()) {
    if (column + 1 + step.FName.size() > kWidth) {
      steps += "\n ";
      column = 1;
    }
    steps.append(" ").append(step.FName);
    column += 1 + step.FName.size();
  }
  app.footer(steps);
}

int TScriptCommand::Run(TSession& session, std::ostream& out) {
  std::ifstream file;
  if (FFile != "-") {
    if (fs::is_directory(FFile)) throw TCliError(QuotedForMessage(FFile) + " is a directory");
    file.open(FFile, std::ios::binary);
    if (!file) throw TCliError("cannot read " + QuotedForMessage(FFile));
  }
  int outputError = 0;
  const bool fine = RunSteps(session, FFile == "-" ? session.Terminal().FIn : file, out, outputError);
  errno = outputError;  // closing the host has used it since
  return fine ? kExitFine : kExitFault;
}

bool TScriptCommand::RunSteps(TSession& session, std::istream& in, std::ostream& out, int& outputError) {
  std::optional<TTemporaryFolder> temporary;
  if (!FWorkspaces || !session.IsBookNamed()) temporary.emplace();
  // Its orders are placed for real, so a script works on the user's own book only where that is named.
  std::optional<TBook> copy;
  if (!session.IsBookNamed()) {
    const fs::path file = temporary->Path() / "book.db";
    session.Book().Copy(file);
    copy.emplace(file, TStoreMode::kExisting);
  }
  TBook& book = copy ? *copy : session.Book();
  TScriptClock clock;
  TReferenceHostOptions options = session.MakeHostOptions();
  options.FConfigFile = session.GetNamedConfigFile();
  options.FWorkspaceFolder = FWorkspaces ? fs::path(*FWorkspaces) : temporary->Path() / "workspaces";
  options.FClock = [&clock] { return clock.Now(); };
  TReferenceHost host(book, options);
  TPackages packages(host);
  const TEnvironment& environment = session.Terminal().FEnvironment;
  LoadPackage(packages, environment);
  TScriptSession script(host, clock, [&] { host.Reload(book); }, &packages,
                        {fs::path(FFile).parent_path(), GetPackageFile(environment)});
  const bool fine = RunScript(script, in, out, FStrict);
  outputError = out ? 0 : errno;
  script.TakeMessages();  // they were the steps' own
  script.Close();
  for (const std::string& message : script.TakeMessages()) {
    session.Terminal().FErr << "margindesk: " << MakeOneLine(message) << '\n';
  }
  return fine;
}

}  // namespace margindesk
