#include "terminal/cli/ConfigCommands.h"

#include <map>

#include <CLI/CLI.hpp>

#include "host/services/ConfigManager.h"
#include "host/services/ConfigStore.h"
#include "terminal/cli/DisplayWidth.h"
#include "terminal/session/CliError.h"
#include "terminal/session/Locations.h"
#include "terminal/session/Session.h"

namespace margindesk {

namespace {

namespace fs = std::filesystem;

void AddSectionOption(CLI::App& app, std::string& section) {
  app.add_option("--section", section, "The section (default: the user's own)")->option_text("S");
}

void AddKeyOption(CLI::App& app, std::string& key) {
  app.add_option("KEY", key, "The key; letter case counts")->required();
}

// Where nobody is signed in by name, the user is nobody in particular, as for the host.
TConfigManager OpenConfig(const fs::path& file) { return TConfigManager(file, ""); }

std::string GetSection(const TConfigManager& config, const std::string& named) {
  return named.empty() ? config.GetUserSection() : named;
}

}  // namespace

void TConfigGetCommand::AddOptions(CLI::App& app) {
  AddKeyOption(app, FKey);
  AddSectionOption(app, FSection);
}

int TConfigGetCommand::Run(TSession& session, std::ostream& out) {
  std::string value;
  if (const fs::path file = session.GetConfigFile(); fs::exists(file)) {
    const TConfigManager config = OpenConfig(file);
    value = config.ReadString(GetSection(config, FSection), FKey);
  }
  out << value << '\n';
  return kExitFine;
}

void TConfigSetCommand::AddOptions(CLI::App& app) {
  AddKeyOption(app, FKey);
  app.add_option("VALUE", FValue, "The value")->required();
  AddSectionOption(app, FSection);
}

int TConfigSetCommand::Run(TSession& session, std::ostream& /*out*/) {
  const fs::path file = session.GetConfigFile();
  MakePrivateDirectory(fs::absolute(file).parent_path());
  TConfigManager config = OpenConfig(file);
  config.Store(GetSection(config, FSection), FKey, FValue, false);
  return kExitFine;
}

int TConfigListCommand::Run(TSession& session, std::ostream& out) {
  std::map<std::string, std::map<std::string, std::string>> sections;
  if (const fs::path file = session.GetConfigFile(); fs::exists(file)) {
    TConfigStore(file).ReadAll(
        [&sections](std::string_view section, std::string_view key, std::string_view value) {
          sections[std::string(section)][std::string(key)] = value;
        });
  }
  for (const auto& [section, values] : sections) {
    if (section != sections.begin()->first) out << '\n';
    out << '[' << MakeOneLine(section) << "]\n";
    for (const auto& [key, value] : values) out << MakeOneLine(key) << '=' << MakeOneLine(value) << '\n';
  }
  return kExitFine;
}

}  // namespace margindesk
