#include "tools/conventions/ResourceKeys.h"

#include <map>
#include <regex>
#include <string>
#include <string_view>
#include <utility>

#include "host/book/Utf8.h"
#include "tools/conventions/StringLiterals.h"

namespace margindesk {
namespace {

// Section and key, with the line where the key stands.
using TKeys = std::map<std::pair<std::string, std::string>, std::size_t>;

// The keys of a language file; what does not read as one is added to `findings`.
TKeys ReadKeys(const TSourceFile& language, std::vector<TFinding>& findings) {
  TKeys keys;
  std::string section;
  std::size_t lineNumber = 0;
  for (const std::string_view line : SplitLines(language.FText)) {
    ++lineNumber;
    const auto refuse = [&](std::string reason) {
      findings.push_back({language.FPath, lineNumber, std::move(reason)});
    };
    if (!IsUtf8(line)) refuse("is not UTF-8");
    if (line.empty() || line.starts_with(';')) continue;
    const std::size_t equals = line.find('=');
    if (line.starts_with('[') && line.ends_with(']')) {
      section = line.substr(1, line.size() - 2);
    } else if (section.empty() || equals == 0 || equals == std::string_view::npos) {
      refuse("is neither a comment nor a section nor a key of a section with its text");
    } else if (!keys.emplace(std::pair(section, line.substr(0, equals)), lineNumber).second) {
      refuse("the key " + std::string(line.substr(0, equals)) + " stands twice in [" + section + "]");
    }
  }
  return keys;
}

// Whether the literal, a part of `source`, only asks how a text begins.
bool AsksForBeginning(std::string_view source, std::string_view literal) {
  const std::size_t quote = static_cast<std::size_t>(literal.data() - source.data()) - 1;
  return source.substr(0, quote).ends_with("starts_with(");
}

std::string Shown(const TKeys::key_type& key) { return key.second + " in [" + key.first + "]"; }

}  // namespace

std::vector<TFinding> CheckLanguagesAgree(const std::vector<TSourceFile>& languages) {
  std::vector<TFinding> findings;
  std::vector<TKeys> keys;
  keys.reserve(languages.size());
  for (const TSourceFile& language : languages) keys.push_back(ReadKeys(language, findings));

  for (std::size_t has = 0; has < languages.size(); ++has) {
    for (const auto& [key, line] : keys[has]) {
      for (std::size_t lacks = 0; lacks < languages.size(); ++lacks) {
        if (keys[lacks].contains(key)) continue;
        findings.push_back({languages[has].FPath, line, languages[lacks].FPath + " lacks " + Shown(key)});
      }
    }
  }
  return findings;
}

std::vector<TFinding> CheckKeysAreTranslated(const std::vector<TSourceFile>& sources,
                                             const std::vector<TSourceFile>& languages) {
  static const std::regex keyPattern(R"(\b([Rr]es_\w*|DC[A-Z]*\d+)\b)", std::regex::optimize);
  std::vector<TFinding> findings;
  std::vector<TFinding> ownFaults;
  std::vector<TKeys> keys;
  keys.reserve(languages.size());
  for (const TSourceFile& language : languages) keys.push_back(ReadKeys(language, ownFaults));

  for (const TSourceFile& source : sources) {
    for (const auto& [text, line] : StringLiterals(source.FText)) {
      if (AsksForBeginning(source.FText, text)) continue;
      for (std::cregex_iterator match(text.data(), text.data() + text.size(), keyPattern), end; match != end;
           ++match) {
        const std::string key = match->str();
        if (key.ends_with('_')) {
          findings.push_back({source.FPath, line, "a key must be written whole: " + key});
          continue;
        }
        const TKeys::key_type wanted(key.starts_with("DC") ? "ErrorCode" : "Resource", key);
        for (std::size_t lacks = 0; lacks < languages.size(); ++lacks) {
          if (keys[lacks].contains(wanted)) continue;
          findings.push_back({source.FPath, line, languages[lacks].FPath + " lacks " + Shown(wanted)});
        }
      }
    }
  }
  return findings;
}

}  // namespace margindesk
