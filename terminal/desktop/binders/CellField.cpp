#include "terminal/desktop/binders/CellField.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

constexpr int kSpinDelay = 300;    // milliseconds until a held button repeats
constexpr int kSpinInterval = 60;  // and between two repetitions

}  // namespace

TCellField::TCellField(QWidget* parent, TKind kind)
    : QFrame(parent), FKind(kind), FLine(new QLineEdit(this)) {
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  setFrameShape(QFrame::Box);
  FLine->setFrame(false);
  FLine->setTextMargins(1, 0, 1, 0);
  FLine->setReadOnly(kind == TKind::List);
  setFocusProxy(FLine);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(FLine, 1);
  if (kind == TKind::Spin) {
    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    FUp = MakeButton(Qt::UpArrow, HostText("Desktop_Up"));
    FDown = MakeButton(Qt::DownArrow, HostText("Desktop_Down"));
    for (QToolButton* button : {FUp, FDown}) {
      button->setAutoRepeat(true);
      button->setAutoRepeatDelay(kSpinDelay);
      button->setAutoRepeatInterval(kSpinInterval);
      column->addWidget(button);
    }
    row->addLayout(column);
  } else if (kind != TKind::Text) {
    FDrop = MakeButton(Qt::DownArrow, HostText("Desktop_DropDown"));
    row->addWidget(FDrop);
  }
  SetRefused(false);
}

QToolButton* TCellField::MakeButton(Qt::ArrowType arrow, const QString& name) {
  auto* button = new QToolButton(this);
  button->setArrowType(arrow);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setFixedWidth(kCellButtonWidth - 2);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  button->setMinimumHeight(1);
  button->setAccessibleName(name);
  return button;
}

void TCellField::SetRefused(bool refused) {
  QPalette palette = parentWidget()->palette();
  palette.setColor(QPalette::WindowText, palette.color(refused ? QPalette::BrightText : QPalette::Highlight));
  setPalette(palette);
  FLine->setPalette(parentWidget()->palette());
}

}  // namespace margindesk
