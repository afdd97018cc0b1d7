#pragma once

#include <memory>

#include "model/contract/AccountDataControl.h"

namespace margindesk {

// A new data control of the package's account tree; the host has to be there before it and outlive it.
// threeLevels: attribute rows show the account's total, and currencies that are no rows of their own stand
// converted under it; otherwise every currency is a row of its own.
std::unique_ptr<TCustomAccountInfoDataControl> CreateAccountTreeControl(bool threeLevels);

}  // namespace margindesk
