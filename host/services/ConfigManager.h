#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/services/ConfigStore.h"
#include "model/contract/ConfigManager.h"

namespace margindesk {

// The section of what belongs to the terminal rather than to a user.
inline constexpr std::string_view kPlatformSection = "OMS_TRADEPLATFORM";

// The configuration. Every value is held in memory, so that reading never touches the disk; values
// are kept byte by byte.
class TConfigManager : public TCustomConfigManager {
 public:
  // Kept in memory alone: gone with the object.
  explicit TConfigManager(std::string_view user);
  // Kept in a file (see TConfigStore). Throws TConfigError when it cannot be used.
  TConfigManager(const std::filesystem::path& file, std::string_view user);

  void AddConfigUpdateHandler(THandler handler, const void* owner) override;
  void RemoveConfigUpdateHandler(const void* owner) override;
  std::string ReadString(std::string_view section, std::string_view key) const override;
  std::int32_t ReadInteger(std::string_view section, std::string_view key) const override;
  // A flag that says neither yes nor no is false, but for the five zero-decimals keys ("AmountDecimal" and so
  // on): zeros are shown until they are turned off.
  bool ReadBool(std::string_view section, std::string_view key) const override;
  // "User." and the user's name; "User" when nobody is signed in.
  std::string GetUserSection() const override;
  // A value that cannot be stored is not taken: reads keep giving what is on the disk, nobody is notified,
  // and the user is told through the message box.
  void WriteString(std::string_view section, std::string_view key, std::string_view value,
                   bool notify) override;
  // True unless "ApplyGridLayout" of the platform section is "N".
  bool CanApplyLayout() const override;

  // WriteString for a caller that reports a failure itself: throws TConfigError. With notify the handlers are
  // called when the value changed, or when an earlier change has not been announced yet.
  void Store(std::string_view section, std::string_view key, std::string_view value, bool notify);

  // Puts a value in the place of the stored one for as long as this object lives: nothing is written, and
  // nobody is told.
  void Override(std::string_view section, std::string_view key, std::string_view value) {
    Keep(section, key, value);
  }

  const THandlerList& Handlers() const noexcept { return FHandlers; }

  // Between the two nobody is notified; the last EndHold does it, once, if something was to be announced.
  void BeginHold() noexcept { ++FHolds; }
  void EndHold() {
    if (--FHolds == 0 && std::exchange(FDue, false)) Announce();
  }

 private:
  using TSection = std::map<std::string, std::string, std::less<>>;

  // The stored text, or the empty one.
  std::string_view Find(std::string_view section, std::string_view key) const;
  void Keep(std::string_view section, std::string_view key, std::string_view value);

  std::optional<TConfigStore> FStore;  // none in memory
  const std::string FUserSection;
  std::map<std::string, TSection, std::less<>> FSections;
  void Announce();

  bool FUnannounced = false;  // written since the last notification
  bool FDue = false;          // a notification was held back
  std::int32_t FHolds = 0;
  THandlerList FHandlers;
};

// Holds the notifications back while it lives.
class TConfigHold {
 public:
  explicit TConfigHold(TConfigManager& config) : FConfig(config) { FConfig.BeginHold(); }
  ~TConfigHold() { FConfig.EndHold(); }
  TConfigHold(const TConfigHold&) = delete;
  TConfigHold& operator=(const TConfigHold&) = delete;

 private:
  TConfigManager& FConfig;
};

}  // namespace margindesk
