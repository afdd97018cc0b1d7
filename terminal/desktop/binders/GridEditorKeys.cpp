// Keys and the mouse over a grid that is edited in place.
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "controls/TextEdit.h"
#include "terminal/desktop/binders/GridEditors.h"
#include "terminal/desktop/binders/GridPaste.h"

namespace margindesk {

namespace {

// What is taken from the line of an open field before the line sees it.
constexpr QEvent::Type kLineEvents[] = {QEvent::KeyPress, QEvent::MouseButtonRelease, QEvent::InputMethod,
                                        QEvent::Wheel};

bool IsPlainText(const QKeyEvent& key) {
  const bool command = key.modifiers().testFlag(Qt::ControlModifier) !=
                       key.modifiers().testFlag(Qt::AltModifier);  // both together type a character
  return !command && !key.text().isEmpty() && key.text().front().isPrint();
}

}  // namespace

bool TGridEditors::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick ||
      event->type() == QEvent::Shortcut) {
    if (FField != nullptr && LeaveFor(watched, *event)) return true;
    return watched == FView.viewport() && event->type() != QEvent::Shortcut &&
           ViewClicked(*static_cast<QMouseEvent*>(event));
  }
  if (event->type() == QEvent::Resize && watched == FView.viewport()) {
    QTimer::singleShot(0, this, [this] { Place(); });
    return false;
  }
  if (watched == &FView && event->type() == QEvent::KeyPress) {
    return FField == nullptr && ViewKey(*static_cast<QKeyEvent*>(event));
  }
  // A field that is on its way out, with its line, is not asked for it.
  const bool forLine = std::ranges::find(kLineEvents, event->type()) != std::end(kLineEvents);
  return FField != nullptr && forLine && watched == &FField->Line() && LineEvent(*event);
}

bool TGridEditors::LineEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
      return LineKey(static_cast<QKeyEvent&>(event));
    case QEvent::MouseButtonRelease:
      if (FField->GetKind() == TCellField::TKind::List && !FDropList) DropDown();
      return false;
    case QEvent::InputMethod: {
      const QString text = static_cast<QInputMethodEvent&>(event).commitString();
      const TStep step(*this);
      if (!text.isEmpty()) FGrid.PressEditorKey(text.back().unicode());
      return !step.IsAlive();
    }
    case QEvent::Wheel: {
      const int turn = static_cast<QWheelEvent&>(event).angleDelta().y();
      if (turn == 0 || FField->GetKind() != TCellField::TKind::Spin) return false;
      Spin(turn > 0, false);
      return true;
    }
    default:
      return false;
  }
}

// What is typed beside the cells to edit goes to the next of them.
void TGridEditors::EnterCells() {
  if (FGrid.GetDataSource() != nullptr || IsEditable(FView.currentIndex())) return;
  if (!FView.currentIndex().isValid()) FView.setCurrentIndex(FModel.index(0, 0));
  if (!IsEditable(FView.currentIndex())) MoveToNextCell(true);
}

bool TGridEditors::ViewKey(QKeyEvent& key) {
  const bool pastes = key.matches(QKeySequence::Paste);
  if (pastes || IsPlainText(key)) EnterCells();
  const QModelIndex current = FView.currentIndex();
  if (pastes && IsEditable(current)) {
    Paste();
    return true;
  }
  switch (key.key()) {
    case Qt::Key_Tab:
      return MoveToNextCell(true);
    case Qt::Key_Backtab:
      return MoveToNextCell(false);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
      return Open(current);
    case Qt::Key_F4:
    case Qt::Key_Down:
      if (key.key() == Qt::Key_Down && key.modifiers() != Qt::AltModifier) return false;
      if (Open(current)) DropDown();
      return true;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      break;
    default:
      if (!IsPlainText(key)) return false;
  }
  if (!Open(current)) return false;
  QCoreApplication::sendEvent(&FField->Line(), &key);  // what is selected, all of it, gives way
  return true;
}

void TGridEditors::ReportKey(const QKeyEvent& key) {
  const TStep step(*this);
  if (key.key() == Qt::Key_Backspace || key.key() == Qt::Key_Delete) {
    FGrid.PressEditorKey(kKeyBackspace);
  } else if (IsPlainText(key)) {
    FGrid.PressEditorKey(key.text().front().unicode());
  }
}

