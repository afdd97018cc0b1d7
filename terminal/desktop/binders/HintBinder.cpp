#include "terminal/desktop/binders/HintBinder.h"

#include <QFontMetrics>
#include <QToolTip>
#include <QWidget>

#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

constexpr int kWidestHint = 420;  // pixels of a line that is not wrapped

// As the hint's line above it and its text, which may hold line ends. A tool tip left to itself wraps a text
// into a narrow column.
QString MakeHintText(const THintStyleController& hints) {
  const QString plain = ToQt(hints.GetHintText());
  const QRect whole = QFontMetrics(QToolTip::font()).boundingRect(QRect(), Qt::TextExpandTabs, plain);
  QString text = plain.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
  if (!hints.GetHintCaption().empty()) {
    text.prepend(QStringLiteral("<b>%1</b><br>").arg(ToQt(hints.GetHintCaption()).toHtmlEscaped()));
  }
  if (whole.width() <= kWidestHint) return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text);
  return QStringLiteral("<table width='%1'><tr><td>%2</td></tr></table>").arg(kWidestHint).arg(text);
}

constexpr int kBeside = 14;  // pixels right of the pointer, which goes on to the next row below
constexpr int kWithoutEnd = 24 * 60 * 60 * 1000;  // milliseconds; the view hides the hint itself

}  // namespace

THintBinder::THintBinder(THintStyleController& hints, QWidget& form)
    : QObject(&form), FHints(hints), FForm(form) {
  FHints.SetOnUpdate(MakeEvent<&THintBinder::HintUpdated>(this));
}

THintBinder::~THintBinder() { FHints.SetOnUpdate({}); }

void THintBinder::HintUpdated() {
  if (!FHints.IsShowing()) {
    QToolTip::hideText();
    return;
  }
  const TPoint point = FHints.GetPoint();
  QToolTip::showText(QPoint(point.FX + kBeside, point.FY), MakeHintText(FHints), &FForm, {}, kWithoutEnd);
}

}  // namespace margindesk
