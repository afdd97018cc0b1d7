#include "host/loader/Package.h"

#include <cstddef>
#include <utility>

#include <dlfcn.h>

#include "host/loader/ElfFile.h"
#include "host/services/Fault.h"

namespace margindesk {

namespace {

template <class TFunction>
TFunction FindFunction(void* library, const char* name) {
  return reinterpret_cast<TFunction>(dlsym(library, name));
}

}  // namespace

std::string MakeThrownReason(const std::string& fault) {
  return fault.empty() ? "it threw something unknown" : "it threw: " + fault;
}

bool TPackage::Load() {
  if (FState != TPackageState::Named) return FState == TPackageState::Initialized;
  std::string reason = FindLibraryFault(FFile);
  if (reason.empty()) reason = Open();
  if (reason.empty()) {
    FState = TPackageState::Initialized;
    return true;
  }
  Close();
  FState = TPackageState::Refused;
  FError = FFile.string().append(": ").append(reason);
  return false;
}

std::string TPackage::Open() {
  FLibrary = dlopen(FFile.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (FLibrary == nullptr) {
    const char* const reason = dlerror();
    return reason == nullptr ? "it cannot be opened" : reason;
  }
  const auto getInfo = FindFunction<TGetPackageInfoTable>(FLibrary, kGetPackageInfoTable);
  const auto initialize = FindFunction<TInitializePackage>(FLibrary, kInitializePackage);
  const auto finalize = FindFunction<TFinalizePackage>(FLibrary, kFinalizePackage);
  if (getInfo == nullptr || initialize == nullptr || finalize == nullptr) {
    return "it is no package: it lacks one of " + std::string(kGetPackageInfoTable) + ", " +
           kInitializePackage + " and " + kFinalizePackage;
  }
  std::string reason;
  const auto thrown = CatchFault([&] {
    const TPackageInfo* const info = getInfo();
    reason = Check(info);
    if (!reason.empty()) return;
    FName = info->FName;
    FVersion = info->FVersion;
    for (std::uint32_t i = 0; i < info->FUnitCount; ++i) FUnits.emplace_back(info->FUnits[i].FName);
    if (const char* const fault = initialize()) {
      reason = std::string("it cannot start: ").append(fault);
    } else {
      FFinalize = finalize;
    }
  });
  return thrown ? MakeThrownReason(*thrown) : reason;
}

std::string TPackage::Check(const TPackageInfo* info) const {
  if (info == nullptr) return "it has no information table";
  if (info->FContractVersion != kContractVersion) {
    return "it was built for version " + std::to_string(info->FContractVersion) +
           " of the contract, this is version " + std::to_string(kContractVersion);
  }
  if (info->FCompilerTag == nullptr || std::string(info->FCompilerTag) != kCompilerTag) {
    const std::string tag = info->FCompilerTag == nullptr ? "an unknown compiler" : info->FCompilerTag;
    return "it was built by " + tag + ", this by " + kCompilerTag;
  }
  if (info->FSize != sizeof(TPackageInfo) || info->FName == nullptr || info->FVersion == nullptr ||
      (info->FUnits == nullptr && info->FUnitCount > 0)) {
    return "its information table is damaged";
  }
  return {};
}

void TPackage::Unload() {
  if (FState != TPackageState::Initialized) return;
  CatchFault(FFinalize);
  Close();
  FState = TPackageState::Unloaded;
}

void TPackage::Close() {
  FFinalize = nullptr;
  if (FLibrary != nullptr) dlclose(std::exchange(FLibrary, nullptr));
}

}  // namespace margindesk
