#include "host/book/Csv.h"

#include <algorithm>
#include <utility>

#include "host/book/Utf8.h"

namespace margindesk {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

TCsvReader::TCsvReader(std::string_view text) : FText(text) {
  if (FText.starts_with(kByteOrderMark)) FPosition = kByteOrderMark.size();
}

bool TCsvReader::Next() {
  FFields.clear();
  FUnquoted.clear();
  if (FPosition >= FText.size()) return false;
  do {
    ReadField();
  } while (!EndsRecord());
  return true;
}

void TCsvReader::ReadField() {
  const std::size_t line = FLine;
  const bool quoted = FPosition < FText.size() && FText[FPosition] == '"';
  const std::string_view text = quoted ? ReadQuotedText() : ReadPlainText();
  if (!IsUtf8(text)) Fail(line, "not UTF-8");
  if (text.find('\0') != std::string_view::npos) Fail(line, "a zero byte");
  FFields.push_back({text, line});
}

std::string_view TCsvReader::ReadPlainText() {
  const std::size_t begin = FPosition;
  FPosition = std::min(FText.find_first_of(",\r\n\"", begin), FText.size());
  if (FPosition < FText.size() && FText[FPosition] == '"')
    Fail(FLine, "a quote inside a field without quotes");
  return FText.substr(begin, FPosition - begin);
}

std::string_view TCsvReader::ReadQuotedText() {
  const std::size_t firstLine = FLine;
  std::size_t begin = ++FPosition;
  std::string unquoted;
  bool hasDoubledQuotes = false;
  for (;;) {
    const std::size_t quote = FText.find('"', FPosition);
    if (quote == std::string_view::npos) Fail(firstLine, "a quote that is never closed");
    const std::string_view part = FText.substr(begin, quote - begin);
    FLine += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
    FPosition = quote + 1;
    if (FPosition >= FText.size() || FText[FPosition] != '"') {
      if (!hasDoubledQuotes) return part;
      FUnquoted.push_back(unquoted.append(part));
      return FUnquoted.back();
    }
    hasDoubledQuotes = true;
    unquoted.append(part).push_back('"');
    begin = ++FPosition;
  }
}

// Steps over what follows a field: a comma, or the end of the record.
bool TCsvReader::EndsRecord() {
  if (FPosition >= FText.size()) return true;
  const char c = FText[FPosition];
  // Fail names the field being read; the one before is at fault here.
  if (c != ',' && c != '\r' && c != '\n') {
    FFields.pop_back();
    Fail(FLine, "text after the closing quote");
  }
  ++FPosition;
  if (c == ',') return false;
  if (c == '\r') {
    if (FPosition >= FText.size() || FText[FPosition] != '\n') {
      FFields.pop_back();
      Fail(FLine, "a carriage return without a line feed");
    }
    ++FPosition;
  }
  ++FLine;
  return true;
}

void TCsvReader::Fail(std::size_t line, std::string reason) const {
  throw TCsvFault{line, FFields.size(), std::move(reason)};
}

void AppendCsvField(std::string& out, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += field;
    return;
  }
  out += '"';
  for (const char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

}  // namespace margindesk
