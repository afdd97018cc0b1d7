#include "host/services/WorkspaceStore.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <nlohmann/json.hpp>

#include "host/book/BookError.h"
#include "host/book/Utf8.h"
#include "host/services/LocalFile.h"

namespace margindesk {

namespace {

constexpr std::size_t kLongestName = 100;  // bytes
constexpr std::string_view kExtension = ".json";
constexpr const char* kVersionKey = "margindesk_workspace";
constexpr const char* kViewsKey = "views";
constexpr const char* kHexKey = "hex";
constexpr std::int64_t kVersion = 1;

// Limits of a file that is read, and so of one that is written: far above what people open, far below what
// would hold the terminal up.
constexpr std::int64_t kLargestFile = 16 << 20;  // bytes
constexpr std::size_t kMostViews = 500;
constexpr int kDeepest = 4;  // the digits of a view's text

struct TTextField {
  const char* FKey;
  std::string TWorkspaceView::*FText;
};
constexpr TTextField kTextFields[] = {{"class", &TWorkspaceView::FClass},
                                      {"group", &TWorkspaceView::FGroup},
                                      {"layout", &TWorkspaceView::FLayout}};

// Why a text is no workspace.
class TDamage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// JSON holds UTF-8 alone. Any other text is written as the digits of its bytes.
nlohmann::ordered_json WriteText(const std::string& text) {
  if (IsUtf8(text)) return text;
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    digits += kDigits[byte >> 4];
    digits += kDigits[byte & 0xF];
  }
  return {{kHexKey, digits}};
}

int DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

std::optional<std::string> ReadText(const nlohmann::json& value) {
  if (value.is_string()) return value.get<std::string>();
  const auto found = value.is_object() ? value.find(kHexKey) : value.end();
  if (!value.is_object() || found == value.end() || !found->is_string()) return std::nullopt;
  const auto& digits = found->get_ref<const std::string&>();
  if (digits.size() % 2 != 0) return std::nullopt;
  std::string text;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const int high = DigitValue(digits[i]), low = DigitValue(digits[i + 1]);
    if (high < 0 || low < 0) return std::nullopt;
    text += static_cast<char>(high * 16 + low);
  }
  return text;
}

std::string Encode(const TWorkspace& workspace) {
  nlohmann::ordered_json views = nlohmann::ordered_json::array();
  for (const TWorkspaceView& view : workspace) {
    nlohmann::ordered_json entry;
    for (const TTextField& field : kTextFields) entry[field.FKey] = WriteText(view.*field.FText);
    views.push_back(std::move(entry));
  }
  return nlohmann::ordered_json{{kVersionKey, kVersion}, {kViewsKey, std::move(views)}}.dump(1) + "\n";
}

nlohmann::json Parse(const std::string& text) {
  const auto refuseDepth = [](int depth, nlohmann::json::parse_event_t /*event*/, nlohmann::json& /*value*/) {
    if (depth > kDeepest) throw TDamage("nested too deep");
    return true;
  };
  try {
    return nlohmann::json::parse(text, refuseDepth);
  } catch (const nlohmann::json::parse_error& error) {
    throw TDamage("no JSON from byte " + std::to_string(error.byte));
  } catch (const nlohmann::json::exception&) {  // a number that no double holds
    throw TDamage("no JSON");
  }
}

TWorkspace Decode(const std::string& text) {
  const nlohmann::json root = Parse(text);
  const auto version = root.is_object() ? root.find(kVersionKey) : root.end();
  if (!root.is_object() || version == root.end()) throw TDamage("no workspace of MarginDesk");
  if (!version->is_number_integer() || *version != kVersion) throw TDamage("unknown version");
  const auto views = root.find(kViewsKey);
  if (views == root.end() || !views->is_array()) throw TDamage("no list of views");
  if (views->size() > kMostViews) throw TDamage("more than " + std::to_string(kMostViews) + " views");

  TWorkspace workspace;
  for (const nlohmann::json& entry : *views) {
    TWorkspaceView& view = workspace.emplace_back();
    for (const TTextField& field : kTextFields) {
      const auto found = entry.is_object() ? entry.find(field.FKey) : entry.end();
      auto value = entry.is_object() && found != entry.end() ? ReadText(*found) : std::nullopt;
      if (!value) {
        throw TDamage("view " + std::to_string(workspace.size()) + ": no " + field.FKey);
      }
      view.*field.FText = std::move(*value);
    }
  }
  return workspace;
}

[[noreturn]] void Refuse(const std::filesystem::path& file, const std::string& reason, bool damaged = false) {
  throw TWorkspaceError(file.string() + ": " + reason, damaged);
}

}  // namespace

bool TWorkspaceStore::IsName(const std::string& name) {
  return !name.empty() && name.size() <= kLongestName && name.front() != '.' && name.front() != ' ' &&
         IsUtf8(name) && std::ranges::none_of(name, [](char c) {
           return static_cast<unsigned char>(c) < 0x20 || c == 0x7F || c == '/' || c == '\\';
         });
}

void TWorkspaceStore::Save(const std::string& name, const TWorkspace& workspace) const {
  const std::filesystem::path file = FileOf(name);
  if (workspace.size() > kMostViews) Refuse(file, "more than " + std::to_string(kMostViews) + " views");
  const std::string text = Encode(workspace);
  if (static_cast<std::int64_t>(text.size()) > kLargestFile) Refuse(file, TooLarge(kLargestFile));
  std::error_code failed;
  std::filesystem::create_directories(FFolder, failed);
  if (failed) Refuse(FFolder, failed.message());
  std::string reason;
  if (!ReplaceLocalFile(file.string(), text, reason)) Refuse(file, reason);
}

TWorkspace TWorkspaceStore::Load(const std::string& name) const {
  const std::filesystem::path file = FileOf(name);
  std::string reason;
  const auto text = ReadLocalFile(file.string(), kLargestFile, reason);
  if (!text) Refuse(file, reason, reason == TooLarge(kLargestFile));
  try {
    return Decode(*text);
  } catch (const TDamage& damage) {
    Refuse(file, damage.what(), true);
  }
}

std::vector<std::string> TWorkspaceStore::List() const {
  std::vector<std::string> names;
  std::error_code failed;
  for (std::filesystem::directory_iterator entry(FFolder, failed), end; !failed && entry != end;
       entry.increment(failed)) {
    std::string name = entry->path().filename().string();
    if (!name.ends_with(kExtension)) continue;
    name.resize(name.size() - kExtension.size());
    if (IsName(name)) names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

std::string TWorkspaceStore::SetAside(const std::string& name) const {
  const std::filesystem::path file = FileOf(name);
  for (int number = 1;; ++number) {
    const std::string newName = name + ".damaged-" + std::to_string(number);
    if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, (FFolder / newName).c_str(), RENAME_NOREPLACE) == 0) {
      return newName;
    }
    if (errno != EEXIST) Refuse(file, "cannot be set aside: " + std::generic_category().message(errno));
  }
}

std::filesystem::path TWorkspaceStore::FileOf(const std::string& name) const {
  if (!IsName(name)) throw TWorkspaceError(QuotedForMessage(name) + ": no name for a workspace", false);
  return FFolder / (name + std::string(kExtension));
}

}  // namespace margindesk
