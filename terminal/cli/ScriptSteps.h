#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "terminal/cli/Json.h"
#include "terminal/cli/ScriptArguments.h"
#include "terminal/cli/ScriptSession.h"

namespace margindesk {

// One kind of step. FRun does it and gives the members of its answer; what cannot be done throws,
// TScriptError or whatever the view or the host throws.
struct TScriptStep {
  std::string_view FName;
  std::vector<TScriptMember> FMembers;
  TJson (*FRun)(TScriptSession& session, const TScriptArguments& step);
};

// The steps by topic.
std::vector<TScriptStep> MakeViewSteps();     // opening, closing, layouts, captions, workspaces
std::vector<TScriptStep> MakeControlSteps();  // single controls
std::vector<TScriptStep> MakeCellSteps();     // trees and grids
std::vector<TScriptStep> MakeMenuSteps();     // the menu and the preference dialog
std::vector<TScriptStep> MakeHostSteps();     // what comes from outside the views

// Clicks the caption button at that place among all of the step's view, hidden ones counted.
void ClickCaptionButton(TScriptSession& session, const TScriptArguments& step, std::int32_t index);

const std::vector<TScriptStep>& GetScriptSteps();          // all of them
const TScriptStep* FindScriptStep(std::string_view name);  // null for no step

}  // namespace margindesk
