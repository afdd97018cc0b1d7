#pragma once

#include <QTimer>
#include <QTreeView>

#include "terminal/desktop/binders/CellDelegate.h"
#include "terminal/desktop/binders/TreeModel.h"

namespace margindesk {

// Shows a tree. Changes of the tree are shown together, at most one picture a frame; the person's opening and
// closing of rows and the mouse over cells reach the tree.
class TTreeBinder : public QObject {
 public:
  TTreeBinder(TVirtualTree& tree, QTreeView& view);
  ~TTreeBinder() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

  void Refresh();  // now, instead of with the next picture

 private:
  void TreeUpdated();
  void ShowExpanded();
  void FitColumns();
  void MouseMoved(QPoint position);

  TVirtualTree& FTree;
  QTreeView& FView;
  TTreeModel FModel;
  TCellDelegate FDelegate;
  QTimer FTimer;
  bool FRefreshing = false;
};

}  // namespace margindesk
