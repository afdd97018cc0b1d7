// The layout text of a simulator view.
#include <algorithm>

#include "marginsim/MarginSimulatorView.h"
#include "model/CommaText.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/EditorManager.h"

namespace margindesk {

bool TMarginSimulatorFrame::GetLayoutData(std::string& layout) {
  TAccountInfoFrame::GetLayoutData(layout);
  const std::string columns = TEditorManager::GetInstance().GetGridColumnLayout(*OrderGridView, FColList);
  if (columns.empty()) return true;
  std::vector<std::string> items = SplitCommaText(layout);
  items.push_back("OrderColList=" + columns);
  layout = JoinCommaText(items);
  return true;
}

// Wanted: the layout of the order grid is saved and not read back; FLayoutColumn stays empty.
bool TMarginSimulatorFrame::SetLayoutData(const std::string& layout) {
  TAccountInfoFrame::SetLayoutData(layout);
  return true;
}

void TMarginSimulatorFrame::AdjustLayout() {
  if (FLayoutColumn.empty() || !TCustomConfigManager::GetInstance().CanApplyLayout()) return;
  TEditorManager::GetInstance().SetGridColumnLayout(*OrderGridView, FLayoutColumn, FColList);
  FLayoutColumn.clear();
}

void TMarginSimulatorFrame::MainFormShow(void* /*sender*/, void* /*data*/) { AdjustLayout(); }

void TMarginSimulatorFrame::LoadLayoutComp(void* /*sender*/, void* /*data*/) { AdjustLayout(); }

}  // namespace margindesk
