#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/contract/Constdef.h"

namespace margindesk {

// One order of an orders file.
struct TFileOrder {
  std::size_t FLine = 0;  // of the file, from 1
  std::string FSymbol;
  std::int32_t FSide = kSideBuy;
  std::optional<double> FPrice;  // real price; none: the price that the grid fills in
  double FQuantity = 0;
  std::int32_t FOpenClose = 0;
  std::int32_t FPrincipal = 0;
  std::int32_t FStatus = kStatusPending;
};

// More orders than this are no hypothesis of a person.
inline constexpr std::size_t kMostFileOrders = 10'000;

// Reads orders from CSV with the columns symbol, side, price, quantity and, where wanted, openclose,
// principal and status, in any order: "buy" or "sell"; "open" or "close"; "client", "house" or "RT";
// "pending" or "completed"; in any letter case. An empty price is left to the grid, an empty openclose,
// principal or status is none, none and pending. Throws TCliError, "name:line:column: reason", for anything
// else, for no orders and for more than kMostFileOrders.
std::vector<TFileOrder> ParseOrders(std::string_view text, const std::string& name);

// The same from a file; "-" reads standard input. Throws TCliError, too for a file that cannot be read.
std::vector<TFileOrder> ReadOrdersFile(const std::string& file, std::istream& standardInput);

// The words of the file for the codes of an order; "" for none.
std::string_view GetSideWord(std::int32_t side);
std::string_view GetOpenCloseWord(std::int32_t openClose);
std::string_view GetPrincipalWord(std::int32_t principal);
std::string_view GetStatusWord(std::int32_t status);

}  // namespace margindesk
