#include "terminal/cli/PackageLink.h"

#include "accountinfo/data/AccountInfoDataControl.h"

namespace margindesk {

std::unique_ptr<TCustomAccountInfoDataControl> CreateAccountTreeControl(bool threeLevels) {
  auto control = std::make_unique<TAccountInfoDataControl>(nullptr);
  control->SetShow3LvInfo(threeLevels);
  return control;
}

}  // namespace margindesk
