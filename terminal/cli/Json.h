#pragma once

#include <ostream>
#include <string_view>

#include <nlohmann/json.hpp>

#include "model/contract/Variant.h"

namespace margindesk {

using TJson = nlohmann::ordered_json;

// A number, a text, or null for a value that is none.
TJson MakeJson(const TVariant& value);

// A text, or null for the empty one.
TJson MakeJsonOrNull(std::string_view text);

// Writes a document for people and programs alike: indented, one line end at its end.
void WriteJson(std::ostream& out, const TJson& document);

}  // namespace margindesk
