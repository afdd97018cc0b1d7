#include "terminal/desktop/MessagePicture.h"

#include <algorithm>

#include "terminal/desktop/DrawnIcon.h"

namespace margindesk {

namespace {

struct TMessagePicture {
  QStyle::StandardPixmap FPicture;
  QRgb FColor;
  char16_t FMark;
  bool FTriangle;
};

constexpr TMessagePicture kPictures[] = {
    {QStyle::SP_MessageBoxInformation, 0xff1f6feb, u'i', false},
    {QStyle::SP_MessageBoxQuestion, 0xff1f6feb, u'?', false},
    {QStyle::SP_MessageBoxWarning, 0xffb26a00, u'!', true},
    {QStyle::SP_MessageBoxCritical, 0xffb3261e, u'!', false},
};

void DrawPicture(QPainter& painter, double side, const TMessagePicture& picture) {
  const QRectF square(1, 1, side - 2, side - 2);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(picture.FColor));
  if (picture.FTriangle) {
    painter.drawPolygon(
        QPolygonF({{square.center().x(), square.top()}, square.bottomLeft(), square.bottomRight()}));
  } else {
    painter.drawEllipse(square);
  }
  QFont font = painter.font();
  font.setPixelSize(static_cast<int>(side * (picture.FTriangle ? 0.5 : 0.6)));
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(square.translated(0, picture.FTriangle ? side * 0.15 : 0), Qt::AlignCenter,
                   QString(QChar(picture.FMark)));
}

}  // namespace

QIcon MakeMessagePicture(QStyle::StandardPixmap picture) {
  const auto* found = std::ranges::find(kPictures, picture, &TMessagePicture::FPicture);
  if (found == std::end(kPictures)) return {};
  return MakeDrawnIcon([found](QPainter& painter, double side) { DrawPicture(painter, side, *found); });
}

}  // namespace margindesk
