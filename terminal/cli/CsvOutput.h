#pragma once

#include <initializer_list>
#include <ostream>
#include <span>
#include <string_view>

namespace margindesk {

// Writes one CSV line, fields in quotes only where they need them.
void WriteCsvLine(std::ostream& out, std::span<const std::string_view> fields);
void WriteCsvLine(std::ostream& out, std::initializer_list<std::string_view> fields);

}  // namespace margindesk
