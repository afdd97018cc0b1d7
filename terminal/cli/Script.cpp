#include "terminal/cli/Script.h"

#include <string>
#include <string_view>

#include "host/services/Fault.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/cli/ScriptLine.h"
#include "terminal/cli/ScriptSteps.h"

namespace margindesk {

namespace {

TJson RunStep(TScriptSession& session, const TScriptReader& reader) {
  if (reader.IsTooLong()) throw TScriptError("the line is too long");
  TJson line = ParseScriptLine(reader.GetLine());
  const auto name = line.find("step");
  if (name == line.end() || !name->is_string()) throw TScriptError("the line has no \"step\"");
  const TScriptStep* step = FindScriptStep(name->get_ref<const std::string&>());
  if (step == nullptr) {
    throw TScriptError("there is no step " + QuotedForMessage(name->get_ref<const std::string&>()));
  }
  const TScriptArguments arguments(std::move(line), step->FMembers);
  if (arguments.Has("view")) session.View(arguments);  // whatever the step does, it must be open
  return step->FRun(session, arguments);
}

// One line of what may be anybody's text.
std::string MakeReason(std::string_view what) {
  constexpr std::size_t kLongest = 500;
  if (what.empty()) return "failed";
  return MakeOneLine(what.substr(0, kLongest)) + (what.size() > kLongest ? "..." : "");
}

// Why something failed; empty when it did not.
template <class TAction>
std::string FaultOf(TAction action) {
  const auto fault = CatchFault(action);
  return fault ? MakeReason(*fault) : std::string();
}

TJson AnswerLine(TScriptSession& session, const TScriptReader& reader) {
  TJson answer = {{"ok", true}};
  session.TakeMessages();
  std::string fault = FaultOf([&] { answer.update(RunStep(session, reader)); });
  const std::string later = FaultOf([&session] { session.Settle(); });
  if (fault.empty()) fault = later;
  if (fault.empty()) return answer;
  return {{"ok", false}, {"error", fault}, {"line", reader.GetNumber()}};
}

}  // namespace

bool RunScript(TScriptSession& session, std::istream& in, std::ostream& out, bool strict) {
  bool fine = true;
  for (TScriptReader reader(in); out && (fine || !strict) && reader.Next();) {
    const TJson answer = AnswerLine(session, reader);
    fine = answer.at("ok").get<bool>() && fine;
    out << answer.dump(-1, ' ', false, TJson::error_handler_t::replace) << '\n' << std::flush;
  }
  return fine;
}

}  // namespace margindesk
