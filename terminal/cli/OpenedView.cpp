#include "terminal/cli/OpenedView.h"

#include "controls/VirtualTree.h"
#include "terminal/cli/CliError.h"

namespace margindesk {

namespace {

TCustomAccountInfoDataControl* FindTreeControl(const TOpenView* view) {
  if (view == nullptr) return nullptr;
  const auto* tree = dynamic_cast<const TVirtualTree*>(view->FFrame->FindComponent("AccountInfoTree"));
  if (tree == nullptr || tree->GetDataSource() == nullptr) return nullptr;
  return dynamic_cast<TCustomAccountInfoDataControl*>(tree->GetDataSource()->GetDataControl());
}

}  // namespace

TOpenedView::TOpenedView(TSession& session, std::optional<bool> threeLevels) : FHost(session.Host()) {
  if (threeLevels) {
    auto& config = FHost.Config();
    config.Override(config.GetUserSection(), "AcctInfoShow3LvInfo", *threeLevels ? "Y" : "N");
  }
  session.Packages();
  FHandle = FHost.Views().Open("TIAccountInfo");
  FControl = FindTreeControl(FHost.Views().Find(FHandle));
  if (FControl != nullptr) return;
  FHost.Views().Close(FHandle);
  throw TCliError("the package has no account information view");
}

TOpenedView::~TOpenedView() { FHost.Views().Close(FHandle); }

}  // namespace margindesk
