// A package of a few lines that is built several times, each time with one fault (MINIATURE_FAULT).
#include <stdexcept>
#include <string>

#include "model/contract/Baseview.h"
#include "model/contract/ClassRegistry.h"
#include "model/contract/Package.h"

using namespace margindesk;

#define FAULT_NONE 0
#define FAULT_VERSION 1
#define FAULT_COMPILER 2
#define FAULT_NO_TABLE 3
#define FAULT_REASON 4
#define FAULT_THROWS 5
#define FAULT_NO_FINALIZE 6
#define FAULT_NO_OBJECT 7
#define FAULT_SIZE 8
#define FAULT_MAKER_THROWS 9

namespace {

// Its code goes with the package.
struct TFault : std::exception {
  const char* what() const noexcept override { return "no view today"; }
};

TIBaseView* MakeView(TComponent* owner) {
  if (MINIATURE_FAULT == FAULT_MAKER_THROWS) throw TFault();
  return MINIATURE_FAULT == FAULT_NO_OBJECT ? nullptr : new TIBaseView(owner);
}

const TPackageUnit kUnits[] = {{"First", nullptr, nullptr}, {"Second", nullptr, nullptr}};

const TPackageInfo kInfo = {
    MINIATURE_FAULT == FAULT_SIZE ? 1U : static_cast<std::uint32_t>(sizeof(TPackageInfo)),
    MINIATURE_FAULT == FAULT_VERSION ? kContractVersion + 1 : kContractVersion,
    MINIATURE_FAULT == FAULT_COMPILER ? "cc-of-another-age" : kCompilerTag,
    "miniature",
    2,
    kUnits,
    "1.2"};

}  // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED const TPackageInfo* GetPackageInfoTable() {
  return MINIATURE_FAULT == FAULT_NO_TABLE ? nullptr : &kInfo;
}

EXPORTED const char* Initialize() {
  if (MINIATURE_FAULT == FAULT_THROWS) throw std::runtime_error("out of the border");
  if (MINIATURE_FAULT == FAULT_REASON) return "no licence";
  TClassRegistry::GetInstance().RegisterClass("TMiniature", &MakeView);
  return nullptr;
}

#if MINIATURE_FAULT != FAULT_NO_FINALIZE
EXPORTED void Finalize() { TClassRegistry::GetInstance().UnregisterClass("TMiniature"); }
#endif
