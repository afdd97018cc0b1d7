#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

#include "host/book/Book.h"
#include "host/loader/Packages.h"
#include "host/services/ReferenceHost.h"
#include "terminal/session/Terminal.h"

namespace margindesk {

// What the options before the command say.
struct TSessionOptions {
  std::optional<std::filesystem::path> FBook;
  std::optional<std::filesystem::path> FConfig;
  std::int32_t FLanguage = kLanguageEnglish;
};

// Loads the package into a host's packages. Throws TCliError when it is not found or refused.
void LoadPackage(TPackages& packages, const TEnvironment& environment);

// What one run of the program works on: the book, the configuration, the host over both and its packages,
// each opened when a command first asks for it.
class TSession {
 public:
  TSession(TTerminal& terminal, TSessionOptions options);

  TTerminal& Terminal() const noexcept { return FTerminal; }

  // The files in use, named or the user's own; they need not be there.
  std::filesystem::path GetBookFile() const;
  std::filesystem::path GetConfigFile() const;

  bool IsBookNamed() const noexcept { return FOptions.FBook.has_value(); }

  // The configuration that was named, if one was.
  std::optional<std::filesystem::path> GetNamedConfigFile() const { return FOptions.FConfig; }

  // The book. The user's own is made from the demo book when it is not there, which is told on standard
  // error; one that was named has to be there. Throws TCliError and TBookError.
  TBook& Book();

  // What a host of this run is made with: the language files and the language asked for.
  TReferenceHostOptions MakeHostOptions() const;

  // The host over the book and the configuration, in the language asked for. A configuration that is not
  // there is an empty one. Throws what the host throws.
  TReferenceHost& Host();

  // The packages of the host. Throws TCliError when they cannot be loaded.
  TPackages& Packages();

 private:
  void MakeDemoBook(const std::filesystem::path& file);

  TTerminal& FTerminal;
  const TSessionOptions FOptions;
  std::optional<TBook> FBook;
  std::unique_ptr<TReferenceHost> FHost;
  std::unique_ptr<TPackages> FPackages;
};

}  // namespace margindesk
