#include <gtest/gtest.h>

#include "terminal/desktop/binders/TreeModel.h"
#include "tests/desktop/FigureTree.h"
#include "tests/support/TestHost.h"

namespace margindesk {
namespace {

TEST(TreeModel, FindsTheRowsThatTheTreeBuiltAnewSinceItWasRefreshed) {
  const TTestHost host;
  TFigureTree figures;
  const TTreeModel model(figures.FTree, nullptr);
  const QModelIndex second = model.index(1, 0, {});
  figures.Figures().SetText(0, "5");
  const TVirtualTreeNode* node = figures.FTree.GetNodes()[TFigureRows::kCurrencies + 1];
  EXPECT_EQ(model.GetNode(second), node);
  EXPECT_EQ(model.GetIndex(*node, 0), second);
  figures.FTree.SetDataSource(nullptr);
  EXPECT_EQ(model.GetNode(second), nullptr);
}

}  // namespace
}  // namespace margindesk
