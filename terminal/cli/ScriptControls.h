#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "controls/Frame.h"
#include "host/book/BookError.h"
#include "terminal/cli/Json.h"
#include "terminal/cli/ScriptArguments.h"

// The controls of a view by their component names, and what a person at the screen can do to them. Everything
// throws TScriptError when it cannot be done.
namespace margindesk {

TControl& FindControl(const TFrame& frame, const std::string& name);

// Whether the control and all around it are shown.
bool IsShown(const TFrame& frame, const TControl& control);

// The control of that name and kind; for an empty name the only one of its kind, or the only one shown.
template <class T>
T& FindControlOf(const TFrame& frame, const std::string& name, std::string_view kind) {
  if (!name.empty()) {
    if (auto* control = dynamic_cast<T*>(&FindControl(frame, name))) return *control;
    throw TScriptError(QuotedForMessage(name) + " is no " + std::string(kind));
  }
  std::vector<T*> found;
  for (TComponent* component : frame.GetComponents()) {
    if (auto* control = dynamic_cast<T*>(component)) found.push_back(control);
  }
  if (found.size() > 1)
    std::erase_if(found, [&frame](const T* control) { return !IsShown(frame, *control); });
  if (found.empty()) throw TScriptError("the view has no " + std::string(kind));
  if (found.size() > 1) throw TScriptError("there is more than one " + std::string(kind) + ": name it");
  return *found.front();
}

// That a person could click or edit the control now: it and all around it are shown, and it is enabled.
void CheckReachable(const TFrame& frame, const TControl& control);

TJson GetControlProperty(const TControl& control, const std::string& property);
void SetControlProperty(TControl& control, const std::string& property, const TJson& value);
void ClickControl(TControl& control);
void PressKeyInControl(TControl& control, const std::string& key);  // "Enter", "Backspace" or a character

}  // namespace margindesk
