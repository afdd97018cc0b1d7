#pragma once

#include <string>
#include <string_view>

#include "controls/Control.h"
#include "controls/Frame.h"
#include "host/book/BookError.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/ScriptArguments.h"

// The controls of a view by their component names, and what a person at the screen can do to them. Everything
// throws TScriptError when it cannot be done.
namespace margindesk {

TControl& FindControl(const TFrame& frame, const std::string& name);

// The control of that name and kind; for an empty name the only one of its kind.
template <class T>
T& FindControlOf(const TFrame& frame, const std::string& name, std::string_view kind) {
  if (!name.empty()) {
    if (auto* control = dynamic_cast<T*>(&FindControl(frame, name))) return *control;
    throw TScriptError(QuotedForMessage(name) + " is no " + std::string(kind));
  }
  T* only = nullptr;
  for (TComponent* component : frame.GetComponents()) {
    auto* control = dynamic_cast<T*>(component);
    if (control == nullptr) continue;
    if (only != nullptr) throw TScriptError("there is more than one " + std::string(kind) + ": name it");
    only = control;
  }
  if (only == nullptr) throw TScriptError("the view has no " + std::string(kind));
  return *only;
}

// That a person could click or edit the control now: it and all around it are shown, and it is enabled.
void CheckReachable(const TFrame& frame, const TControl& control);

TJson GetControlProperty(const TControl& control, const std::string& property);
void SetControlProperty(TControl& control, const std::string& property, const TJson& value);
void ClickControl(TControl& control);
void PressKeyInControl(TControl& control, const std::string& key);  // "Enter", "Backspace" or a character

}  // namespace margindesk
