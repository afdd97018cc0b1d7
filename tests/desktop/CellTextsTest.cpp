// Texts that are kept laid out look as if they were drawn anew.
#include <QFontMetrics>
#include <QImage>

#include <gtest/gtest.h>

#include "terminal/desktop/binders/CellTexts.h"

namespace margindesk {
namespace {

constexpr QSize kCell(120, 22);

QImage Paint(double scale, const std::function<void(QPainter&)>& draw) {
  QImage image(kCell * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  image.fill(Qt::white);
  QPainter painter(&image);
  draw(painter);
  return image;
}

TEST(CellTexts, LookAsTextsDrawnAnewWhateverWasDrawnBefore) {
  const QString texts[] = {u"-1,234,567.89"_qs,
                           u"51.78%"_qs,
                           u"初始保證金 HKD"_qs,
                           u"two\nlines"_qs,
                           u"<b>no markup</b> &amp;"_qs,
                           u"a text that is certainly cut off at the end of its cell"_qs,
                           u""_qs};
  TCellTexts kept;
  QFont font;
  for (const int points : {9, 13, 9}) {
    font.setPointSize(points);
    for (const double scale : {1.0, 2.0, 1.0}) {
      for (const QString& text : texts) {
        for (const auto side : {Qt::AlignLeft, Qt::AlignRight}) {
          const Qt::Alignment alignment = side | Qt::AlignVCenter;
          for (const QRect& place : {QRect(QPoint(), kCell), QRect(7, 1, 101, 20)}) {
            const QImage wanted = Paint(scale, [&](QPainter& painter) {
              painter.setFont(font);
              painter.drawText(place, static_cast<int>(alignment) | Qt::TextSingleLine,
                               QFontMetrics(font).elidedText(text, Qt::ElideRight, place.width()));
            });
            const QImage drawn =
                Paint(scale, [&](QPainter& painter) { kept.Draw(painter, place, alignment, text, font); });
            EXPECT_EQ(drawn, wanted) << text.toStdString() << " at " << points << " points, " << scale;
          }
        }
      }
    }
  }
}

TEST(CellTexts, FitIntoTheWidthThatTheySay) {
  TCellTexts kept;
  const QString text = u"1,234,567.89"_qs;
  const int width = kept.GetWidth(text, {});
  const auto paint = [&](int place) {
    return Paint(1, [&](QPainter& painter) {
      kept.Draw(painter, QRect(0, 0, place, kCell.height()), Qt::AlignLeft, text, {});
    });
  };
  EXPECT_EQ(paint(width), paint(kCell.width()));
  EXPECT_NE(paint(width - 2), paint(kCell.width()));
}

}  // namespace
}  // namespace margindesk
