#include "terminal/desktop/DrawnIcon.h"

#include <QIconEngine>
#include <algorithm>
#include <utility>

namespace margindesk {

namespace {

class TDrawnIcon : public QIconEngine {
 public:
  explicit TDrawnIcon(TIconDraw draw) : FDraw(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    FDraw(*painter, std::min(rect.width(), rect.height()));
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return drawn;
  }

  QIconEngine* clone() const override { return new TDrawnIcon(*this); }

 private:
  const TIconDraw FDraw;
};

}  // namespace

QIcon MakeDrawnIcon(TIconDraw draw) { return QIcon(new TDrawnIcon(std::move(draw))); }

}  // namespace margindesk
