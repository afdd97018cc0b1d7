#include "host/book/BookError.h"

#include <algorithm>

#include "host/book/Utf8.h"

namespace margindesk {

TBookError::TBookError(std::string_view file, std::string_view reason)
    : std::runtime_error(std::string(file) + ": " + std::string(reason)) {}

TBookError::TBookError(std::string_view file, std::size_t line, std::string_view column,
                       std::string_view reason)
    : std::runtime_error(std::string(file) + ":" + std::to_string(line) + ":" + std::string(column) + ": " +
                         std::string(reason)) {}

TBookChangedError::TBookChangedError(std::string_view file)
    : TBookError(file, "another program has changed the book meanwhile") {}

std::string QuotedForMessage(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  constexpr std::string_view kDigits = "0123456789abcdef";
  const bool readable = IsUtf8(text);
  std::size_t length = std::min(text.size(), kLongest);
  // A character is not cut in two.
  while (readable && length < text.size() && length > 0 &&
         (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
    --length;
  }
  std::string quoted = "\"";
  for (const char c : text.substr(0, length)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !readable)) {
      quoted += "\\x";
      quoted += kDigits[byte >> 4];
      quoted += kDigits[byte & 0xF];
    } else {
      quoted += c;
    }
  }
  return quoted + (length < text.size() ? "...\"" : "\"");
}

}  // namespace margindesk
