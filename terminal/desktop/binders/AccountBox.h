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
// the list, else the one that was typed, by its code or by anything that only it has. An account that nobody
// knows is told, and leaves the one that was chosen; so does the Escape key. A locked box shows a lock.
class TAccountBoxBinder : public TTextEditBinder {
 public:
  TAccountBoxBinder(TAccountEdit& edit, QLineEdit& widget);
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void Refresh() override;

 private:
  void Offer(const QString& text);  // drops the list down, unless nothing in it fits
  void ListAccounts();
  bool KeyPressed(int key);                // whether the key did what there was to do
  bool LeaveWith(Qt::FocusReason reason);  // whether what was typed is to be taken
  bool IsKnown() const;                    // what was typed, or nobody knows any
  void TakeTyped();
  void Restore();  // the account that was chosen
  void Refuse();
  void Choose(const QString& code);
  void UpdateIcons();

  TAccountEdit& FAccountEdit;
  QLineEdit& FBox;
  QStandardItemModel FAccounts;
  QCompleter FCompleter;
  QAction* const FLock;
  QAction* const FArrow;
};

}  // namespace margindesk
