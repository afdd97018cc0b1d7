#include "terminal/desktop/binders/CellField.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

constexpr int kSpinDelay = 300;    // milliseconds until a held button repeats
constexpr int kSpinInterval = 60;  // and between two repetitions

// Looks like the arrows that the cells around it show.
class TArrowButton : public QToolButton {
 public:
  TArrowButton(QWidget* parent, bool up) : QToolButton(parent), FUp(up) {}

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    if (isDown() || underMouse()) {
      painter.fillRect(rect(), palette().color(isDown() ? QPalette::Mid : QPalette::Button));
    }
    painter.setPen(palette().color(QPalette::Text));
    PaintArrow(painter, QRectF(rect()).center(), FUp);
  }

 private:
  const bool FUp;
};

}  // namespace

void PaintArrow(QPainter& painter, QPointF center, bool up) {
  const double unit = Scaled(100) / 100.0;
  const double tip = (up ? -2 : 2) * unit;
  const double side = 3.5 * unit;
  const QPointF corners[] = {center + QPointF(-side, -tip), center + QPointF(side, -tip),
                             center + QPointF(0, tip)};
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(painter.pen().color());
  painter.setPen(Qt::NoPen);
  painter.drawPolygon(corners, 3);
  painter.restore();
}

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
    FUp = MakeButton(true, HostText("Desktop_Up"));
    FDown = MakeButton(false, HostText("Desktop_Down"));
    for (QToolButton* button : {FUp, FDown}) {
      button->setAutoRepeat(true);
      button->setAutoRepeatDelay(kSpinDelay);
      button->setAutoRepeatInterval(kSpinInterval);
      column->addWidget(button);
    }
    row->addLayout(column);
  } else if (kind != TKind::Text) {
    FDrop = MakeButton(false, HostText("Desktop_DropDown"));
    row->addWidget(FDrop);
  }
  SetRefused(false);
}

QToolButton* TCellField::MakeButton(bool up, const QString& name) {
  auto* button = new TArrowButton(this, up);
  button->setFocusPolicy(Qt::NoFocus);
  button->setFixedWidth(GetCellButtonWidth() - 2);
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  button->setMinimumHeight(1);
  button->setAccessibleName(name);
  return button;
}

void TCellField::SetRefused(bool refused) {
  const QPalette& around = parentWidget()->palette();
  QPalette palette = around;
  palette.setColor(QPalette::Text, around.color(refused ? QPalette::BrightText : QPalette::Highlight));
  setPalette(palette);  // of the frame
  setLineWidth(refused ? 2 : 1);
  palette.setColor(QPalette::Text, around.color(QPalette::Text));
  for (auto* child : findChildren<QWidget*>()) child->setPalette(palette);
}

}  // namespace margindesk
