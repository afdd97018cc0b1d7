// Any text as a script over an account information view: every line has its answer, whatever it says.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "fuzz/FuzzHost.h"
#include "model/contract/ConfigManager.h"
#include "plugin/AccountInfoInterface.h"
#include "terminal/cli/Script.h"

using namespace margindesk;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TScriptClock clock;
  TReferenceHostOptions options = MakeFuzzOptions();
  options.FClock = [&clock] { return clock.Now(); };
  TReferenceHost host(MakeFuzzContents(), options);
  auto& config = host.Config();
  config.WriteString(config.GetUserSection(), "AcctInfo_PosCol", "Symbol,Qty,PL", false);
  config.WriteString(config.GetUserSection(), "PVAllowAggregatedSubAcct", "Y", false);
  {
    TIAccountInfo plugin(nullptr);
    host.Views().AddClass("TIAccountInfo", plugin);
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    std::ostringstream out;
    TScriptSession session(host, clock, [&host] { host.Data().Replace(MakeFuzzContents()); });
    RunScript(session, in, out, false);
    session.Close();
    const std::string answers = out.str();
    Require(answers.empty() || (answers.starts_with("{\"ok\":") && answers.ends_with("}\n")),
            "an answer is no line of JSON");
    host.CloseViews();
    host.Views().RemoveClass("TIAccountInfo");
  }
  Require(host.CountRegistrations() == 0, "a closed view is still registered");
  return 0;
}
