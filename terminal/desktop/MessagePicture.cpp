#include "terminal/desktop/MessagePicture.h"

#include <QIconEngine>
#include <QPainter>
#include <algorithm>

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

// Draws a picture at whatever size and resolution is asked for.
class TMessageIcon : public QIconEngine {
 public:
  explicit TMessageIcon(const TMessagePicture& picture) : FPicture(picture) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    const QRectF square = QRectF(rect).adjusted(1, 1, -1, -1);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(FPicture.FColor));
    if (FPicture.FTriangle) {
      painter->drawPolygon(
          QPolygonF({{square.center().x(), square.top()}, square.bottomLeft(), square.bottomRight()}));
    } else {
      painter->drawEllipse(square);
    }
    QFont font = painter->font();
    font.setPixelSize(static_cast<int>(square.height() * (FPicture.FTriangle ? 0.55 : 0.65)));
    font.setBold(true);
    painter->setFont(font);
    painter->setPen(Qt::white);
    painter->drawText(square.translated(0, FPicture.FTriangle ? square.height() * 0.15 : 0), Qt::AlignCenter,
                      QString(QChar(FPicture.FMark)));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return drawn;
  }

  QIconEngine* clone() const override { return new TMessageIcon(*this); }

 private:
  const TMessagePicture& FPicture;
};

}  // namespace

QIcon MakeMessagePicture(QStyle::StandardPixmap picture) {
  const auto* found = std::ranges::find(kPictures, picture, &TMessagePicture::FPicture);
  return found == std::end(kPictures) ? QIcon() : QIcon(new TMessageIcon(*found));
}

}  // namespace margindesk
