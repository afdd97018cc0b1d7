#include "model/contract/Code.h"

#include <deque>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include "model/contract/Variant.h"

namespace margindesk {

// Made before every other static object of this library, so that codes may be made, read and compared while
// static objects are initialised; other libraries are initialised later anyway.
[[gnu::init_priority(101)]] const TCodeEntry kEmptyCodeEntry{std::string(), &kEmptyCodeEntry, 0};

namespace {

// Every text that has become a code. Entries never move and never go.
class TCodeTable {
 public:
  const TCodeEntry* Intern(std::string_view text) {
    {
      const std::shared_lock lock(FMutex);
      if (const TCodeEntry* entry = Find(text)) return entry;
    }
    const std::string folded = UpperCaseText(text);
    const std::unique_lock lock(FMutex);
    if (const TCodeEntry* entry = Find(text)) return entry;  // another thread came first
    if (folded == text) return Add(text, nullptr);
    const TCodeEntry* foldedEntry = Find(folded);
    return Add(text, foldedEntry != nullptr ? foldedEntry : Add(folded, nullptr));
  }

  std::uint32_t GetCount() noexcept {
    const std::shared_lock lock(FMutex);
    return static_cast<std::uint32_t>(FEntries.size()) + 1;
  }

 private:
  const TCodeEntry* Find(std::string_view text) const {
    const auto found = FByText.find(text);
    return found == FByText.end() ? nullptr : found->second;
  }

  const TCodeEntry* Add(std::string_view text, const TCodeEntry* folded) {
    const auto number = static_cast<std::uint32_t>(FEntries.size()) + 1;
    TCodeEntry& entry = FEntries.emplace_back(TCodeEntry{std::string(text), folded, number});
    if (folded == nullptr) entry.FFolded = &entry;
    FByText.emplace(entry.FText, &entry);
    return &entry;
  }

  std::shared_mutex FMutex;
  std::deque<TCodeEntry> FEntries;
  std::unordered_map<std::string_view, const TCodeEntry*> FByText;
};

// Never destroyed: codes live as long as the process.
TCodeTable& GetTable() {
  static TCodeTable& table = *new TCodeTable;
  return table;
}

}  // namespace

TCode::TCode(std::string_view text) : FEntry(text.empty() ? &kEmptyCodeEntry : GetTable().Intern(text)) {}

std::uint32_t GetCodeCount() noexcept { return GetTable().GetCount(); }

}  // namespace margindesk
