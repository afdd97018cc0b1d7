#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "host/services/GlobalChannelManager.h"
#include "host/services/HostData.h"
#include "model/contract/Handlers.h"

namespace margindesk {

struct TSymbolHit {
  TCode FSymbol;
  std::string FName;
  TCode FExchange;
};

// A panel in which a person looks for a symbol: what is typed, the products that match, and the choice. It
// belongs to the frame that asked for it and goes with it.
class TSymbolListPanel final : public TControl {
 public:
  // The data must outlive the panel.
  TSymbolListPanel(TComponent* owner, const THostData& data, THandler select);

  // Lists the market's products whose code or name holds the text, without regard to the case of ASCII
  // letters and to blanks around the text; all of them for an empty text. Codes that begin with the text come
  // first; then in the order of the codes.
  void Search(std::string_view text);
  const std::string& GetSearchText() const noexcept { return FSearchText; }
  const std::vector<TSymbolHit>& GetHits() const noexcept { return FHits; }  // of the last search

  // Captions of code, name and exchange in the current language.
  std::vector<std::string> GetColumnCaptions() const;

  // Hands a hit to the frame that asked. False out of range. The panel may be gone afterwards.
  bool Choose(std::size_t index);

 private:
  const THostData& FData;
  const THandler FSelect;
  std::string FSearchText;
  std::vector<TSymbolHit> FHits;
};

// Makes the symbol list panels that frames ask for (kMessageSymbolList). A front shows a panel for as long as
// it is visible.
class TSymbolLists {
 public:
  TSymbolLists(TGlobalChannelManager& channels, const THostData& data);  // both must outlive it
  ~TSymbolLists();
  TSymbolLists(const TSymbolLists&) = delete;
  TSymbolLists& operator=(const TSymbolLists&) = delete;

 private:
  TGlobalChannelManager& FChannels;
};

}  // namespace margindesk
