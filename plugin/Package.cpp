// The functions by which a host knows the package.
#include "plugin/Package.h"

#include <exception>
#include <string>

namespace {

using namespace margindesk;

std::size_t startedUnits = 0;

void EndUnits() noexcept {
  while (startedUnits > 0) {
    const TPackageUnit& unit = GetPackageUnits()[--startedUnits];
    try {
      if (unit.FEnd != nullptr) unit.FEnd();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the units before it end all the same
    }
  }
}

std::string StartUnits() {
  try {
    for (const TPackageUnit& unit : GetPackageUnits()) {
      if (unit.FStart != nullptr) unit.FStart();
      ++startedUnits;
    }
    return {};
  } catch (const std::exception& fault) {
    return std::string(GetPackageUnits()[startedUnits].FName) + ": " + fault.what();
  } catch (...) {
    return std::string(GetPackageUnits()[startedUnits].FName) + ": an unknown fault";
  }
}

}  // namespace

#define MARGINDESK_EXPORT extern "C" __attribute__((visibility("default")))

MARGINDESK_EXPORT const margindesk::TPackageInfo* GetPackageInfoTable();
MARGINDESK_EXPORT const char* Initialize();
MARGINDESK_EXPORT void Finalize();

const margindesk::TPackageInfo* GetPackageInfoTable() {
  static const TPackageInfo info = {sizeof(TPackageInfo),
                                    kContractVersion,
                                    kCompilerTag,
                                    "accountviews",
                                    static_cast<std::uint32_t>(GetPackageUnits().size()),
                                    GetPackageUnits().data(),
                                    MARGINDESK_VERSION};
  return &info;
}

const char* Initialize() {
  static std::string reason;
  if (startedUnits > 0) return nullptr;
  reason = StartUnits();
  if (reason.empty()) return nullptr;
  EndUnits();
  return reason.c_str();
}

void Finalize() { EndUnits(); }
