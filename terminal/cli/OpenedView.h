#pragma once

#include <optional>
#include <string>

#include "model/contract/AccountDataControl.h"
#include "model/contract/Baseview.h"
#include "terminal/cli/AccountOutput.h"
#include "terminal/session/Session.h"

namespace margindesk {

// A view of the package with an account tree, opened to be asked about one account and closed when this
// object goes.
class TOpenedView {
 public:
  // className: of the plug-in object. threeLevels: attribute rows show the account's total, and currencies
  // that are no rows of their own stand converted under it; otherwise every currency is a row of its own;
  // none: as it is configured. Throws TCliError when the package cannot be loaded or offers no such view to
  // the user.
  TOpenedView(TSession& session, const std::string& className, std::optional<bool> threeLevels);
  ~TOpenedView();
  TOpenedView(const TOpenedView&) = delete;
  TOpenedView& operator=(const TOpenedView&) = delete;

  TFrame& Frame() const noexcept { return *FFrame; }

  // Has the tree show the view's account with the columns, converted, filtered and summed as it says, and
  // reads the view's rows from it. Once.
  void Read(const TColumnList& columns, TAccountView& view) const;

  // The data control of the view's tree. The columns that it is given must outlive this object.
  TCustomAccountInfoDataControl& Control() const noexcept { return *FControl; }

 private:
  TReferenceHost& FHost;
  TViewHandle FHandle = 0;
  TFrame* FFrame = nullptr;
  TCustomAccountInfoDataControl* FControl = nullptr;
};

}  // namespace margindesk
