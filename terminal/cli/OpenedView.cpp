#include "terminal/cli/OpenedView.h"

#include "controls/VirtualTree.h"
#include "terminal/session/CliError.h"

namespace margindesk {

namespace {

TCustomAccountInfoDataControl* FindTreeControl(TFrame& frame) {
  const auto* tree = dynamic_cast<const TVirtualTree*>(frame.FindComponent("AccountInfoTree"));
  if (tree == nullptr || tree->GetDataSource() == nullptr) return nullptr;
  return dynamic_cast<TCustomAccountInfoDataControl*>(tree->GetDataSource()->GetDataControl());
}

}  // namespace

TOpenedView::TOpenedView(TSession& session, const std::string& className, std::optional<bool> threeLevels)
    : FHost(session.Host()) {
  if (threeLevels) {
    auto& config = FHost.Config();
    config.Override(config.GetUserSection(), "AcctInfoShow3LvInfo", *threeLevels ? "Y" : "N");
  }
  session.Packages();
  TIBaseView* const plugin = FHost.Views().FindClass(className);
  if (plugin != nullptr && !plugin->GetIsVisible()) throw TCliError("the user may not open " + className);
  FHandle = FHost.Views().Open(className);
  if (const TOpenView* view = FHost.Views().Find(FHandle)) {
    FFrame = view->FFrame;
    FControl = FindTreeControl(*FFrame);
  }
  if (FControl != nullptr) return;
  FHost.Views().Close(FHandle);
  throw TCliError("the packages have no view " + className + " with an account tree");
}

TOpenedView::~TOpenedView() { FHost.Views().Close(FHandle); }

void TOpenedView::Read(const TColumnList& columns, TAccountView& view) const {
  FControl->SetColumnList(columns);
  FControl->SetCurrency(view.FConvert);
  FControl->SetFilterCurr(view.FFilter);
  FControl->SetAccount(view.FAccount);
  if (view.FAggregated) FControl->SetAggregate();
  view.FRows = ReadAccountTree(*FControl, columns);
}

}  // namespace margindesk
