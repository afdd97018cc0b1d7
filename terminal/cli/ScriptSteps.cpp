#include "terminal/cli/ScriptSteps.h"

#include <algorithm>

namespace margindesk {

const TScriptStep* FindScriptStep(std::string_view name) {
  static const std::vector<TScriptStep> kSteps = [] {
    std::vector<TScriptStep> steps;
    for (const auto& topic :
         {MakeViewSteps(), MakeControlSteps(), MakeCellSteps(), MakeMenuSteps(), MakeHostSteps()}) {
      steps.insert(steps.end(), topic.begin(), topic.end());
    }
    return steps;
  }();
  const auto found = std::ranges::find(kSteps, name, &TScriptStep::FName);
  return found == kSteps.end() ? nullptr : &*found;
}

}  // namespace margindesk
