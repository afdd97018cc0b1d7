#include "host/services/MarketTicker.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

#include "host/book/Csv.h"

namespace margindesk {

namespace {

constexpr std::string_view kColumns[] = {"time", "symbol", "last", "bid", "ask"};

[[noreturn]] void Fail(std::size_t line, const std::string& reason) {
  throw TTickFileError("line " + std::to_string(line) + ": " + reason);
}

// A whole text of so many digits at most, or none.
std::optional<int> ReadDigits(std::string_view text, std::size_t digits) {
  int value = 0;
  if (text.empty() || text.size() > digits || text.front() == '-') return std::nullopt;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (fault != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<std::chrono::milliseconds> ReadTime(std::string_view text) {
  constexpr std::size_t kSeconds = 8;  // 09:30:05
  if (text.size() < kSeconds || text[2] != ':' || text[5] != ':') return std::nullopt;
  const auto hours = ReadDigits(text.substr(0, 2), 2);
  const auto minutes = ReadDigits(text.substr(3, 2), 2);
  const auto seconds = ReadDigits(text.substr(6, 2), 2);
  std::optional<int> milliseconds = 0;
  if (text.size() > kSeconds) {
    std::string fraction(text.substr(kSeconds + 1));
    if (text[kSeconds] != '.' || fraction.empty()) return std::nullopt;
    fraction.append(fraction.size() < 3 ? 3 - fraction.size() : 0, '0');
    milliseconds = ReadDigits(fraction, 3);
  }
  if (!hours || !minutes || !seconds || !milliseconds) return std::nullopt;
  if (*hours > 23 || *minutes > 59 || *seconds > 59) return std::nullopt;
  return std::chrono::hours(*hours) + std::chrono::minutes(*minutes) + std::chrono::seconds(*seconds) +
         std::chrono::milliseconds(*milliseconds);
}

double ReadPrice(const TCsvReader& rows, std::size_t field) {
  const std::string_view text = rows.Field(field);
  double price = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), price);
  if (fault != std::errc() || end != text.data() + text.size() || !std::isfinite(price) || price <= 0) {
    Fail(rows.FieldLine(field),
         std::string(kColumns[field]) + " is no price above 0: \"" + std::string(text) + "\"");
  }
  return price;
}

TTick ReadTick(const TCsvReader& rows, const THostData& data) {
  const std::size_t line = rows.FieldLine(0);
  if (rows.FieldCount() != std::size(kColumns)) {
    Fail(line, std::to_string(std::size(kColumns)) + " fields wanted, there are " +
                   std::to_string(rows.FieldCount()));
  }
  const auto time = ReadTime(rows.Field(0));
  if (!time) Fail(line, "no time of the day: \"" + std::string(rows.Field(0)) + "\"");
  const TCode symbol(rows.Field(1));
  if (std::ranges::find(data.GetSymbols(), symbol) == data.GetSymbols().end()) {
    Fail(line, "no such symbol: \"" + symbol.Text() + "\"");
  }
  const TTick tick{*time, symbol, ReadPrice(rows, 2), ReadPrice(rows, 3), ReadPrice(rows, 4)};
  if (tick.FBid > tick.FAsk) Fail(line, "the bid is above the ask");
  return tick;
}

void CheckColumns(const TCsvReader& rows) {
  for (std::size_t i = 0; i < std::size(kColumns); ++i) {
    if (rows.FieldCount() != std::size(kColumns) || rows.Field(i) != kColumns[i]) {
      Fail(1, "the columns are not time,symbol,last,bid,ask");
    }
  }
}

}  // namespace

std::vector<TTick> ReadTickFile(std::string_view text, const THostData& data) {
  std::vector<TTick> ticks;
  try {
    TCsvReader rows(text);
    if (!rows.Next()) Fail(1, "the file is empty");
    CheckColumns(rows);
    while (rows.Next()) {
      const TTick tick = ReadTick(rows, data);
      if (!ticks.empty() && tick.FTime < ticks.back().FTime) {
        Fail(rows.FieldLine(0), "the time is before that of the tick above");
      }
      ticks.push_back(tick);
    }
  } catch (const TCsvFault& fault) {
    Fail(fault.FLine, fault.FReason);
  }
  if (ticks.empty()) Fail(2, "there is no tick");
  return ticks;
}

TMarketTicker::TMarketTicker(THostData& data, TUiLoop& loop, std::uint64_t seed)
    : FData(data), FLoop(loop), FRandom(seed) {}

TMarketTicker::~TMarketTicker() { Pause(); }

void TMarketTicker::Start() {
  if (IsRunning()) return;
  if (IsReplay() && FNext == FTicks.size()) Replay(std::move(FTicks));
  FTimer = FLoop.StartTimer(kBeat, [this] { Beat(); });
}

void TMarketTicker::Pause() { FLoop.StopTimer(std::exchange(FTimer, 0)); }

void TMarketTicker::Replay(std::vector<TTick> ticks) {
  FTicks = std::move(ticks);
  FNext = 0;
  FReplayTime = 0;
}

void TMarketTicker::WalkAtRandom() { Replay({}); }

void TMarketTicker::Beat() {
  if (IsReplay()) {
    BeatOfReplay();
  } else {
    BeatAtRandom();
  }
}

void TMarketTicker::BeatOfReplay() {
  for (; FNext < FTicks.size(); ++FNext) {
    const TTick& tick = FTicks[FNext];
    if (static_cast<double>((tick.FTime - FTicks.front().FTime).count()) > FReplayTime) break;
    SetPrices(tick.FSymbol, tick.FLast, tick.FBid, tick.FAsk);
  }
  FReplayTime += static_cast<double>(kBeat.count()) * FSpeed;
  if (FNext == FTicks.size()) Pause();
}

void TMarketTicker::BeatAtRandom() {
  FMovable.clear();
  std::ranges::copy_if(FData.GetSymbols(), std::back_inserter(FMovable),
                       [this](TCode symbol) { return MayMove(symbol); });
  if (FMovable.empty()) return;
  FChangesDue += kChangesPerSecond * FSpeed * std::chrono::duration<double>(kBeat).count();
  // The remainder picks evenly enough, and the same on every machine.
  for (; FChangesDue >= 1; FChangesDue -= 1) Move(FMovable[FRandom() % FMovable.size()]);
}

bool TMarketTicker::MayMove(TCode symbol) const {
  const TProductRecord* product = FData.FindProduct(symbol);
  if (product == nullptr || product->GetFacts().GetPrice() <= 0) return false;
  if (FData.FindSpreadTable(product->GetMarketCode()) == nullptr) return false;
  const TExchangeFacts* exchange = FData.FindExchange(product->GetExchange());
  return exchange != nullptr && exchange->FOpen;
}

void TMarketTicker::Move(TCode symbol) {
  const TProductRecord& product = *FData.FindProduct(symbol);
  const TSpreadTableRecord& spreads = *FData.FindSpreadTable(product.GetMarketCode());
  const double before = product.GetFacts().GetPrice();
  const double above = spreads.StepUp(before);
  const double below = spreads.StepDown(before);
  const bool wantsUp = (FRandom() & 1U) != 0;
  // At the table's lower end the price can only rise, at its upper end only fall.
  const bool mayRise = above > before;
  const bool mayFall = below < before && spreads.StepDown(below) > 0;
  if (mayRise && (wantsUp || !mayFall)) {
    SetPrices(symbol, above, spreads.StepDown(above), above);
  } else if (mayFall) {
    SetPrices(symbol, below, below, spreads.StepUp(below));
  }
}

void TMarketTicker::SetPrices(TCode symbol, double last, double bid, double ask) {
  const TSymbolFacts* facts = FData.GetItem(symbol).GetFacts();
  if (facts == nullptr) return;  // a book that was read again does not know it any more
  TPriceFacts prices = facts->FPrices;
  prices.FLast = last;
  prices.FBid = bid;
  prices.FAsk = ask;
  FData.SetPrice(symbol, prices);
}

}  // namespace margindesk
