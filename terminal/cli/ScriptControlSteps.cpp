// Steps at single controls.
#include "controls/AccountEdit.h"
#include "terminal/cli/ScriptControls.h"
#include "terminal/cli/ScriptSteps.h"

namespace margindesk {

namespace {

TJson Account(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  auto& box = FindControlOf<TAccountEdit>(frame, step.Text("name"), "account box");
  CheckReachable(frame, box);
  box.SetText(step.Text("value"));
  box.Exit();
  return TJson::object();
}

TJson Set(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TControl& control = FindControl(frame, step.Text("name"));
  CheckReachable(frame, control);
  SetControlProperty(control, step.Text("property"), step.Scalar("value"));
  return TJson::object();
}

TJson Get(TScriptSession& session, const TScriptArguments& step) {
  const TControl& control = FindControl(session.Frame(step), step.Text("name"));
  return {{"value", GetControlProperty(control, step.Text("property"))}};
}

TJson Click(TScriptSession& session, const TScriptArguments& step) {
  if (step.Has("name") == step.Has("button")) {
    throw TScriptError("the step takes either \"name\" or \"button\"");
  }
  if (step.Has("button")) {
    ClickCaptionButton(session, step, step.Integer("button"));
  } else {
    const TFrame& frame = session.Frame(step);
    TControl& control = FindControl(frame, step.Text("name"));
    CheckReachable(frame, control);
    ClickControl(control);
  }
  return TJson::object();
}

TJson Key(TScriptSession& session, const TScriptArguments& step) {
  const TFrame& frame = session.Frame(step);
  TControl& control = FindControl(frame, step.Text("name"));
  CheckReachable(frame, control);
  PressKeyInControl(control, step.Text("key"));
  return TJson::object();
}

}  // namespace

std::vector<TScriptStep> MakeControlSteps() {
  const TScriptMember name{"name"};
  const TScriptMember optionalName{"name", TScriptKind::kText, false};
  const TScriptMember property{"property"};
  return {{"account", {optionalName, {"value"}}, &Account},
          {"set", {name, property, {"value", TScriptKind::kScalar}}, &Set},
          {"get", {name, property}, &Get},
          {"click", {optionalName, {"button", TScriptKind::kInteger, false}}, &Click},
          {"key", {name, {"key"}}, &Key}};
}

}  // namespace margindesk