bool TGridEditors::LineKey(QKeyEvent& key) {
  const bool list = FField->GetKind() == TCellField::TKind::List;
  const bool spin = FField->GetKind() == TCellField::TKind::Spin;
  if (key.matches(QKeySequence::Paste) && HoldsCells(QApplication::clipboard()->text())) {
    Cancel();
    Paste();
    return true;
  }
  switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      // At the last cell the key leaves the grid.
      if (Commit() && !MoveToNextCell(key.key() == Qt::Key_Tab)) QCoreApplication::sendEvent(&FView, &key);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (Commit()) MoveToNextRow();
      return true;
    case Qt::Key_Escape:
      Cancel();
      return true;
    case Qt::Key_F4:
      DropDown();
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down: {
      const bool up = key.key() == Qt::Key_Up;
      if (key.modifiers() == Qt::AltModifier) {
        DropDown();
      } else if (spin) {
        Spin(up, true);
      } else if (list) {
        ChooseNext(up ? -1 : 1);
      } else if (Commit()) {
        QCoreApplication::sendEvent(&FView, &key);
      }
      return true;
    }
    default:
      break;
  }
  if (list && key.key() == Qt::Key_Space) {
    DropDown();
    return true;
  }
  ReportKey(key);
  if (FField == nullptr) return true;
  if (list && IsPlainText(key)) ChooseByKey(key.text());
  return list && IsPlainText(key);
}

bool TGridEditors::ViewClicked(const QMouseEvent& mouse) {
  const QPoint position = mouse.position().toPoint();
  const QModelIndex index = FView.indexAt(position);
  if (mouse.button() != Qt::LeftButton || mouse.modifiers() != Qt::NoModifier || !index.isValid() ||
      !Open(index)) {
    return false;
  }
  const QRect cell = FView.visualRect(index);
  const bool onButton = position.x() >= cell.right() - GetCellButtonWidth();
  if (FField->GetKind() == TCellField::TKind::List || (onButton && FField->Drop() != nullptr)) {
    DropDown();
  } else if (onButton && FField->GetKind() == TCellField::TKind::Spin) {
    Spin(position.y() < cell.center().y(), false);
  }
  return true;
}

bool TGridEditors::LeaveFor(QObject* watched, const QEvent& event) {
  auto* widget = qobject_cast<QWidget*>(watched);
  const bool shortcut = event.type() == QEvent::Shortcut;
  if (!shortcut && (widget == nullptr || IsInside(widget))) return false;
  if (Commit()) return false;
  FField->Line().setFocus();
  return true;
}

void TGridEditors::FocusMoved(QWidget* now) {
  if (FField == nullptr || FStepping || now == nullptr || IsInside(now) || Commit()) return;
  QTimer::singleShot(0, this, [this] {
    if (FField != nullptr) FField->Line().setFocus();
  });
}

bool TGridEditors::MoveToNextCell(bool forward) {
  const int columns = FModel.columnCount();
  const QModelIndex current = FView.currentIndex();
  if (!current.isValid() || columns == 0) return false;
  const int cells = FModel.rowCount() * columns;
  for (int cell = current.row() * columns + current.column() + (forward ? 1 : -1); cell >= 0 && cell < cells;
       cell += forward ? 1 : -1) {
    const QModelIndex next = FModel.index(cell / columns, cell % columns);
    if (!IsEditable(next)) continue;
    GoTo(next);
    return true;
  }
  return false;
}

void TGridEditors::MoveToNextRow() {
  const QModelIndex current = FView.currentIndex();
  const QModelIndex next = current.siblingAtRow(current.row() + 1);
  if (next.isValid()) GoTo(next);
}

void TGridEditors::GoTo(const QModelIndex& index) {
  FView.setCurrentIndex(index);
  FView.scrollTo(index);
  // Before the first cell to edit stands what the row is marked with.
  for (int column = 0; column < index.column(); ++column) {
    if (IsEditable(index.siblingAtColumn(column))) return;
  }
  FView.horizontalScrollBar()->setValue(0);
}

}  // namespace margindesk
