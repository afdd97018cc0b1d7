#include "terminal/cli/ScriptLine.h"

#include <set>

#include "host/book/BookError.h"
#include "host/book/Utf8.h"
#include "model/contract/Variant.h"
#include "terminal/cli/ScriptArguments.h"

namespace margindesk {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr int kDeepest = 8;  // a step is an object of scalars and lists of texts

}  // namespace

bool TScriptReader::ReadLine() {
  constexpr auto kEnd = std::istream::traits_type::eof();
  std::streambuf* const buffer = FIn.rdbuf();
  FLine.clear();
  FTooLong = false;
  bool any = false;
  for (;;) {
    const auto character = buffer->sbumpc();
    if (character == kEnd) break;
    any = true;
    if (character == '\n') break;
    if (FLine.size() < kLongestLine) {
      FLine += static_cast<char>(character);
    } else {
      FTooLong = true;
    }
  }
  if (any && ++FNumber == 1 && FLine.starts_with(kByteOrderMark)) FLine.erase(0, kByteOrderMark.size());
  return any;
}

bool TScriptReader::Next() {
  while (ReadLine()) {
    const std::string_view text = TrimText(FLine);
    if (text.empty() ? FTooLong : text.front() != '#') return true;
  }
  return false;
}

TJson ParseScriptLine(std::string_view line) {
  if (!IsUtf8(line)) throw TScriptError("the line is not UTF-8");
  std::set<std::string> names;
  const auto check = [&names](int depth, TJson::parse_event_t event, const TJson& value) {
    if (depth > kDeepest) throw TScriptError("the line is nested too deeply");
    if (depth == 1 && event == TJson::parse_event_t::key && !names.insert(value.get<std::string>()).second) {
      throw TScriptError(QuotedForMessage(value.get<std::string>()) + " is there twice");
    }
    return true;
  };
  TJson step;
  try {
    step = TJson::parse(line, check);
  } catch (const TJson::parse_error& error) {
    throw TScriptError("the line is no JSON: byte " + std::to_string(error.byte) + " is not expected");
  } catch (const TJson::exception&) {
    throw TScriptError("the line is no JSON: a number is too large");
  }
  if (!step.is_object()) throw TScriptError("the line is no JSON object");
  return step;
}

}  // namespace margindesk
