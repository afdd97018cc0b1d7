#pragma once

#include "controls/Frame.h"
#include "controls/HintStyleController.h"
#include "controls/VirtualTree.h"

namespace margindesk {

// Moves the mouse to the middle of a cell, which is brought into sight first.
void MoveMouseTo(TVirtualTree& tree, const TVirtualTreeNode& node, const TTreeColumn& column);

// What hangs over a view now; null for nothing.
const THintStyleController* FindShownHint(const TFrame& frame);

}  // namespace margindesk
