// Where a control stands on its form, and whether a person can get at it there.
#include <algorithm>

#include "controls/Grid.h"
#include "controls/LayoutControl.h"
#include "controls/Menu.h"
#include "terminal/cli/ScriptControls.h"

namespace margindesk {

namespace {

// Calls visit(control) for the form's controls of a kind until one answers true.
template <class T, class TVisit>
bool AnyControl(const TFrame& frame, TVisit visit) {
  return std::ranges::any_of(frame.GetComponents(), [&visit](const TComponent* component) {
    const auto* control = dynamic_cast<const T*>(component);
    return control != nullptr && visit(*control);
  });
}

// Any of the controls that open the menu with the item is shown.
bool CanOpenMenuOf(const TFrame& frame, const TMenuItem& item) {
  return AnyControl<TPopupMenu>(frame, [&](const TPopupMenu& menu) {
    return std::ranges::find(menu.GetItems(), &item) != menu.GetItems().end() &&
           AnyControl<TControl>(frame, [&](const TControl& opener) {
             return opener.GetPopupMenu() == &menu && IsShown(frame, opener);
           });
  });
}

}  // namespace

bool IsShown(const TFrame& frame, const TControl& control) {
  if (!control.GetVisible()) return false;
  if (AnyControl<TLayoutItem>(frame, [&](const TLayoutItem& place) {
        return place.GetControl() == &control && !place.IsShown();
      })) {
    return false;
  }
  if (const auto* item = dynamic_cast<const TMenuItem*>(&control)) return CanOpenMenuOf(frame, *item);
  if (const auto* place = dynamic_cast<const TBaseLayoutItem*>(&control)) return place->IsShown();
  return !AnyControl<TGrid>(
      frame, [&](const TGrid& window) { return window.GetView() == &control && !IsShown(frame, window); });
}

void CheckReachable(const TFrame& frame, const TControl& control) {
  const std::string name = QuotedForMessage(control.GetComponentName());
  if (!IsShown(frame, control)) throw TScriptError(name + " is hidden");
  if (!control.GetEnabled()) throw TScriptError(name + " is disabled");
}

}  // namespace margindesk
