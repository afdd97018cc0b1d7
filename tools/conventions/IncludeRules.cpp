#include "tools/conventions/IncludeRules.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace margindesk {
namespace {

// What an include line may reach for.
enum EReach : unsigned {
  kStandard = 1U << 0U,  // C++ standard library
  kSystem = 1U << 1U,    // the operating system and C headers
  kContract = 1U << 2U,
  kPackage = 1U << 3U,
  kHost = 1U << 4U,
  kCommandLine = 1U << 5U,
  kDesktop = 1U << 6U,
  kStores = 1U << 7U,     // SQLite, curl and the picture decoder
  kArguments = 1U << 8U,  // CLI11
  kJson = 1U << 9U,
  kQt = 1U << 10U,
  kTestTools = 1U << 11U,  // Google Test and Benchmark
  kTests = 1U << 12U,
  kSession = 1U << 13U,
};

constexpr unsigned kForContract = kStandard | kContract;
constexpr unsigned kForPackage = kForContract | kPackage;
constexpr unsigned kForHost = kForContract | kSystem | kHost | kStores;
constexpr unsigned kForFront = kForHost | kArguments | kJson;
constexpr unsigned kForTests = ~0U;

// A folder, what including its headers counts as, and what its own files may include. The first match counts.
struct TFolderRule {
  std::string_view FFolder;
  EReach FIs;
  unsigned FMayInclude;
};

constexpr std::array kFolders{
    TFolderRule{"model/", kContract, kForContract},
    TFolderRule{"controls/", kContract, kForContract},
    TFolderRule{"accountinfo/", kPackage, kForPackage},
    TFolderRule{"marginsim/", kPackage, kForPackage},
    TFolderRule{"plugin/", kPackage, kForPackage},
    TFolderRule{"forms/", kPackage, kForPackage},
    TFolderRule{"host/services/", kHost, kForHost | kJson},
    TFolderRule{"host/", kHost, kForHost},
    TFolderRule{"terminal/session/", kSession, kForHost | kSession},
    TFolderRule{"terminal/cli/", kCommandLine, kForFront | kSession | kCommandLine},
    TFolderRule{"terminal/desktop/", kDesktop, kForFront | kSession | kDesktop | kQt},
    TFolderRule{"tests/", kTests, kForTests},
    TFolderRule{"bench/", kTests, kForTests},
    TFolderRule{"fuzz/", kTests, kForTests},
    TFolderRule{"tools/", kTests, kForTests},
};

struct TForeignHeader {
  std::string_view FBegin;
  EReach FIs;
};

constexpr std::array kForeignHeaders{
    TForeignHeader{"sqlite3.h", kStores},     TForeignHeader{"curl/", kStores},
    TForeignHeader{"stb/", kStores},          TForeignHeader{"CLI/", kArguments},
    TForeignHeader{"nlohmann/", kJson},       TForeignHeader{"Q", kQt},
    TForeignHeader{"gtest/", kTestTools},     TForeignHeader{"gmock/", kTestTools},
    TForeignHeader{"benchmark/", kTestTools}, TForeignHeader{"sys/", kSystem},
    TForeignHeader{"netinet/", kSystem},      TForeignHeader{"arpa/", kSystem},
};

const TFolderRule* FindFolder(std::string_view path) {
  const auto rule = std::ranges::find_if(
      kFolders, [&](const TFolderRule& folder) { return path.starts_with(folder.FFolder); });
  return rule == kFolders.end() ? nullptr : rule;
}

// What <header> is, or nothing when the table above does not know it.
std::optional<EReach> ClassifyAngled(std::string_view header) {
  for (const TForeignHeader& known : kForeignHeaders) {
    if (header.starts_with(known.FBegin)) return known.FIs;
  }
  const auto plain = [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; };
  if (std::ranges::all_of(header, plain)) return kStandard;
  if (header.ends_with(".h") && std::ranges::all_of(header.substr(0, header.size() - 2), plain))
    return kSystem;
  return std::nullopt;
}

std::string_view TrimFront(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return text;
}

// What follows "#include" in a line, or nothing when it is no include line.
std::optional<std::string_view> IncludeOperand(std::string_view line) {
  line = TrimFront(line);
  if (!line.starts_with('#')) return std::nullopt;
  line = TrimFront(line.substr(1));
  if (!line.starts_with("include")) return std::nullopt;
  return TrimFront(line.substr(std::string_view("include").size()));
}

class TIncludeCheck {
 public:
  explicit TIncludeCheck(const std::vector<TSourceFile>& sources) {
    for (const TSourceFile& source : sources) FPaths.insert(source.FPath);
  }

  void Check(const TSourceFile& source) {
    const TFolderRule* folder = FindFolder(source.FPath);
    if (folder == nullptr) {
      FFindings.push_back({source.FPath, 1, "its folder is in no row of the include table"});
      return;
    }
    std::size_t lineNumber = 0;
    for (const std::string_view line : SplitLines(source.FText)) {
      ++lineNumber;
      const auto operand = IncludeOperand(line);
      if (!operand) continue;
      const std::string reason = Judge(*folder, *operand);
      if (!reason.empty()) FFindings.push_back({source.FPath, lineNumber, reason});
    }
  }

  std::vector<TFinding> Finish() { return std::move(FFindings); }

 private:
  // The reason against an include, or an empty text.
  std::string Judge(const TFolderRule& folder, std::string_view operand) {
    const char open = operand.empty() ? ' ' : operand.front();
    const std::size_t end = operand.find(open == '<' ? '>' : '"', 1);
    if ((open != '<' && open != '"') || end == std::string_view::npos) {
      return "the include names no header: " + std::string(operand);
    }
    const std::string_view header = operand.substr(1, end - 1);
    const std::string shown(operand.substr(0, end + 1));

    std::optional<EReach> reach;
    if (open == '<') {
      reach = ClassifyAngled(header);
      if (!reach) return shown + " is unknown; the table of foreign headers names what may be used";
    } else {
      const TFolderRule* target = FindFolder(header);
      if (target == nullptr || !FPaths.contains(header)) {
        return shown + " is no file of this repository (paths begin at its root)";
      }
      reach = target->FIs;
    }
    if ((folder.FMayInclude & *reach) != 0) return {};
    return std::string(folder.FFolder) + " may not include " + shown;
  }

  std::set<std::string, std::less<>> FPaths;
  std::vector<TFinding> FFindings;
};

}  // namespace

std::vector<TFinding> CheckIncludes(const std::vector<TSourceFile>& sources) {
  TIncludeCheck check(sources);
  for (const TSourceFile& source : sources) check.Check(source);
  return check.Finish();
}

}  // namespace margindesk
