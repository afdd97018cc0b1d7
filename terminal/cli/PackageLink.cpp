#include "terminal/cli/PackageLink.h"

#include "accountinfo/data/AccountInfoDataControl.h"
#include "accountinfo/view/AccountInfoView.h"
#include "plugin/AccountInfoInterface.h"

namespace margindesk {

namespace {

const std::string kAccountInfoClass = "TIAccountInfo";

}  // namespace

std::unique_ptr<TCustomAccountInfoDataControl> CreateAccountTreeControl(bool threeLevels) {
  auto control = std::make_unique<TAccountInfoDataControl>(nullptr);
  control->SetShow3LvInfo(threeLevels);
  return control;
}

TPackageViews::TPackageViews(TOpenViews& views)
    : FViews(views), FAccountInfo(std::make_unique<TIAccountInfo>(nullptr)) {
  InitializeAccountInfoView();
  FViews.AddClass(kAccountInfoClass, *FAccountInfo);
}

TPackageViews::~TPackageViews() {
  FViews.RemoveClass(kAccountInfoClass);
  FinalizeAccountInfoView();
}

}  // namespace margindesk
