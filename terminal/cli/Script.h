#pragma once

#include <istream>
#include <ostream>

#include "terminal/cli/ScriptSession.h"

namespace margindesk {

// Runs a script: a step a line, an answer a line, each written and flushed before the next step begins. With
// `strict` the first failed step is the last. It ends early when nobody takes the answers any more. Answers
// whether every step succeeded.
bool RunScript(TScriptSession& session, std::istream& in, std::ostream& out, bool strict);

}  // namespace margindesk
