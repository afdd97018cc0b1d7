#include "terminal/session/Session.h"

#include "terminal/session/BookFile.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"

namespace margindesk {

namespace fs = std::filesystem;

TSession::TSession(TTerminal& terminal, TSessionOptions options)
    : FTerminal(terminal), FOptions(std::move(options)) {}

fs::path TSession::GetBookFile() const {
  return FOptions.FBook ? *FOptions.FBook : GetDefaultBookFile(FTerminal.FEnvironment);
}

fs::path TSession::GetConfigFile() const {
  return FOptions.FConfig ? *FOptions.FConfig : GetDefaultConfigFile(FTerminal.FEnvironment);
}

TBook& TSession::Book() {
  if (FBook) return *FBook;
  const fs::path file = GetBookFile();
  if (!fs::exists(file)) {
    if (FOptions.FBook) {
      throw TCliError("there is no book " + file.string() + "; \"book import\" makes one");
    }
    MakeDemoBook(file);
  }
  return FBook.emplace(file, TStoreMode::kExisting);
}

void TSession::MakeDemoBook(const fs::path& file) {
  if (!MakeBookFile(file, GetResourceDirectory(FTerminal.FEnvironment) / "demo")) return;
  FTerminal.FErr << "margindesk: made the demo book " << file.string() << '\n';
}

TReferenceHostOptions TSession::MakeHostOptions() const {
  TReferenceHostOptions options;
  options.FLanguageDirectory = GetResourceDirectory(FTerminal.FEnvironment) / "languages";
  options.FLanguage = FOptions.FLanguage;
  return options;
}

TReferenceHost& TSession::Host() {
  if (FHost) return *FHost;
  TReferenceHostOptions options = MakeHostOptions();
  if (const fs::path config = GetConfigFile(); fs::exists(config)) options.FConfigFile = config;
  FHost = std::make_unique<TReferenceHost>(Book(), options);
  return *FHost;
}

TPackages& TSession::Packages() {
  if (FPackages) return *FPackages;
  auto packages = std::make_unique<TPackages>(Host());
  LoadPackage(*packages, FTerminal.FEnvironment);
  FPackages = std::move(packages);
  return *FPackages;
}

void LoadPackage(TPackages& packages, const TEnvironment& environment) {
  const std::string refusal = packages.Load(GetPackageFile(environment));
  if (!refusal.empty()) throw TCliError(refusal);
}

}  // namespace margindesk
