// Any text as the values of the configuration that an account information view reads, a line each: it opens,
// shows its cells, follows a change and goes.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>

#include "accountinfo/view/AccountInfoView.h"
#include "fuzz/FuzzHost.h"
#include "model/contract/Constdef.h"

namespace {

using namespace margindesk;

struct TSetting {
  std::string_view FSection;  // empty: the user's
  std::string_view FKey;
};

// Addresses are left out: they would be fetched. New keys go to the end, the seeds go by the order.
constexpr TSetting kSettings[] = {{"", "Default_AccountInfoColumn"},
                                  {"", "Stock_AccountInfoColumn"},
                                  {"", "Futures_AccountInfoColumn"},
                                  {"", "AcctInfo_PosCol"},
                                  {"LayoutTemplate", "AccountInfo"},
                                  {"", "PVAllowAggregatedSubAcct"},
                                  {"", "ConfirmationClosePosition"},
                                  {"", "OrderBookOpenNewPV"},
                                  {"", "AcctInfo_URL"},
                                  {"", "AcctInfoShow3LvInfo"},
                                  {"OMS_TRADEPLATFORM", "ScaleSize"},
                                  {"", "NetEquityMargin"},
                                  {"", "MarginLevelMode"},
                                  {"", "ApplyDDSPL"},
                                  {"", "AvgPriceMode"},
                                  {"", "AmountPrecision"},
                                  {"", "AmountDecimal"},
                                  {"", "DefaultPrecision"},
                                  {"", "CurrencyPrecision"},
                                  {"", "UserType"},
                                  {"", "UserTypeFlag"},
                                  {"", "DefaultAccount"},
                                  {"", "WatchList"}};

struct TPaintedView : TAccountInfoFrame {
  using TAccountInfoFrame::TAccountInfoFrame;

  // Asks for every text, as painting does.
  std::string Paint() {
    std::string texts;
    for (const TVirtualTreeNode* node : AccountInfoTree->GetNodes())
      for (const std::int32_t tag : {kCellCaption, kCellValue})
        if (const TTreeColumn* column = AccountInfoTree->FindColumn(tag))
          texts += AccountInfoTree->GetDisplayText(node, *column);
    return texts;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static TReferenceHost host(MakeFuzzContents(), MakeFuzzOptions());
  auto& config = host.Config();
  std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const TSetting& setting : kSettings) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view value = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    const std::string section(setting.FSection.empty() ? config.GetUserSection() : setting.FSection);
    config.WriteString(section, setting.FKey, value, &setting == std::prev(std::end(kSettings)));
    Require(config.ReadString(section, setting.FKey) == value, "a value is not read as it was written");
  }
  auto frame = CreateViewFrame<TPaintedView>(nullptr);
  for (const char* account : {"M1", "S1", "NONE"}) {
    frame->SetAccount(TCode(account));
    while (host.Loop().RunOnce()) continue;
    frame->Paint();
  }
  const std::string before = frame->Paint();
  frame->ConfigUpdate(nullptr, nullptr);
  Require(frame->Paint() == before, "the same configuration, read again, has changed the view");
  frame.reset();
  Require(host.CountRegistrations() == 0, "a closed view is still registered");
  return 0;
}
