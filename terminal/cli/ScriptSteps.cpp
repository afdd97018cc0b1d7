#include "terminal/cli/ScriptSteps.h"

#include <algorithm>

namespace margindesk {

const std::vector<TScriptStep>& GetScriptSteps() {
  static const std::vector<TScriptStep> kSteps = [] {
    std::vector<TScriptStep> steps;
    for (const auto& topic :
         {MakeViewSteps(), MakeControlSteps(), MakeCellSteps(), MakeMenuSteps(), MakeHostSteps()}) {
      steps.insert(steps.end(), topic.begin(), topic.end());
    }
    return steps;
  }();
  return kSteps;
}

const TScriptStep* FindScriptStep(std::string_view name) {
  const std::vector<TScriptStep>& steps = GetScriptSteps();
  const auto found = std::ranges::find(steps, name, &TScriptStep::FName);
  return found == steps.end() ? nullptr : &*found;
}

}  // namespace margindesk
