#pragma once

#include <string>
#include <string_view>

#include "model/contract/Variant.h"

namespace margindesk {

// A number as a person writes it with thousands set apart ("-1,234.5") without the commas; other texts as
// they are.
std::string RemoveGrouping(std::string_view text);

// Whether a text is a figure as views write them: a number with thousands set apart or with decimals. Plain
// digits may be a code.
bool IsFigure(std::string_view text);

// Whether the text in an editor stands for the value.
bool IsSameValue(const std::string& text, const TVariant& value);

// The text of a value in an editor, without the dust that binary fractions gather while a price is spun.
std::string MakeNumberText(const TVariant& value);

}  // namespace margindesk
