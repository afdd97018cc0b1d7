#include "terminal/desktop/ColumnChooser.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "terminal/desktop/HostText.h"

namespace margindesk {

TColumnChooser::TColumnChooser(const TCustomColumnRecord& record, QWidget* parent)
    : QDialog(parent), FList(new QListWidget(this)) {
  setWindowTitle(HostText("Desktop_Columns"));
  FList->setDragDropMode(QAbstractItemView::InternalMove);
  FList->setAccessibleName(windowTitle());
  std::vector<std::string> visible = record.FVisibleCaptions;
  for (const std::string& caption : record.FAllCaptions) {
    auto* item = new QListWidgetItem(ToQt(caption), FList);
    const bool reserved =
        std::ranges::find(record.FReservedCaptions, caption) != record.FReservedCaptions.end();
    // A caption may stand twice; each that is visible is ticked once.
    const auto shown = std::ranges::find(visible, caption);
    item->setCheckState(reserved || shown != visible.end() ? Qt::Checked : Qt::Unchecked);
    if (shown != visible.end()) visible.erase(shown);
    if (reserved) item->setFlags(item->flags() & ~Qt::ItemIsUserCheckable);
  }
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* accepted = buttons->addButton(HostText("Desktop_OK"), QDialogButtonBox::AcceptRole);
  QPushButton* cancelled = buttons->addButton(HostText("Desktop_Cancel"), QDialogButtonBox::RejectRole);
  QObject::connect(accepted, &QPushButton::clicked, this, &QDialog::accept);
  QObject::connect(cancelled, &QPushButton::clicked, this, &QDialog::reject);
  auto* box = new QVBoxLayout(this);
  box->addWidget(FList);
  box->addWidget(buttons);
  resize(360, 480);
}

void TColumnChooser::Move(int steps) {
  const int row = FList->currentRow();
  const int place = row + steps;
  if (row < 0 || place < 0 || place >= FList->count()) return;
  QListWidgetItem* item = FList->takeItem(row);
  FList->insertItem(place, item);
  FList->setCurrentRow(place);
}

void TColumnChooser::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Up) return Move(-1);
  if (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Down) return Move(1);
  QDialog::keyPressEvent(event);
}

TColumnAnswer TColumnChooser::GetAnswer() const {
  TColumnAnswer answer;
  answer.FVisible.emplace();
  for (int row = 0; row < FList->count(); ++row) {
    const QListWidgetItem* item = FList->item(row);
    answer.FOrder.push_back(FromQt(item->text()));
    if (item->checkState() == Qt::Checked) answer.FVisible->push_back(FromQt(item->text()));
  }
  return answer;
}

std::optional<TColumnAnswer> AskForColumns(const TCustomColumnRecord& record, QWidget* parent) {
  TColumnChooser chooser(record, parent);
  if (chooser.exec() != QDialog::Accepted) return std::nullopt;
  return chooser.GetAnswer();
}

}  // namespace margindesk
