#include "host/services/LanguageFile.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <system_error>
#include <utility>

#include "host/book/Utf8.h"

namespace margindesk {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Cuts the first line, without its line feed, off the text.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

// The text with its escapes replaced; none when it holds an unknown one.
std::optional<std::string> Unescaped(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    if (text[index] != '\\') {
      result += text[index];
      continue;
    }
    ++index;
    const char escape = index < text.size() ? text[index] : '\0';
    if (escape == 'n') {
      result += '\n';
    } else if (escape == 's') {
      result += ' ';
    } else if (escape == '\\') {
      result += '\\';
    } else {
      return std::nullopt;
    }
  }
  return result;
}

}  // namespace

TLanguageFile TLanguageFile::Parse(std::string_view text, std::string_view fileName) {
  TLanguageFile file;
  TSection* section = nullptr;
  std::size_t lineNumber = 0;
  const auto refusal = [&](std::string_view reason) {
    std::string message(fileName);
    message.append(":").append(std::to_string(lineNumber)).append(": ").append(reason);
    return TLanguageFileError(message);
  };

  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  while (!text.empty()) {
    ++lineNumber;
    const std::string_view line = Trimmed(TakeLine(text));
    if (!IsUtf8(line)) throw refusal("not UTF-8");
    if (line.empty() || line.front() == ';') continue;

    if (line.front() == '[') {
      if (line.find(']') != line.size() - 1) throw refusal("a section header ends with its first ']'");
      const std::string_view name = Trimmed(line.substr(1, line.size() - 2));
      if (name.empty()) throw refusal("a section without a name");
      section = &file.OpenSection(name);
      continue;
    }

    const std::size_t separator = line.find('=');
    if (separator == std::string_view::npos) throw refusal("a line without '='");
    if (section == nullptr) throw refusal("a key outside a section");
    const std::string_view fullKey = Trimmed(line.substr(0, separator));
    const std::size_t dot = fullKey.find('.');
    const bool isNamedValue = dot != std::string_view::npos;
    const std::string_view key = Trimmed(fullKey.substr(0, dot));
    const std::string_view name = isNamedValue ? Trimmed(fullKey.substr(dot + 1)) : std::string_view();
    if (key.empty()) throw refusal("a text without a key");
    if (isNamedValue && name.empty()) throw refusal("a named value without a name");
    std::optional<std::string> value = Unescaped(Trimmed(line.substr(separator + 1)));
    if (!value) throw refusal(R"(an unknown escape; only \n, \s and \\ are known)");

    const auto [found, isNewKey] = section->FEntries.try_emplace(std::string(key));
    if (isNewKey) section->FKeys.emplace_back(key);
    TEntry& entry = found->second;
    if (isNamedValue ? entry.FValues.contains(name) : entry.FText.has_value()) {
      throw refusal("a second text for '" + std::string(fullKey) + "'");
    }
    if (isNamedValue) {
      entry.FValues.emplace(name, *std::move(value));
    } else {
      entry.FText = std::move(value);
    }
  }
  return file;
}

const std::string* TLanguageFile::Text(std::string_view section, std::string_view key) const {
  const TEntry* entry = Find(section, key);
  return entry != nullptr && entry->FText ? &*entry->FText : nullptr;
}

const std::string* TLanguageFile::Value(std::string_view section, std::string_view key,
                                        std::string_view name) const {
  const TEntry* entry = Find(section, key);
  if (entry == nullptr) return nullptr;
  const auto value = entry->FValues.find(name);
  return value == entry->FValues.end() ? nullptr : &value->second;
}

const std::vector<std::string>& TLanguageFile::Keys(std::string_view section) const {
  static const std::vector<std::string> kNoKeys;
  const auto found = FSections.find(section);
  return found == FSections.end() ? kNoKeys : found->second.FKeys;
}

// A section that comes a second time goes on where it ended.
TLanguageFile::TSection& TLanguageFile::OpenSection(std::string_view name) {
  const auto [section, isNew] = FSections.try_emplace(std::string(name));
  if (isNew) FSectionNames.emplace_back(name);
  return section->second;
}

const TLanguageFile::TEntry* TLanguageFile::Find(std::string_view section, std::string_view key) const {
  const auto foundSection = FSections.find(section);
  if (foundSection == FSections.end()) return nullptr;
  const auto foundEntry = foundSection->second.FEntries.find(key);
  return foundEntry == foundSection->second.FEntries.end() ? nullptr : &foundEntry->second;
}

TLanguageFile LoadLanguageFile(const std::filesystem::path& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  std::string text(error ? 0 : size, '\0');
  std::ifstream stream(path, std::ios::binary);
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (error || !stream) throw TLanguageFileError(path.string() + ": cannot be read");
  return TLanguageFile::Parse(text, path.string());
}

}  // namespace margindesk
