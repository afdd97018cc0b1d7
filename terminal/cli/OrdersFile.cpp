#include "terminal/cli/OrdersFile.h"

#include <algorithm>
#include <array>
#include <istream>
#include <iterator>
#include <span>

#include "host/book/BookError.h"
#include "host/book/Csv.h"
#include "host/services/LocalFile.h"
#include "model/contract/Variant.h"
#include "terminal/session/CliError.h"

namespace margindesk {

namespace {

struct TWord {
  std::string_view FText;
  std::int32_t FCode;
};

constexpr TWord kSides[] = {{"buy", kSideBuy}, {"sell", kSideSell}};
constexpr TWord kOpenCloses[] = {{"", 0}, {"open", kOpenCloseOpen}, {"close", kOpenCloseClose}};
constexpr TWord kPrincipals[] = {
    {"", 0}, {"client", kPrincipalClient}, {"house", kPrincipalHouse}, {"RT", kPrincipalRT}};
constexpr TWord kStatuses[] = {
    {"pending", kStatusPending}, {"completed", kStatusCompleted}, {"", kStatusPending}};

std::string_view GetWord(std::span<const TWord> words, std::int32_t code) {
  const auto found = std::ranges::find(words, code, &TWord::FCode);
  return found == words.end() ? std::string_view() : found->FText;
}

// Why a field is refused; empty when it is not.
using TRefusal = std::string;

TRefusal ReadWord(std::string_view text, std::span<const TWord> words, std::int32_t& code) {
  std::string expected;
  for (const TWord& word : words) {
    if (SameTextIgnoringCase(text, word.FText)) {
      code = word.FCode;
      return {};
    }
    if (!word.FText.empty()) expected.append(expected.empty() ? "" : " or ").append(word.FText);
  }
  return QuotedForMessage(text) + " is not " + expected;
}

TRefusal ReadNumber(std::string_view text, double& value) {
  if (!TryTextToFloat(text, value)) return QuotedForMessage(text) + " is not a number";
  return value < 0 ? TRefusal("a number below zero") : TRefusal();
}

TRefusal ReadPrice(std::string_view text, TFileOrder& order) {
  if (text.empty()) return {};
  return ReadNumber(text, order.FPrice.emplace());
}

TRefusal ReadQuantity(std::string_view text, TFileOrder& order) {
  TRefusal refusal = ReadNumber(text, order.FQuantity);
  return refusal.empty() && order.FQuantity == 0 ? "a quantity is above zero" : refusal;
}

TRefusal ReadSymbol(std::string_view text, TFileOrder& order) {
  constexpr std::size_t kLongestSymbol = 100;  // bytes; more is a text that got into the wrong field
  if (text.size() > kLongestSymbol) return QuotedForMessage(text) + " is too long for a symbol";
  order.FSymbol = text;
  return text.empty() ? "no symbol" : TRefusal();
}

struct TOrderColumn {
  std::string_view FName;
  bool FRequired;
  TRefusal (*FRead)(std::string_view text, TFileOrder& order);
};

constexpr TOrderColumn kColumns[] = {
    {"symbol", true, ReadSymbol},
    {"side", true,
     [](std::string_view text, TFileOrder& order) { return ReadWord(text, kSides, order.FSide); }},
    {"price", true, ReadPrice},
    {"quantity", true, ReadQuantity},
    {"openclose", false,
     [](std::string_view text, TFileOrder& order) { return ReadWord(text, kOpenCloses, order.FOpenClose); }},
    {"principal", false,
     [](std::string_view text, TFileOrder& order) { return ReadWord(text, kPrincipals, order.FPrincipal); }},
    {"status", false,
     [](std::string_view text, TFileOrder& order) { return ReadWord(text, kStatuses, order.FStatus); }},
};

class TOrdersParser {
 public:
  TOrdersParser(std::string_view text, const std::string& name) : FReader(text), FName(name) {}

  std::vector<TFileOrder> Parse() {
    try {
      ReadHeading();
      while (FReader.Next()) ReadOrder();
    } catch (const TCsvFault& fault) {
      Fail(fault.FLine, "", fault.FReason);
    }
    if (FOrders.empty()) throw TCliError(FName + ": no orders");
    return std::move(FOrders);
  }

 private:
  [[noreturn]] void Fail(std::size_t line, std::string_view column, std::string_view reason) const {
    std::string message = FName + ":" + std::to_string(line) + ":";
    if (!column.empty()) message.append(column).append(":");
    throw TCliError(message.append(" ").append(reason));
  }

  void ReadHeading() {
    if (!FReader.Next()) throw TCliError(FName + ": no column names");
    for (std::size_t i = 0; i < FReader.FieldCount(); ++i) {
      const std::string_view name = TrimText(FReader.Field(i));
      const auto* column = std::ranges::find(kColumns, name, &TOrderColumn::FName);
      if (column == std::end(kColumns)) Fail(1, name, "unknown column");
      if (std::ranges::find(FPlaces, column) != FPlaces.end()) Fail(1, name, "duplicate column");
      FPlaces.push_back(column);
    }
    for (const TOrderColumn& column : kColumns) {
      const bool there = std::ranges::find(FPlaces, &column) != FPlaces.end();
      if (column.FRequired && !there) Fail(1, column.FName, "missing column");
    }
  }

  void ReadOrder() {
    const std::size_t line = FReader.FieldLine(0);
    if (FReader.FieldCount() != FPlaces.size()) {
      Fail(line, "", FReader.FieldCount() < FPlaces.size() ? "too few fields" : "too many fields");
    }
    if (FOrders.size() == kMostFileOrders) {
      Fail(line, "", "more than " + std::to_string(kMostFileOrders) + " orders");
    }
    TFileOrder& order = FOrders.emplace_back();
    order.FLine = line;
    for (std::size_t i = 0; i < FPlaces.size(); ++i) {
      const TRefusal refusal = FPlaces[i]->FRead(TrimText(FReader.Field(i)), order);
      if (!refusal.empty()) Fail(FReader.FieldLine(i), FPlaces[i]->FName, refusal);
    }
  }

  TCsvReader FReader;
  const std::string& FName;
  std::vector<const TOrderColumn*> FPlaces;  // by field
  std::vector<TFileOrder> FOrders;
};

}  // namespace

std::vector<TFileOrder> ParseOrders(std::string_view text, const std::string& name) {
  return TOrdersParser(text, name).Parse();
}

std::vector<TFileOrder> ReadOrdersFile(const std::string& file, std::istream& standardInput) {
  constexpr std::int64_t kMostBytes = std::int64_t{16} << 20;
  if (file == "-") {
    std::string text;
    std::array<char, 65536> part;
    while (standardInput.read(part.data(), part.size()), standardInput.gcount() > 0) {
      text.append(part.data(), static_cast<std::size_t>(standardInput.gcount()));
      if (text.size() > kMostBytes) throw TCliError("standard input: " + TooLarge(kMostBytes));
    }
    return ParseOrders(text, "standard input");
  }
  std::string reason;
  const auto text = ReadLocalFile(file, kMostBytes, reason);
  if (!text) throw TCliError("cannot read " + QuotedForMessage(file) + ": " + reason);
  return ParseOrders(*text, file);
}

std::string_view GetSideWord(std::int32_t side) { return GetWord(kSides, side); }
std::string_view GetOpenCloseWord(std::int32_t openClose) { return GetWord(kOpenCloses, openClose); }
std::string_view GetPrincipalWord(std::int32_t principal) { return GetWord(kPrincipals, principal); }
std::string_view GetStatusWord(std::int32_t status) { return GetWord(kStatuses, status); }

}  // namespace margindesk
