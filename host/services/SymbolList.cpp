#include "host/services/SymbolList.h"

#include <algorithm>
#include <tuple>

#include "model/ResourceText.h"
#include "model/contract/BaseMarketData.h"
#include "model/contract/Constdef.h"
#include "model/contract/Datadef.h"
#include "model/contract/Variant.h"

namespace margindesk {

namespace {

constexpr std::int32_t kPanelSize = 400;

class TChosenSymbol final : public TCustomMarketData {
 public:
  explicit TChosenSymbol(TCode symbol) : FSymbol(symbol) {}
  TCode GetSymbol() const override { return FSymbol; }

 private:
  TCode FSymbol;
};

}  // namespace

TSymbolListPanel::TSymbolListPanel(TComponent* owner, const THostData& data, THandler select)
    : TControl(owner), FData(data), FSelect(select) {
  SetVisible(false);
  SetWidth(kPanelSize);
  SetHeight(kPanelSize);
  SetCaption(GetResourceText("Res_SymbolList"));
  Search({});
}

void TSymbolListPanel::Search(std::string_view text) {
  const TControlUpdate update(*this);
  FSearchText = text;
  FHits.clear();
  const std::string wanted = UpperCaseText(TrimText(text));
  for (const TCode symbol : FData.GetSymbols()) {
    const TProductRecord* product = FData.FindProduct(symbol);
    if (product == nullptr) continue;
    const TProductFacts& facts = product->GetFacts().FProduct;
    if (UpperCaseText(symbol.Text()).find(wanted) == std::string::npos &&
        UpperCaseText(facts.FName).find(wanted) == std::string::npos) {
      continue;
    }
    FHits.push_back({symbol, facts.FName, facts.FExchange});
  }
  std::ranges::sort(FHits, {}, [&wanted](const TSymbolHit& hit) {
    return std::tuple(!UpperCaseText(hit.FSymbol.Text()).starts_with(wanted),
                      std::string_view(hit.FSymbol.Text()));
  });
  Updated();
}

std::vector<std::string> TSymbolListPanel::GetColumnCaptions() const {
  return {GetResourceText("Res_Symbol"), GetResourceText("Res_SymbolName"), GetResourceText("Res_Exchange")};
}

bool TSymbolListPanel::Choose(std::size_t index) {
  if (index >= FHits.size()) return false;
  TChosenSymbol chosen(FHits[index].FSymbol);
  const THandler select = FSelect;
  if (select) select(nullptr, static_cast<TCustomMarketData*>(&chosen));
  return true;
}

TSymbolLists::TSymbolLists(TGlobalChannelManager& channels, const THostData& data) : FChannels(channels) {
  FChannels.SetResponder(kMessageSymbolList, [&data](void* message) {
    auto* record = static_cast<TSymbolListRecord*>(message);
    if (record == nullptr || record->FOwner == nullptr) return;
    record->FControl = new TSymbolListPanel(record->FOwner, data, record->FSelect);  // its owner deletes it
  });
}

TSymbolLists::~TSymbolLists() { FChannels.SetResponder(kMessageSymbolList, {}); }

}  // namespace margindesk
