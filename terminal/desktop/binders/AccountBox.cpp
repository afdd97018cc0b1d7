#include "terminal/desktop/binders/AccountBox.h"

#include <QAbstractItemView>
#include <QAction>
#include <QEvent>
#include <QKeyEvent>

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
                   [this](const QModelIndex& index) { Choose(index); });
  QObject::connect(&widget, &QLineEdit::textEdited, this, [this](const QString& text) { Offer(text); });
  QObject::connect(FArrow, &QAction::triggered, this, [this] { Offer({}); });
  // While the list is down the Enter key comes through it; a marked account is taken by Choose.
  QObject::connect(&widget, &QLineEdit::returnPressed, this, [this] {
    if (!FCompleter.popup()->currentIndex().isValid()) FAccountEdit.PressKey(kKeyEnter);
  });
  UpdateIcons();
  Show();
}

bool TAccountBoxBinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::PaletteChange) UpdateIcons();
  if (event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Down) {
    Offer({});
    return true;
  }
  return TTextEditBinder::eventFilter(watched, event);
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
  if (!FCompleter.popup()->isVisible()) {
    FAccounts.clear();
    for (const TKnownAccount& account : knownAccounts()) {
      auto* item = new QStandardItem(ToQt(account.FCode) + QStringLiteral("   ") + ToQt(account.FName));
      item->setData(ToQt(account.FCode), kCodeRole);
      FAccounts.appendRow(item);
    }
  }
  FCompleter.setCompletionPrefix(text.trimmed());
  if (FCompleter.completionCount() == 0) {
    FCompleter.popup()->hide();
    return;
  }
  const int wanted = FCompleter.popup()->sizeHintForColumn(0) + FBox.fontMetrics().averageCharWidth() * 6;
  FCompleter.complete(QRect(0, 0, std::max(FBox.width(), wanted), FBox.height()));
}

void TAccountBoxBinder::Choose(const QModelIndex& index) {
  FAccountEdit.SetText(FromQt(index.data(kCodeRole).toString()));
  FAccountEdit.PressKey(kKeyEnter);
}

void TAccountBoxBinder::UpdateIcons() {
  FLock->setIcon(MakeGlyph(TGlyph::Lock, FBox));
  FArrow->setIcon(MakeGlyph(TGlyph::Arrow, FBox));
}

}  // namespace margindesk
