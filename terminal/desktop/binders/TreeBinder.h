#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <QTreeView>

#include "terminal/desktop/binders/CellDelegate.h"
#include "terminal/desktop/binders/TreeModel.h"

namespace margindesk {

// Shows a tree. Changes of the tree are shown together, twenty times a second at most; the person's opening
// and closing of rows is shown at once. It and the mouse over cells reach the tree; Shift+F1 stands for the
// mouse over the current row's caption, and again over its value, so that their hints can be read.
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
  void KeyPressed(const QKeyEvent& key);

  TVirtualTree& FTree;
  QTreeView& FView;
  TTreeModel FModel;
  TCellDelegate FDelegate;
  QTimer FTimer;
  QElapsedTimer FShown;  // since the last picture
  int FHintColumn = 0;   // that Shift+F1 asks next
  bool FRefreshing = false;
};

}  // namespace margindesk
