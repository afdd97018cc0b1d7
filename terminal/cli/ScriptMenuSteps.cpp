// Steps at the menu and at the preference dialog.
#include <algorithm>

#include "host/services/MenuModel.h"
#include "terminal/cli/ScriptControls.h"
#include "terminal/cli/ScriptSteps.h"

namespace margindesk {

namespace {

TJson MakeMenuJson(const std::vector<TMenuEntry>& entries) {
  TJson list = TJson::array();
  for (const TMenuEntry& entry : entries) {
    list.push_back({{"id", entry.FID},
                    {"index", entry.FIndex},
                    {"group", entry.FGroup},
                    {"caption", entry.FCaption},
                    {"class", MakeJsonOrNull(entry.FClass)},
                    {"items", MakeMenuJson(entry.FItems)}});
  }
  return list;
}

TJson Menus(TScriptSession& session, const TScriptArguments& /*step*/) {
  return {{"menus", MakeMenuJson(BuildMenu(session.Host().Views()))}};
}

std::string NeedText(const TScriptArguments& step, std::string_view member) {
  if (step.Has(member)) return step.Text(member);
  throw TScriptError("the step lacks " + QuotedForMessage(member));
}

// The page with the control that a step names.
const TFrame& FindPage(TScriptSession& session, const std::string& name) {
  const auto& pages = session.Host().Preferences().GetPages();
  const auto page = std::ranges::find_if(pages, [&name](const TPreferencePage& candidate) {
    return dynamic_cast<TControl*>(candidate.FFrame->FindComponent(name)) != nullptr;
  });
  if (page != pages.end()) return *page->FFrame;
  throw TScriptError("no preference page has a control " + QuotedForMessage(name));
}

TJson GetPreference(TScriptSession& session, const TScriptArguments& step) {
  const std::string name = NeedText(step, "name");
  const TControl& control = FindControl(FindPage(session, name), name);
  return {{"value", GetControlProperty(control, NeedText(step, "property"))}};
}

TJson SetPreference(TScriptSession& session, const TScriptArguments& step) {
  const std::string name = NeedText(step, "name");
  const std::string property = NeedText(step, "property");
  if (!step.Has("value")) throw TScriptError("the step lacks \"value\"");
  const TFrame& page = FindPage(session, name);
  TControl& control = FindControl(page, name);
  CheckReachable(page, control);
  SetControlProperty(control, property, step.Scalar("value"));
  return TJson::object();
}

// A button of the dialog, which is for all of its pages.
template <bool (TPreferenceDialog::*Operation)()>
TJson PressButton(TScriptSession& session, const TScriptArguments& /*step*/) {
  TPreferenceDialog& dialog = session.Host().Preferences();
  if (dialog.GetPages().empty()) throw TScriptError("there is no preference page");
  if (!(dialog.*Operation)()) throw TScriptError("a preference page did not carry it out");
  return TJson::object();
}

struct TPreferenceAction {
  std::string_view FName;
  std::vector<std::string_view> FMembers;
  TJson (*FRun)(TScriptSession& session, const TScriptArguments& step);
};

TJson Preferences(TScriptSession& session, const TScriptArguments& step) {
  static const TPreferenceAction kActions[] = {
      {"get", {"name", "property"}, &GetPreference},
      {"set", {"name", "property", "value"}, &SetPreference},
      {"execute", {}, &PressButton<&TPreferenceDialog::Apply>},
      {"reset", {}, &PressButton<&TPreferenceDialog::Reset>},
      {"factory", {}, &PressButton<&TPreferenceDialog::ResetFactory>},
  };
  const std::string action = step.Text("action");
  const auto* row = std::ranges::find(kActions, action, &TPreferenceAction::FName);
  if (row == std::end(kActions)) throw TScriptError("there is no action " + QuotedForMessage(action));
  for (const std::string_view member : {"name", "property", "value"}) {
    if (step.Has(member) && std::ranges::find(row->FMembers, member) == row->FMembers.end()) {
      throw TScriptError("the action " + QuotedForMessage(action) + " takes no " + QuotedForMessage(member));
    }
  }
  return row->FRun(session, step);
}

}  // namespace

std::vector<TScriptStep> MakeMenuSteps() {
  return {{"menus", {}, &Menus},
          {"preferences",
           {{"action"},
            {"name", TScriptKind::kText, false},
            {"property", TScriptKind::kText, false},
            {"value", TScriptKind::kScalar, false}},
           &Preferences}};
}

}  // namespace margindesk
