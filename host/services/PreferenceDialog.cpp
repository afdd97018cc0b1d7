#include "host/services/PreferenceDialog.h"

#include "host/services/ConfigManager.h"
#include "host/services/OpenViews.h"

namespace margindesk {

namespace {

TIBasePreferenceView* FindPreferenceView(const TOpenViews& views, const std::string& className) {
  TIBaseView* const plugin = views.FindClass(className);
  return plugin == nullptr ? nullptr : plugin->GetPreferenceView();
}

}  // namespace

TPreferenceDialog::TPreferenceDialog(const TOpenViews& views, TConfigManager& config)
    : FViews(views), FConfig(config) {}

const std::vector<TPreferencePage>& TPreferenceDialog::GetPages() {
  FPages.clear();
  for (const std::string& className : FViews.GetClasses()) {
    TIBasePreferenceView* const view = FindPreferenceView(FViews, className);
    if (view == nullptr) continue;
    for (TFrame* const frame : view->GetView()) {
      FPages.push_back({className, view->GetName(), view->GetViewID(), view->GetWidth(), view->GetHeight(),
                        view->FindHandle(frame), frame});
    }
  }
  return FPages;
}

template <class TOperation>
bool TPreferenceDialog::ForEachPage(TOperation operation) const {
  bool all = true;
  const std::vector<TPreferencePage> pages = FPages;  // a page may have the pages listed anew
  for (const TPreferencePage& page : pages) {
    TIBasePreferenceView* const view = FindPreferenceView(FViews, page.FClass);
    if (view == nullptr || view->FindHandle(page.FFrame) != page.FHandle) continue;
    all = operation(*view, page.FHandle) && all;
  }
  return all;
}

bool TPreferenceDialog::Apply() {
  const TConfigHold hold(FConfig);
  return ForEachPage([](TIBasePreferenceView& view, TViewHandle handle) { return view.Execute(handle); });
}

void TPreferenceDialog::Preview(TCustomConfigManager& config) const {
  const TServiceScope<TCustomConfigManager> scope(config);
  ForEachPage([](TIBasePreferenceView& view, TViewHandle handle) { return view.Execute(handle); });
}

bool TPreferenceDialog::Reset() {
  return ForEachPage([](TIBasePreferenceView& view, TViewHandle handle) { return view.Reset(handle); });
}

bool TPreferenceDialog::ResetFactory() {
  return ForEachPage(
      [](TIBasePreferenceView& view, TViewHandle handle) { return view.ResetFactory(handle); });
}

bool TPreferenceDialog::SetLanguage(std::int32_t index) {
  return ForEachPage(
      [index](TIBasePreferenceView& view, TViewHandle handle) { return view.SetLanguage(handle, index); });
}

}  // namespace margindesk
