#include "terminal/desktop/FirstSettings.h"

#include <array>
#include <string>
#include <string_view>

#include "terminal/session/Locations.h"

namespace margindesk {

namespace {

constexpr std::string_view kWrittenKey = "DesktopFirstSettings";

struct TFirstSetting {
  std::string_view FSection;  // "" for the user's
  std::string_view FKey;
  std::string_view FValue;
};

constexpr std::string_view kChangedColorKey = "coMarginSimulateDiffBgColor";

constexpr std::array kFirstSettings{
    TFirstSetting{"", "Default_AccountInfoColumn",
                  "TradingLimit,CashBalance,Equity,PL,UnrealizedPL,RealizedPL,I.Margin,M.Margin,MarginLevel,"
                  "MarginCall,PurchasingPower,Charges,MarginMethod,OnlineStatus"},
    TFirstSetting{"", "AcctInfo_PosCol", "Symbol,Side,Qty,MarketValue,UnrealizedPL,PL"},
    TFirstSetting{"", "PVAllowAggregatedSubAcct", "Y"},
    TFirstSetting{"", "ConfirmationClosePosition", "Y"},
    // Amber behind simulated figures, blue-green-red: red is left to losses.
    TFirstSetting{"Light", kChangedColorKey, "$8AE0FF"},
    TFirstSetting{"Dark", kChangedColorKey, "$00527A"},
};

}  // namespace

void WriteFirstSettings(TConfigManager& config, const std::filesystem::path& resources) {
  const std::string user = config.GetUserSection();
  if (config.ReadBool(user, kWrittenKey)) return;
  const auto write = [&](std::string_view section, std::string_view key, std::string_view value) {
    if (section.empty()) section = user;
    if (config.ReadString(section, key).empty()) config.WriteString(section, key, value, false);
  };
  for (const TFirstSetting& setting : kFirstSettings) write(setting.FSection, setting.FKey, setting.FValue);
  write(user, "FormulaURL", MakeFileAddress(resources / "formulas.txt"));
  config.WriteString(user, kWrittenKey, "Y", false);
}

}  // namespace margindesk
