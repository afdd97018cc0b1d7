#include "model/CommaText.h"

#include <algorithm>

namespace margindesk {

namespace {

bool IsBlank(char letter) { return static_cast<unsigned char>(letter) <= ' '; }

void SkipBlanks(std::string_view& text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
}

// Takes a quoted item off the front; a quote that is never closed runs to the end of the text.
std::string TakeQuoted(std::string_view& text) {
  std::string item;
  text.remove_prefix(1);
  while (!text.empty()) {
    if (text.front() == '"') {
      text.remove_prefix(1);
      if (text.empty() || text.front() != '"') return item;
    }
    item += text.front();
    text.remove_prefix(1);
  }
  return item;
}

std::string TakePlain(std::string_view& text) {
  const auto end = std::find_if(text.begin(), text.end(), [](char c) { return c == ',' || IsBlank(c); });
  std::string item(text.begin(), end);
  text.remove_prefix(item.size());
  return item;
}

}  // namespace

std::vector<std::string> SplitCommaText(std::string_view text) {
  std::vector<std::string> items;
  SkipBlanks(text);
  while (!text.empty()) {
    items.push_back(text.front() == '"' ? TakeQuoted(text) : TakePlain(text));
    SkipBlanks(text);
    if (text.empty() || text.front() != ',') continue;
    text.remove_prefix(1);
    SkipBlanks(text);
    if (text.empty()) items.emplace_back();
  }
  return items;
}

std::string JoinCommaText(const std::vector<std::string>& items) {
  if (items.size() == 1 && items.front().empty()) return "\"\"";
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += ',';
    const std::string& item = items[i];
    if (std::none_of(item.begin(), item.end(), [](char c) { return c == ',' || c == '"' || IsBlank(c); })) {
      text += item;
      continue;
    }
    text += '"';
    for (const char letter : item) {
      if (letter == '"') text += '"';
      text += letter;
    }
    text += '"';
  }
  return text;
}

}  // namespace margindesk
