#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "model/contract/Package.h"

namespace margindesk {

// Why a package is refused that threw, against what it has promised. fault: as CatchFault gives it.
std::string MakeThrownReason(const std::string& fault);

enum class TPackageState {
  Named,        // nothing has been done
  Refused,      // see GetError; nothing of it is left
  Initialized,  // its units have started
  Unloaded,     // they have ended, and the library has gone
};

// One package file. Whatever it does, the host goes on: a file that is missing, no library, cut short, built
// against another contract or by another compiler, or that fails to start is refused with one line, "file:
// reason". One thing cannot be refused: what is thrown while the system opens the library, before anything of
// it is called, ends the process.
class TPackage {
 public:
  explicit TPackage(std::filesystem::path file) : FFile(std::move(file)) {}
  ~TPackage() { Unload(); }
  TPackage(const TPackage&) = delete;
  TPackage& operator=(const TPackage&) = delete;

  // Opens the library, compares version and compiler before anything else of it is called, and starts its
  // units. Once.
  bool Load();
  // Ends the units and lets the library go. Everything that the package made must have gone before.
  void Unload();

  TPackageState GetState() const noexcept { return FState; }
  const std::string& GetError() const noexcept { return FError; }
  const std::filesystem::path& GetFile() const noexcept { return FFile; }
  const std::string& GetName() const noexcept { return FName; }                 // as the package says
  const std::string& GetVersion() const noexcept { return FVersion; }           // likewise
  const std::vector<std::string>& GetUnits() const noexcept { return FUnits; }  // in the order of their start

 private:
  std::string Open();  // "" or why not
  std::string Check(const TPackageInfo* info) const;
  void Close();

  const std::filesystem::path FFile;
  TPackageState FState = TPackageState::Named;
  std::string FError;
  std::string FName;
  std::string FVersion;
  std::vector<std::string> FUnits;
  void* FLibrary = nullptr;
  TFinalizePackage FFinalize = nullptr;
};

}  // namespace margindesk
