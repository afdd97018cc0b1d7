#include "tools/conventions/StringLiterals.h"

#include <algorithm>
#include <string>

namespace margindesk {
namespace {

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

class TScanner {
 public:
  explicit TScanner(std::string_view source) : FSource(source) {}

  std::vector<TStringLiteral> Scan() {
    while (FAt < FSource.size()) {
      const std::string_view rest = FSource.substr(FAt);
      if (rest.starts_with("//")) {
        SkipTo(FSource.find('\n', FAt));
      } else if (rest.starts_with("/*")) {
        SkipPast("*/", FAt + 2);
      } else if (rest.starts_with("R\"") && !AfterWord()) {
        TakeRaw();
      } else if (rest.front() == '"') {
        TakeQuoted();
      } else if (rest.front() == '\'' && !AfterWord()) {
        SkipTo(EndOfQuoted('\'') + 1);
      } else {
        SkipTo(FAt + 1);
      }
    }
    return std::move(FLiterals);
  }

 private:
  // Whether the character before belongs to a word: a digit separator is no character literal, xR"" no raw
  // string.
  bool AfterWord() const { return FAt > 0 && IsWordCharacter(FSource[FAt - 1]); }

  void SkipTo(std::size_t position) {
    position = std::min(position, FSource.size());
    FLine += static_cast<std::size_t>(std::ranges::count(FSource.substr(FAt, position - FAt), '\n'));
    FAt = position;
  }

  void SkipPast(std::string_view end, std::size_t from) {
    const std::size_t found = FSource.find(end, from);
    SkipTo(found == std::string_view::npos ? found : found + end.size());
  }

  // Where the literal that begins here has its closing quote.
  std::size_t EndOfQuoted(char quote) const {
    std::size_t end = FAt + 1;
    while (end < FSource.size() && FSource[end] != quote && FSource[end] != '\n') {
      end += FSource[end] == '\\' ? 2U : 1U;
    }
    return std::min(end, FSource.size());
  }

  void TakeQuoted() {
    const std::size_t end = EndOfQuoted('"');
    FLiterals.push_back({FSource.substr(FAt + 1, end - FAt - 1), FLine});
    SkipTo(end + 1);
  }

  void TakeRaw() {
    const std::size_t open = FSource.find('(', FAt);
    if (open == std::string_view::npos) return SkipTo(open);
    const std::string close = ")" + std::string(FSource.substr(FAt + 2, open - FAt - 2)) + "\"";
    const std::size_t end = std::min(FSource.find(close, open), FSource.size());
    FLiterals.push_back({FSource.substr(open + 1, end - open - 1), FLine});
    SkipTo(end + close.size());
  }

  std::string_view FSource;
  std::size_t FAt = 0;
  std::size_t FLine = 1;
  std::vector<TStringLiteral> FLiterals;
};

}  // namespace

std::vector<TStringLiteral> StringLiterals(std::string_view source) { return TScanner(source).Scan(); }

}  // namespace margindesk
