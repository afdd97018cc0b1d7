#include "terminal/desktop/KeptColumns.h"

#include <algorithm>

#include "controls/GridTableView.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/EditorManager.h"

namespace margindesk {

namespace {

// A grid's columns as the layout text describes them.
TColumnList Describe(const TGridTableView& grid) {
  TColumnList columns;
  for (const TGridColumn& column : grid.GetColumns()) {
    columns.push_back(TColumnInfo::AddColumn(column.FTag, {}, column.FWidth, {}, column.FNumeric));
    columns.back()->FMinWidth = column.FMinWidth;
  }
  return columns;
}

}  // namespace

std::string ReadKeptColumns(const TFrame& frame) {
  std::string text;
  for (const TComponent* component : frame.GetComponents()) {
    const auto* grid = dynamic_cast<const TGridTableView*>(component);
    if (grid == nullptr || grid->GetColumns().empty()) continue;
    if (!text.empty()) text += ' ';
    text.append(grid->GetComponentName()).append(1, '=');
    text.append(TEditorManager::GetInstance().GetGridColumnLayout(*grid, Describe(*grid)));
  }
  return text;
}

void ShowKeptColumns(const TFrame& frame, std::string_view text) {
  if (!TCustomConfigManager::GetInstance().CanApplyLayout()) return;
  while (!text.empty()) {
    const std::string_view entry = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(entry.size() + 1, text.size()));
    const std::size_t equal = entry.find('=');
    if (equal == std::string_view::npos) continue;
    auto* grid = dynamic_cast<TGridTableView*>(frame.FindComponent(std::string(entry.substr(0, equal))));
    if (grid == nullptr) continue;
    TEditorManager::GetInstance().SetGridColumnLayout(*grid, entry.substr(equal + 1), Describe(*grid));
  }
}

}  // namespace margindesk
