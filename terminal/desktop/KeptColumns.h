#pragma once

#include <string>
#include <string_view>

#include "controls/Frame.h"

namespace margindesk {

// Order, sizes and sorting of the columns in a view's grids as a text ("GRID=LAYOUT GRID=LAYOUT"), and back:
// what a person arranges by hand is in no view's own layout text. A text that does not fit changes nothing.
std::string ReadKeptColumns(const TFrame& frame);
void ShowKeptColumns(const TFrame& frame, std::string_view text);

}  // namespace margindesk
