#include "terminal/desktop/binders/CellTexts.h"

#include <QFontMetrics>
#include <cmath>

namespace margindesk {

const QStaticText& TCellTexts::LayOut(const QString& text, const QFont& font, const QTransform& transform) {
  if (font != FFont) {
    FTexts.clear();
    FFont = font;
  }
  if (const QStaticText* kept = FTexts.object(text)) return *kept;
  QString line = text;
  line.replace(u'\n', u' ');
  auto* laidOut = new QStaticText(line);
  laidOut->setTextFormat(Qt::PlainText);
  laidOut->prepare(transform, font);
  FTexts.insert(text, laidOut);
  return *FTexts.object(text);
}

void TCellTexts::Draw(QPainter& painter, const QRect& place, Qt::Alignment alignment, const QString& text,
                      const QFont& font) {
  if (text.isEmpty() || place.width() <= 0) return;
  painter.setFont(font);
  const QStaticText& laidOut = LayOut(text, font, painter.transform());
  const QSizeF size = laidOut.size();
  if (size.width() > place.width()) {
    painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width()));
    return;
  }
  const double left = alignment.testFlag(Qt::AlignRight) ? place.right() + 1 - size.width()
                      : alignment.testFlag(Qt::AlignHCenter)
                          ? place.left() + (place.width() - size.width()) / 2
                          : place.left();
  painter.drawStaticText(QPointF(left, place.top() + (place.height() - size.height()) / 2), laidOut);
}

int TCellTexts::GetWidth(const QString& text, const QFont& font) {
  return text.isEmpty() ? 0 : static_cast<int>(std::ceil(LayOut(text, font, {}).size().width()));
}

}  // namespace margindesk
