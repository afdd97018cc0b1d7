#include "terminal/desktop/Glyphs.h"

#include <QPainter>
#include <QStyle>

#include "terminal/desktop/DrawnIcon.h"

namespace margindesk {

namespace {

constexpr double kSize = 16;  // of the square that a glyph is drawn in

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
    case TGlyph::Float:
      painter.drawRect(QRectF(4, 6, 6.5, 6.5));
      painter.drawPolyline(QPolygonF({{6.5, 3.5}, {13, 3.5}, {13, 10}}));
      break;
    case TGlyph::Lock:
      DrawLock(painter, color);
      break;
  }
}

}  // namespace

QIcon MakeGlyph(TGlyph glyph, const QWidget& widget) {
  const QColor color = widget.palette().color(QPalette::Active, QPalette::ButtonText);
  return MakeDrawnIcon([glyph, color](QPainter& painter, double side) {
    painter.scale(side / kSize, side / kSize);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    DrawGlyph(painter, glyph, color);
  });
}

QIcon MakeTintedIcon(const QPixmap& picture, const QWidget& widget) {
  const int side =
      static_cast<int>(widget.style()->pixelMetric(QStyle::PM_SmallIconSize) * widget.devicePixelRatioF());
  QPixmap tinted = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QPainter painter(&tinted);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(tinted.rect(), widget.palette().color(QPalette::Active, QPalette::ButtonText));
  painter.end();
  tinted.setDevicePixelRatio(widget.devicePixelRatioF());
  return tinted;
}

}  // namespace margindesk
