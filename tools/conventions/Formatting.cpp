#include "tools/conventions/Formatting.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <stdexcept>
#include <string_view>

namespace margindesk {
namespace {

// For the shell, as one word.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

struct TRun {
  std::string FOutput;
  bool FOk;
};

TRun RunCommand(const std::string& command) {
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  TRun run{};
  std::array<char, 4096> part{};
  while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
    run.FOutput.append(part.data(), count);
  }
  run.FOk = pclose(pipe) == 0;
  return run;
}

// The first place the output names in each file; the whole output when it names none.
std::vector<TFinding> ReadOutput(const std::string& output, const std::filesystem::path& root) {
  static const std::regex place(R"(^(.+):(\d+):\d+: error: (.+)$)");
  std::vector<TFinding> findings;
  for (const std::string_view line : SplitLines(output)) {
    std::cmatch match;
    if (!std::regex_match(line.data(), line.data() + line.size(), match, place)) continue;
    std::string file = std::filesystem::path(match.str(1)).lexically_relative(root).generic_string();
    if (!findings.empty() && findings.back().FFile == file) continue;
    findings.push_back({std::move(file), std::stoul(match.str(2)), match.str(3)});
  }
  if (findings.empty()) findings.push_back({"clang-format", 0, output});
  return findings;
}

}  // namespace

std::string FindFormatter() {
  for (const char* name : {"clang-format-14", "clang-format"}) {
    if (RunCommand(std::string(name) + " --version").FOk) return name;
  }
  return {};
}

std::vector<TFinding> CheckFormatting(const std::string& formatter, const std::filesystem::path& style,
                                      const std::filesystem::path& root,
                                      const std::vector<std::string>& files) {
  // Enough files for one run, and few enough for a command line.
  constexpr std::size_t kBatch = 100;
  std::vector<TFinding> findings;
  for (std::size_t first = 0; first < files.size(); first += kBatch) {
    std::string command = formatter + " --dry-run --Werror --style=" + Quoted("file:" + style.string());
    for (std::size_t i = first; i < std::min(first + kBatch, files.size()); ++i) {
      command += " " + Quoted((root / files[i]).string());
    }
    const TRun run = RunCommand(command);
    if (run.FOk) continue;
    std::ranges::move(ReadOutput(run.FOutput, root), std::back_inserter(findings));
  }
  return findings;
}

}  // namespace margindesk
