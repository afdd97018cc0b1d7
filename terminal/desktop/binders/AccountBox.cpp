#include "terminal/desktop/binders/AccountBox.h"

#include <QAbstractItemView>
#include <QAction>
#include <QEvent>
#include <QKeyEvent>
#include <algorithm>

#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/Variant.h"
#include "terminal/desktop/Glyphs.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

std::function<std::vector<TKnownAccount>()> knownAccounts;

constexpr int kCodeRole = Qt::UserRole;
constexpr int kMostRows = 12;

}  // namespace

void SetKnownAccounts(std::function<std::vector<TKnownAccount>()> list) { knownAccounts = std::move(list); }

TAccountBoxBinder::TAccountBoxBinder(TAccountEdit& edit, QLineEdit& widget)
    : TTextEditBinder(edit, widget),
      FAccountEdit(edit),
      FBox(widget),
      FLock(widget.addAction(QIcon(), QLineEdit::LeadingPosition)),
      FArrow(widget.addAction(QIcon(), QLineEdit::TrailingPosition)) {
  FCompleter.setModel(&FAccounts);
  FCompleter.setWidget(&widget);
  FCompleter.setCaseSensitivity(Qt::CaseInsensitive);
  FCompleter.setFilterMode(Qt::MatchContains);
  FCompleter.setMaxVisibleItems(kMostRows);
  QObject::connect(&FCompleter, qOverload<const QModelIndex&>(&QCompleter::activated), this,
                   [this](const QModelIndex& index) {
                     // The list is no child of the box: a fault would have no view.
                     const QString code = index.data(kCodeRole).toString();
                     QMetaObject::invokeMethod(
                         this, [this, code] { Choose(code); }, Qt::QueuedConnection);
                   });
  QObject::connect(&widget, &QLineEdit::textEdited, this, [this](const QString& text) { Offer(text); });
  QObject::connect(FArrow, &QAction::triggered, this, [this] { Offer({}); });
  // While the list is down the Enter key comes through it; a marked account is taken by Choose.
  QObject::connect(&widget, &QLineEdit::returnPressed, this, [this] {
    if (!FCompleter.popup()->currentIndex().isValid()) TakeTyped();
  });
  FCompleter.popup()->installEventFilter(this);
  UpdateIcons();
  Show();
}

bool TAccountBoxBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if ((watched == &FBox || key == Qt::Key_Escape) && KeyPressed(key)) return true;
  }
  if (watched != &FBox) return false;
  if (event->type() == QEvent::PaletteChange) UpdateIcons();
  if (event->type() == QEvent::FocusOut && !LeaveWith(static_cast<const QFocusEvent*>(event)->reason())) {
    return false;
  }
  return TTextEditBinder::eventFilter(watched, event);
}

bool TAccountBoxBinder::KeyPressed(int key) {
  switch (key) {
    case Qt::Key_Down:
      Offer({});
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      TakeTyped();
      return true;
    case Qt::Key_Escape:
      if (!FCompleter.popup()->isVisible() && FAccountEdit.GetText() == FAccountEdit.GetHint()) return false;
      FCompleter.popup()->hide();
      Restore();
      return true;
    default:
      return false;
  }
}

// Somebody who looks at another window, or opens a menu, has not finished typing.
bool TAccountBoxBinder::LeaveWith(Qt::FocusReason reason) {
  if (reason == Qt::PopupFocusReason || IsKnown()) return true;
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason) return false;
  QMetaObject::invokeMethod(
      this, [this] { Refuse(); }, Qt::QueuedConnection);
  return false;
}

bool TAccountBoxBinder::IsKnown() const {
  if (!knownAccounts) return true;
  const std::string code = UpperCaseText(TrimText(FAccountEdit.GetText()));
  return code.empty() || std::ranges::count(knownAccounts(), code, &TKnownAccount::FCode) > 0;
}

void TAccountBoxBinder::TakeTyped() {
  FCompleter.popup()->hide();
  if (!IsKnown()) {
    ListAccounts();
    FCompleter.setCompletionPrefix(ToQt(FAccountEdit.GetText()).trimmed());
    if (FCompleter.completionCount() != 1) return Refuse();
    return Choose(FCompleter.currentIndex().data(kCodeRole).toString());
  }
  FAccountEdit.PressKey(kKeyEnter);
}

void TAccountBoxBinder::Restore() {
  FAccountEdit.SetText(FAccountEdit.GetHint());
  FBox.selectAll();
}

void TAccountBoxBinder::Refuse() {
  const QString typed = ToQt(FAccountEdit.GetText()).trimmed();
  Restore();
  TCustomMessageBoxCtrl::GetInstance().ShowMessage(FromQt(HostText("Desktop_NoAccount").arg(typed)));
}

void TAccountBoxBinder::Refresh() {
  TTextEditBinder::Refresh();
  FLock->setVisible(!FAccountEdit.GetEnabled());
  FLock->setToolTip(HostText("Desktop_Locked"));
  FArrow->setVisible(FAccountEdit.GetEnabled());
  FArrow->setToolTip(HostText("Desktop_KnownAccounts"));
}

void TAccountBoxBinder::Offer(const QString& text) {
  if (!knownAccounts) return;
  if (!FCompleter.popup()->isVisible()) ListAccounts();
  FCompleter.setCompletionPrefix(text.trimmed());
  if (FCompleter.completionCount() == 0) {
    FCompleter.popup()->hide();
    return;
  }
  const int wanted = FCompleter.popup()->sizeHintForColumn(0) + FBox.fontMetrics().averageCharWidth() * 6;
  FCompleter.complete(QRect(0, 0, std::max(FBox.width(), wanted), FBox.height()));
}

void TAccountBoxBinder::ListAccounts() {
  FAccounts.clear();
  for (const TKnownAccount& account : knownAccounts()) {
    auto* item = new QStandardItem(ToQt(account.FCode) + QStringLiteral("   ") + ToQt(account.FName));
    item->setData(ToQt(account.FCode), kCodeRole);
    FAccounts.appendRow(item);
  }
}

void TAccountBoxBinder::Choose(const QString& code) {
  FAccountEdit.SetText(FromQt(code));
  FAccountEdit.PressKey(kKeyEnter);
}

void TAccountBoxBinder::UpdateIcons() {
  FLock->setIcon(MakeGlyph(TGlyph::Lock, FBox));
  FArrow->setIcon(MakeGlyph(TGlyph::Arrow, FBox));
}

}  // namespace margindesk
