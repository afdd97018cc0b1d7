#include "accountinfo/view/AccountInfoView.h"
#include "model/contract/ClassRegistry.h"
#include "plugin/AccountInfoInterface.h"
#include "plugin/Package.h"

namespace margindesk {

namespace {

template <class TPlugin>
TIBaseView* MakePlugin(TComponent* owner) {
  return new TPlugin(owner);
}

// The name under which a host finds the account information view.
constexpr std::string_view kAccountInfoClass = "TIAccountInfo";

void StartAccountInfoInterface() {
  TClassRegistry::GetInstance().RegisterClass(kAccountInfoClass, &MakePlugin<TIAccountInfo>);
}

void EndAccountInfoInterface() { TClassRegistry::GetInstance().UnregisterClass(kAccountInfoClass); }

constexpr TPackageUnit kUnits[] = {
    {"AccountInfoConstDef", nullptr, nullptr},
    {"AccountInfoDataControl", nullptr, nullptr},
    {"AcctPositionViewDataControl", nullptr, nullptr},
    {"AccountInfoView", &InitializeAccountInfoView, &FinalizeAccountInfoView},
    {"DataPreference", nullptr, nullptr},
    {"AccountInfoInterface", &StartAccountInfoInterface, &EndAccountInfoInterface},
};

}  // namespace

std::span<const TPackageUnit> GetPackageUnits() noexcept { return kUnits; }

}  // namespace margindesk
