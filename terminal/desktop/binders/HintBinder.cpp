#include "terminal/desktop/binders/HintBinder.h"

#include <QToolTip>
#include <QWidget>

#include "terminal/desktop/Text.h"

namespace margindesk {

namespace {

// As the hint's line above it and its text, which may hold line ends.
QString MakeHintText(const THintStyleController& hints) {
  QString text = ToQt(hints.GetHintText()).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
  if (!hints.GetHintCaption().empty()) {
    text.prepend(QStringLiteral("<b>%1</b><br>").arg(ToQt(hints.GetHintCaption()).toHtmlEscaped()));
  }
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text);
}

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
  QToolTip::showText(QPoint(point.FX, point.FY), MakeHintText(FHints), &FForm, {}, kWithoutEnd);
}

}  // namespace margindesk
