#include "terminal/desktop/ColumnChooser.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "terminal/desktop/Glyphs.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

bool IsReserved(const QListWidgetItem& item) { return !item.flags().testFlag(Qt::ItemIsUserCheckable); }

}  // namespace

TColumnChooser::TColumnChooser(const TCustomColumnRecord& record, QWidget* parent)
    : QDialog(parent), FList(new QListWidget(this)) {
  setWindowTitle(HostText("Desktop_Columns"));
  FList->setDragDropMode(QAbstractItemView::InternalMove);
  FList->setAccessibleName(windowTitle());
  FList->setSpacing(1);
  const int boxSize = style()->pixelMetric(QStyle::PM_IndicatorWidth);
  FList->setIconSize({boxSize, boxSize});
  FList->installEventFilter(this);
  std::vector<std::string> visible = record.FVisibleCaptions;
  for (const std::string& caption : record.FAllCaptions) {
    auto* item = new QListWidgetItem(ToQt(caption), FList);
    // Between two rows, never onto one, which would be lost.
    item->setFlags(item->flags() & ~Qt::ItemIsDropEnabled);
    // A caption may stand twice; each that is visible is ticked once.
    const auto shown = std::ranges::find(visible, caption);
    if (std::ranges::find(record.FReservedCaptions, caption) != record.FReservedCaptions.end()) {
      item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
      item->setIcon(MakeGlyph(TGlyph::Lock, *this));
      item->setToolTip(HostText("Desktop_ReservedColumn"));
      item->setData(Qt::AccessibleDescriptionRole, item->toolTip());
    } else {
      item->setCheckState(shown != visible.end() ? Qt::Checked : Qt::Unchecked);
    }
    if (shown != visible.end()) visible.erase(shown);
  }
  auto* moves = new QVBoxLayout;
  FUp = MakeMoveButton("Desktop_MoveUp", -1);
  FDown = MakeMoveButton("Desktop_MoveDown", 1);
  moves->addWidget(FUp);
  moves->addWidget(FDown);
  moves->addStretch();
  auto* top = new QHBoxLayout;
  top->addWidget(FList, 1);
  top->addLayout(moves);
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* accepted = buttons->addButton(HostText("Desktop_OK"), QDialogButtonBox::AcceptRole);
  QPushButton* cancelled = buttons->addButton(HostText("Desktop_Cancel"), QDialogButtonBox::RejectRole);
  QObject::connect(accepted, &QPushButton::clicked, this, &QDialog::accept);
  QObject::connect(cancelled, &QPushButton::clicked, this, &QDialog::reject);
  auto* box = new QVBoxLayout(this);
  box->addLayout(top, 1);
  box->addWidget(buttons);
  QObject::connect(FList, &QListWidget::currentRowChanged, this, [this] { EnableMoves(); });
  QObject::connect(FList->model(), &QAbstractItemModel::rowsMoved, this, [this] { EnableMoves(); });
  FList->setCurrentRow(0);
  FList->setFocus();
  resize(400, 480);
}

QPushButton* TColumnChooser::MakeMoveButton(std::string_view text, int steps) {
  auto* button = new QPushButton(HostText(text), this);
  button->setAutoDefault(false);
  button->setAutoRepeat(true);
  button->setToolTip(steps < 0 ? QStringLiteral("Alt+↑") : QStringLiteral("Alt+↓"));
  QObject::connect(button, &QPushButton::clicked, this, [this, steps] { Move(steps); });
  return button;
}

void TColumnChooser::Move(int steps) {
  const int row = FList->currentRow();
  const int place = row + steps;
  if (row < 0 || place < 0 || place >= FList->count()) return;
  QListWidgetItem* item = FList->takeItem(row);
  FList->insertItem(place, item);
  FList->setCurrentRow(place);
}

void TColumnChooser::EnableMoves() {
  const int row = FList->currentRow();
  FUp->setEnabled(row > 0);
  FDown->setEnabled(row >= 0 && row + 1 < FList->count());
}

// The list takes the arrow keys for itself, with Alt too.
bool TColumnChooser::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (moves && key.modifiers().testFlag(Qt::AltModifier)) {
      Move(key.key() == Qt::Key_Up ? -1 : 1);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

TColumnAnswer TColumnChooser::GetAnswer() const {
  TColumnAnswer answer;
  answer.FVisible.emplace();
  for (int row = 0; row < FList->count(); ++row) {
    const QListWidgetItem& item = *FList->item(row);
    answer.FOrder.push_back(FromQt(item.text()));
    if (IsReserved(item) || item.checkState() == Qt::Checked) answer.FVisible->push_back(FromQt(item.text()));
  }
  return answer;
}

std::optional<TColumnAnswer> AskForColumns(const TCustomColumnRecord& record, QWidget* parent) {
  TColumnChooser chooser(record, parent);
  if (chooser.exec() != QDialog::Accepted) return std::nullopt;
  return chooser.GetAnswer();
}

}  // namespace margindesk
