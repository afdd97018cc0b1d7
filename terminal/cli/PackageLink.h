#pragma once

#include <memory>

#include "host/services/OpenViews.h"
#include "model/contract/AccountDataControl.h"

namespace margindesk {

// A new data control of the package's account tree; the host has to be there before it and outlive it.
// threeLevels: attribute rows show the account's total, and currencies that are no rows of their own stand
// converted under it; otherwise every currency is a row of its own.
std::unique_ptr<TCustomAccountInfoDataControl> CreateAccountTreeControl(bool threeLevels);

// The package's view plug-ins, known to the open views by their class names ("TIAccountInfo") for as long as
// it lives; their views close before it goes. One at a time; the host has to outlive it.
class TPackageViews {
 public:
  explicit TPackageViews(TOpenViews& views);
  ~TPackageViews();
  TPackageViews(const TPackageViews&) = delete;
  TPackageViews& operator=(const TPackageViews&) = delete;

 private:
  TOpenViews& FViews;
  const std::unique_ptr<TIBaseView> FAccountInfo;
};

}  // namespace margindesk
