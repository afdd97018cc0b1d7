#pragma once

#include <QCache>
#include <QFont>
#include <QPainter>
#include <QStaticText>

namespace margindesk {

// The texts of cells in one line each, kept as they were laid out: that is most of what drawing a text costs,
// and most cells show what they did in the picture before.
class TCellTexts {
 public:
  // Within a place, cut off with an ellipsis where it is too narrow.
  void Draw(QPainter& painter, const QRect& place, Qt::Alignment alignment, const QString& text,
            const QFont& font);

  int GetWidth(const QString& text, const QFont& font);  // pixels that it takes uncut

 private:
  static constexpr qsizetype kMostKept = 4096;

  // Good until the next text is laid out.
  const QStaticText& LayOut(const QString& text, const QFont& font, const QTransform& transform);

  QCache<QString, QStaticText> FTexts{kMostKept};
  QFont FFont;  // of all that are kept
};

}  // namespace margindesk
