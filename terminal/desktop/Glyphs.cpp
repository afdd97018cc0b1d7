#include "terminal/desktop/Glyphs.h"

#include <QPainter>

namespace margindesk {

namespace {

constexpr int kSize = 16;  // pixels at 100 % scale

void DrawLock(QPainter& painter, const QColor& color) {
  painter.drawArc(QRectF(5, 2.5, 6, 8), 0, 180 * 16);
  painter.setBrush(color);
  painter.drawRoundedRect(QRectF(3.5, 7, 9, 6.5), 1, 1);
}

void DrawGlyph(QPainter& painter, TGlyph glyph, const QColor& color) {
  switch (glyph) {
    case TGlyph::Cross:
      painter.drawLine(QPointF(4.5, 4.5), QPointF(11.5, 11.5));
      painter.drawLine(QPointF(11.5, 4.5), QPointF(4.5, 11.5));
      break;
    case TGlyph::Arrow:
      painter.drawPolyline(QPolygonF({{4.5, 6.5}, {8, 10}, {11.5, 6.5}}));
      break;
    case TGlyph::Lock:
      DrawLock(painter, color);
      break;
  }
}

}  // namespace

QIcon MakeGlyph(TGlyph glyph, const QWidget& widget) {
  const double ratio = widget.devicePixelRatioF();
  QPixmap picture(QSize(kSize, kSize) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  const QColor color = widget.palette().color(QPalette::Active, QPalette::ButtonText);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  DrawGlyph(painter, glyph, color);
  painter.end();
  QIcon icon(picture);
  icon.addPixmap(picture, QIcon::Disabled);  // a lock is read while its box is disabled
  return icon;
}

QIcon MakeTintedIcon(const QPixmap& picture, const QWidget& widget) {
  QPixmap tinted = picture;
  QPainter painter(&tinted);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(tinted.rect(), widget.palette().color(QPalette::Active, QPalette::ButtonText));
  painter.end();
  return tinted;
}

}  // namespace margindesk
