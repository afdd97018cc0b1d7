#pragma once

#include <QCompleter>
#include <QStandardItemModel>
#include <functional>
#include <string>
#include <vector>

#include "controls/AccountEdit.h"
#include "terminal/desktop/binders/SimpleBinders.h"

namespace margindesk {

struct TKnownAccount {
  std::string FCode;
  std::string FName;
};

// Who names the accounts that the boxes offer; an empty one for nobody. The terminal sets it once.
void SetKnownAccounts(std::function<std::vector<TKnownAccount>()> list);

// An account box: a one-line edit that offers the known accounts of which the code or the name contains what
// is typed, all of them for the arrow beside it and the Down key. Enter takes the account that is marked in
// the list, else what was typed. A locked box shows a lock.
class TAccountBoxBinder : public TTextEditBinder {
 public:
  TAccountBoxBinder(TAccountEdit& edit, QLineEdit& widget);
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void Refresh() override;

 private:
  void Offer(const QString& text);  // drops the list down, unless nothing in it fits
  void Choose(const QModelIndex& index);
  void UpdateIcons();

  TAccountEdit& FAccountEdit;
  QLineEdit& FBox;
  QStandardItemModel FAccounts;
  QCompleter FCompleter;
  QAction* const FLock;
  QAction* const FArrow;
};

}  // namespace margindesk
