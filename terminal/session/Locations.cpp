#include "terminal/session/Locations.h"

#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "host/book/BookError.h"
#include "terminal/session/CliError.h"

namespace margindesk {

namespace {

namespace fs = std::filesystem;

// One of the user's base directories. A relative path in the variable does not count, as with every program
// that keeps to the same rules.
fs::path GetBaseDirectory(const TEnvironment& environment, const std::string& variable,
                          const fs::path& belowHome) {
  fs::path named = environment(variable).value_or("");
  if (named.is_absolute()) return named;
  const fs::path home = environment("HOME").value_or("");
  if (home.is_absolute()) return home / belowHome;
  throw TCliError("neither " + variable + " nor HOME is set; name the files with --book and --config");
}

bool HoldsResources(const fs::path& directory) {
  std::error_code error;
  return fs::is_directory(directory / "languages", error);
}

}  // namespace

fs::path GetDefaultBookFile(const TEnvironment& environment) {
  return GetBaseDirectory(environment, "XDG_DATA_HOME", ".local/share") / "margindesk" / "book.db";
}

fs::path GetDefaultConfigFile(const TEnvironment& environment) {
  return GetBaseDirectory(environment, "XDG_CONFIG_HOME", ".config") / "margindesk" / "config.db";
}

fs::path GetResourceDirectory(const TEnvironment& environment) {
  if (const auto named = environment("MARGINDESK_RESOURCES"); named && !named->empty()) {
    if (HoldsResources(*named)) return *named;
    throw TCliError("MARGINDESK_RESOURCES names " + QuotedForMessage(*named) +
                    ", which holds no language files");
  }
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
  const std::vector<fs::path> places = {
      program / "../share/margindesk",     // installed
      program / "../../../../resources",   // build/PRESET/terminal/cli of a repository that was moved
      MARGINDESK_SOURCE_DIR "/resources",  // built elsewhere
  };
  for (const fs::path& place : places) {
    if (HoldsResources(place)) return place.lexically_normal();
  }
  throw TCliError("the language files are not found; name their directory in MARGINDESK_RESOURCES");
}

fs::path GetPackageFile(const TEnvironment& environment) {
  if (const auto named = environment("MARGINDESK_PACKAGE"); named && !named->empty()) return *named;
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path places[] = {
      program / "../lib/margindesk/accountviews.so",  // installed
      program / "../../plugin/accountviews.so",       // of a program in a build
  };
  for (const fs::path& place : places) {
    if (fs::is_regular_file(place, error)) return place.lexically_normal();
  }
  throw TCliError("the package accountviews.so is not found; name its file in MARGINDESK_PACKAGE");
}

std::string MakeFileAddress(const fs::path& file) {
  constexpr std::string_view kPlain = "/-._~";
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string address = "file://";
  for (const char c : fs::absolute(file).lexically_normal().string()) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letterOrDigit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (letterOrDigit || kPlain.find(c) != std::string_view::npos) {
      address += c;
    } else {
      address.append(1, '%').append(1, kDigits[byte / 16]).append(1, kDigits[byte % 16]);
    }
  }
  return address;
}

void MakePrivateDirectory(const fs::path& directory) {
  std::error_code error;
  if (fs::is_directory(directory, error)) return;
  if (fs::create_directories(directory, error)) {
    fs::permissions(directory, fs::perms::owner_all, error);
  }
  if (error) throw TCliError("cannot make the directory " + directory.string() + ": " + error.message());
}

}  // namespace margindesk
