#include "terminal/desktop/FirstSettings.h"

#include <array>
#include <string>
#include <string_view>

#include "terminal/session/Locations.h"

namespace margindesk {

namespace {

constexpr std::string_view kWrittenKey = "DesktopFirstSettings";

struct TFirstSetting {
  std::string_view FKey;  // in the user's section
  std::string_view FValue;
};

constexpr std::array kFirstSettings{
    TFirstSetting{"Default_AccountInfoColumn",
                  "TradingLimit,CashBalance,Equity,PL,UnrealizedPL,RealizedPL,I.Margin,M.Margin,MarginLevel,"
                  "MarginCall,PurchasingPower,HoldFund,Charges,MarginMethod,OnlineStatus"},
    TFirstSetting{"AcctInfo_PosCol", "Symbol,Side,Qty,MarketValue,UnrealizedPL,PL"},
    TFirstSetting{"PVAllowAggregatedSubAcct", "Y"},
    TFirstSetting{"ConfirmationClosePosition", "Y"},
};

}  // namespace

void WriteFirstSettings(TConfigManager& config, const std::filesystem::path& resources) {
  const std::string section = config.GetUserSection();
  if (config.ReadBool(section, kWrittenKey)) return;
  const auto write = [&](std::string_view key, std::string_view value) {
    if (config.ReadString(section, key).empty()) config.WriteString(section, key, value, false);
  };
  for (const TFirstSetting& setting : kFirstSettings) write(setting.FKey, setting.FValue);
  write("FormulaURL", MakeFileAddress(resources / "formulas.txt"));
  config.WriteString(section, kWrittenKey, "Y", false);
}

}  // namespace margindesk
