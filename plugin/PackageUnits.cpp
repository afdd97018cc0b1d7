#include "accountinfo/view/AccountInfoView.h"
#include "model/contract/ClassRegistry.h"
#include "plugin/AccountInfoInterface.h"
#include "plugin/MarginSimulatorInterface.h"
#include "plugin/Package.h"

namespace margindesk {

namespace {

template <class TPlugin>
TIBaseView* MakePlugin(TComponent* owner) {
  return new TPlugin(owner);
}

// The names under which a host finds the views.
constexpr std::string_view kAccountInfoClass = "TIAccountInfo";
constexpr std::string_view kMarginSimulatorClass = "TIMarginSimulator";

template <class TPlugin, const std::string_view& ClassName>
void StartInterface() {
  TClassRegistry::GetInstance().RegisterClass(ClassName, &MakePlugin<TPlugin>);
}

template <const std::string_view& ClassName>
void EndInterface() {
  TClassRegistry::GetInstance().UnregisterClass(ClassName);
}

constexpr TPackageUnit kUnits[] = {
    {"AccountInfoConstDef", nullptr, nullptr},
    {"AccountInfoDataControl", nullptr, nullptr},
    {"AcctPositionViewDataControl", nullptr, nullptr},
    {"AccountInfoView", &InitializeAccountInfoView, &FinalizeAccountInfoView},
    {"DataPreference", nullptr, nullptr},
    {"AccountInfoInterface", &StartInterface<TIAccountInfo, kAccountInfoClass>,
     &EndInterface<kAccountInfoClass>},
    {"MarginSimulatorDataControl", nullptr, nullptr},
    {"MarginSimulatorView", nullptr, nullptr},
    {"MarginSimulatorInterface", &StartInterface<TIMarginSimulator, kMarginSimulatorClass>,
     &EndInterface<kMarginSimulatorClass>},
};

}  // namespace

std::span<const TPackageUnit> GetPackageUnits() noexcept { return kUnits; }

}  // namespace margindesk
