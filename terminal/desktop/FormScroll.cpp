#include "terminal/desktop/FormScroll.h"

#include <QEvent>
#include <QScreen>

namespace margindesk {

TFormScroll::TFormScroll(QWidget* form, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(form);
}

QSize TFormScroll::sizeHint() const { return widget()->sizeHint(); }

QSize TFormScroll::minimumSizeHint() const {
  return widget()->minimumSizeHint().boundedTo(screen()->availableSize() / 2);
}

bool TFormScroll::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
  return QScrollArea::eventFilter(watched, event);
}

}  // namespace margindesk
