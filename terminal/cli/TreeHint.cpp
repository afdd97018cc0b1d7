#include "terminal/cli/TreeHint.h"

#include <algorithm>

namespace margindesk {

namespace {

// Opens what hides a row, and scrolls where it stands outside of the control.
TRect BringIntoView(TVirtualTree& tree, const TVirtualTreeNode& node, const TTreeColumn& column) {
  tree.MakeVisible(node);
  const TRect cell = tree.GetCellRect(node, column);
  if (cell.FTop >= 0 && cell.FTop + cell.FHeight <= tree.GetHeight()) return cell;
  const auto& shown = tree.GetShownNodes();
  const auto place = std::ranges::find(shown, &node) - shown.begin();
  tree.SetTopRow(static_cast<std::int32_t>(place));
  return tree.GetCellRect(node, column);
}

}  // namespace

void MoveMouseTo(TVirtualTree& tree, const TVirtualTreeNode& node, const TTreeColumn& column) {
  const TRect cell = BringIntoView(tree, node, column);
  tree.MouseMove({cell.FLeft + cell.FWidth / 2, cell.FTop + cell.FHeight / 2});
}

const THintStyleController* FindShownHint(const TFrame& frame) {
  const auto& components = frame.GetComponents();
  for (const TComponent* component : components) {
    const auto* hints = dynamic_cast<const THintStyleController*>(component);
    if (hints != nullptr && hints->IsShowing()) return hints;
  }
  return nullptr;
}

}  // namespace margindesk
