#include "terminal/desktop/views/FactForm.h"

#include <QEvent>
#include <QScrollBar>
#include <algorithm>

namespace margindesk {

namespace {

constexpr int kMargin = 10;
constexpr int kColumnGap = 18;
constexpr int kLineGap = 3;
constexpr int kLetters = 72;     // of the widest form
constexpr int kHeadingGap = 10;  // above a heading

}  // namespace

TFactForm::TFactForm(QWidget* parent) : QScrollArea(parent) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QSize TFactForm::minimumSizeHint() const {
  const int width = FContent == nullptr ? 0 : FContent->minimumSizeHint().width();
  return {width + verticalScrollBar()->sizeHint().width(), QScrollArea::minimumSizeHint().height()};
}

void TFactForm::SetFacts(const std::vector<TFact>& facts) {
  const bool same =
      FContent != nullptr && std::ranges::equal(facts, FLines, {}, &TFact::FKind, &TLine::FKind);
  if (!same) {
    FLines.clear();
    FContent = new QWidget;
    FGrid = new QGridLayout(FContent);
    FGrid->setContentsMargins(kMargin, kLineGap, kMargin, kMargin);
    FGrid->setHorizontalSpacing(kColumnGap);
    FGrid->setVerticalSpacing(kLineGap);
    FGrid->setColumnStretch(1, 1);
    for (const TFact& fact : facts) AddLine(fact);
    FGrid->setRowStretch(static_cast<int>(facts.size()), 1);
    LimitWidth();
    setWidget(FContent);  // the one before goes
  }
  for (std::size_t i = 0; i < facts.size(); ++i) {
    FLines[i].FCaption->setText(facts[i].FCaption);
    if (FLines[i].FValue == nullptr) continue;
    SetValue(FLines[i], facts[i].FValue);
    FLines[i].FValue->setAccessibleName(facts[i].FCaption + u' ' + facts[i].FValue);
  }
  if (!same) updateGeometry();
}

void TFactForm::AddLine(const TFact& fact) {
  const int row = static_cast<int>(FLines.size());
  TLine line{new QLabel(FContent), nullptr, fact.FKind};
  if (fact.FKind == TFact::TKind::kHeading) {
    QFont font = line.FCaption->font();
    font.setBold(true);
    line.FCaption->setFont(font);
    line.FCaption->setContentsMargins(0, kHeadingGap, 0, 0);
    FGrid->addWidget(line.FCaption, row, 0, 1, 2);
  } else {
    line.FValue = new QLabel(FContent);
    line.FValue->setTextFormat(Qt::PlainText);
    line.FValue->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line.FValue->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    FGrid->addWidget(line.FCaption, row, 0);
    FGrid->addWidget(line.FValue, row, 1);
  }
  line.FCaption->setTextFormat(Qt::PlainText);
  FLines.push_back(line);
}

void TFactForm::SetValue(const TLine& line, const QString& value) const {
  line.FValue->setText(value);
  const bool negative = line.FKind == TFact::TKind::kNumber && value.startsWith(u'-');
  const auto role = negative ? QPalette::BrightText : QPalette::WindowText;
  if (line.FValue->foregroundRole() != role) line.FValue->setForegroundRole(role);
}

// A value far from its caption is hard to read across.
void TFactForm::LimitWidth() { FContent->setMaximumWidth(kLetters * fontMetrics().averageCharWidth()); }

// A heading's bold font is its own and does not follow the scale by itself.
void TFactForm::changeEvent(QEvent* event) {
  QScrollArea::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  QFont bold = font();
  bold.setBold(true);
  for (const TLine& line : FLines) {
    if (line.FKind == TFact::TKind::kHeading) line.FCaption->setFont(bold);
  }
  if (FContent == nullptr) return;
  LimitWidth();
  updateGeometry();
}

}  // namespace margindesk
