#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "host/book/BookColumn.h"

namespace margindesk {

// The value of one field: nothing, a whole number (for a flag 0 or 1), a number, or borrowed text.
using TBookCell = std::variant<std::monostate, std::int64_t, double, std::string_view>;

// Why a value is not allowed, as the reason of a message; nothing when it is.
using TBookRefusal = std::optional<std::string>;

// Turns a CSV field into the value of a column and checks it. The value of a text borrows the field's bytes.
TBookRefusal ParseBookField(const TBookColumn& column, std::string_view field, TBookCell& cell);

// Checks a value against its column alone: kind, range, list of choices, emptiness. References are not looked
// at.
TBookRefusal CheckBookCell(const TBookColumn& column, const TBookCell& cell);

// Appends a value as CSV.
void AppendBookField(std::string& out, const TBookColumn& column, const TBookCell& cell);

// The shortest text that reads back as the same double; without an exponent from a millionth up to 1e15.
std::string BookNumberText(double value);

}  // namespace margindesk
