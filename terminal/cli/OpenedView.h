#pragma once

#include <optional>

#include "model/contract/AccountDataControl.h"
#include "model/contract/Baseview.h"
#include "terminal/cli/Session.h"

namespace margindesk {

// An account information view of the package, opened to be asked about one account's tree and closed when
// this object goes.
class TOpenedView {
 public:
  // threeLevels: attribute rows show the account's total, and currencies that are no rows of their own stand
  // converted under it; otherwise every currency is a row of its own; none: as it is configured. Throws
  // TCliError when the package cannot be loaded or offers no such view.
  TOpenedView(TSession& session, std::optional<bool> threeLevels);
  ~TOpenedView();
  TOpenedView(const TOpenedView&) = delete;
  TOpenedView& operator=(const TOpenedView&) = delete;

  // The data control of the view's tree. The columns that it is given must outlive this object.
  TCustomAccountInfoDataControl& Control() const noexcept { return *FControl; }

 private:
  TReferenceHost& FHost;
  TViewHandle FHandle = 0;
  TCustomAccountInfoDataControl* FControl = nullptr;
};

}  // namespace margindesk
