#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "marginsim/SimulateOrder.h"
#include "model/contract/BaseMarketData.h"

namespace margindesk {

// The rules of the order grid that are functions of their arguments.

// --- what a symbol's reference item says

// The item, or null for an empty symbol and where the host has no reference data.
const TCustomSubItem* FindReferenceItem(TCode symbol);

// By how much its displayed prices exceed its real ones; none for an empty symbol or an absent field.
std::optional<double> GetPriceMultiplier(TCode symbol);

// By the product type code and the over-the-counter flag. A code that is no number counts as 0; the flag may
// stand between blanks, but is compared exactly.
TProductType ClassifyProduct(std::string_view typeCode, std::string_view otcFlag);
TProductType ClassifyProduct(TCode symbol);

// --- prices, quantities and symbols

// A displayed price as a real one; unchanged without a multiplier and for one that counts as zero.
double ToRealPrice(double displayPrice, std::optional<double> multiplier);

// A real price as a displayed one. A multiplier of zero gives zero: wanted, only the way back spares it.
double ToDisplayPrice(double realPrice, std::optional<double> multiplier);

// A symbol as it is looked up: trimmed, a whole number padded on the left with zeros to five characters, the
// letters a to z in upper case.
std::string PadSymbol(std::string_view typed);

// Units a lot; 1 for a text that is no number.
double ParseLotSize(std::string_view text);

// The quantity cut to whole lots, toward zero; none when it is whole lots already. A lot that counts as zero
// is taken as 1.
std::optional<double> SnapToLot(double quantity, double lot);

// Whether an over-the-counter bond may be ordered in this amount. Without a minimum and an increment above
// zero every amount will do.
bool IsBondAmount(double quantity, double minimum, double increment);

// --- spinning a price through the bands of a spread table

// The limits of the band that a row's price was in when its editor opened or last left a band.
struct TBandLimits {
  double FUpper = 0;
  double FLower = 0;
};

struct TPriceStep {
  double FPrice = 0;                 // the row's new accepted real price
  bool FSnapped = false;             // whether the editor and the cell are to show it
  std::optional<TSpreadBand> FBand;  // the band the price has come into; none: that of before
};

// What a changed price editor means. Prices are real ones.
// - price: what the editor says; lastPrice: the row's last accepted one, none where it is not known;
// - limits: none where they are not known, which bounds nothing;
// - snap: the price was spun, not typed: one tick from the last price, or one tick over the limit crossed;
// - table: null, and tables of another kind than bands of ticks, leave the price as it is.
TPriceStep StepPrice(double price, std::optional<double> lastPrice, const std::optional<TBandLimits>& limits,
                     bool snap, const TCustomSpreadTable* table);

}  // namespace margindesk
