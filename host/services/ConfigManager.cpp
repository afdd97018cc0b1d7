#include "host/services/ConfigManager.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

std::string SectionOf(std::string_view user) {
  return user.empty() ? std::string("User") : std::string("User.").append(user);
}

// Flags that are true until they are turned off.
constexpr std::string_view kTrueUntilNo[] = {"AmountDecimal", "QtyDecimal", "DefaultDecimal",
                                             "QuotedPriceDecimal", "CurrencyDecimal"};

}  // namespace

TConfigManager::TConfigManager(std::string_view user) : FUserSection(SectionOf(user)) {}

TConfigManager::TConfigManager(const std::filesystem::path& file, std::string_view user)
    : FStore(std::in_place, file), FUserSection(SectionOf(user)) {
  FStore->ReadAll([this](std::string_view section, std::string_view key, std::string_view value) {
    Keep(section, key, value);
  });
}

void TConfigManager::AddConfigUpdateHandler(THandler handler, const void* owner) {
  FHandlers.Add(handler, owner);
}

void TConfigManager::RemoveConfigUpdateHandler(const void* owner) { FHandlers.RemoveOwner(owner); }

std::string TConfigManager::ReadString(std::string_view section, std::string_view key) const {
  return std::string(Find(section, key));
}

std::int32_t TConfigManager::ReadInteger(std::string_view section, std::string_view key) const {
  std::int32_t value = 0;
  TryTextToInteger(Find(section, key), value);
  return value;
}

bool TConfigManager::ReadBool(std::string_view section, std::string_view key) const {
  const std::string_view text = Find(section, key);
  if (text == "Y" || text == "y") return true;
  return text != "N" && text != "n" && std::ranges::find(kTrueUntilNo, key) != std::end(kTrueUntilNo);
}

std::string TConfigManager::GetUserSection() const { return FUserSection; }

void TConfigManager::WriteString(std::string_view section, std::string_view key, std::string_view value,
                                 bool notify) {
  try {
    Store(section, key, value, notify);
  } catch (const TConfigError& error) {
    if (TCustomMessageBoxCtrl::HasInstance()) TCustomMessageBoxCtrl::GetInstance().ShowMessage(error.what());
  }
}

bool TConfigManager::CanApplyLayout() const { return Find(kPlatformSection, "ApplyGridLayout") != "N"; }

void TConfigManager::Store(std::string_view section, std::string_view key, std::string_view value,
                           bool notify) {
  if (Find(section, key) != value) {
    if (FStore) FStore->Put(section, key, value);
    Keep(section, key, value);
    FUnannounced = true;
  }
  if (notify && FHolds > 0) {
    FDue = true;
  } else if (notify) {
    Announce();
  }
}

void TConfigManager::Announce() {
  if (std::exchange(FUnannounced, false)) FHandlers.Notify(nullptr, nullptr);
}

std::string_view TConfigManager::Find(std::string_view section, std::string_view key) const {
  const auto foundSection = FSections.find(section);
  if (foundSection == FSections.end()) return {};
  const auto found = foundSection->second.find(key);
  return found == foundSection->second.end() ? std::string_view() : std::string_view(found->second);
}

void TConfigManager::Keep(std::string_view section, std::string_view key, std::string_view value) {
  FSections[std::string(section)][std::string(key)] = value;
}

}  // namespace margindesk
