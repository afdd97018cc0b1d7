#include "terminal/desktop/binders/CellDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "terminal/desktop/binders/CellField.h"
#include "terminal/desktop/binders/TreeModel.h"

namespace margindesk {

namespace {

constexpr int kPadding = 4;            // pixels beside a text
constexpr int kMarkWidth = 4;          // pixels of the mark of a changed cell
constexpr double kSpinDistance = 3.5;  // pixels at 100 % scale of the two arrows from the middle
constexpr int kBarAlpha = 110;         // the text on the bar stays readable in every skin
constexpr int kSelectedBar = 2;        // pixels of a bar below the text of a selected row
// What goes beyond a bar's first part: of a margin level more is safer.
const QColor kBarOverload(0x4c, 0xaf, 0x50);

void PaintBar(QPainter& painter, const QRect& rect, const TShownCell& cell, bool selected) {
  QRect bar = rect.adjusted(1, 2, -1, -2);
  // The selection's colour leaves no room for another one behind its text.
  if (selected) bar.setTop(bar.bottom() - kSelectedBar + 1);
  const auto reach = [&bar](double percent) {
    return static_cast<int>(bar.width() * std::clamp(percent / 100, 0.0, 1.0));
  };
  const int end = reach(*cell.FBar);
  const int first = std::min(end, reach(cell.FBarOverload));
  const auto fill = [&](int from, int to, QColor color) {
    color.setAlpha(selected ? 255 : kBarAlpha);
    painter.fillRect(QRect(bar.left() + from, bar.top(), to - from, bar.height()), color);
  };
  fill(0, first, cell.FBarColor);
  fill(first, end, kBarOverload);
}

// The arrows of a cell's button, centred in what it takes of the cell.
void PaintButton(QPainter& painter, const QRect& rect, TCellButton button) {
  const QPointF center = QRectF(rect).center();
  if (button == TCellButton::Drop) return PaintArrow(painter, center, false);
  const QPointF away(0, kSpinDistance * Scaled(100) / 100.0);
  PaintArrow(painter, center - away, true);
  PaintArrow(painter, center + away, false);
}

// How bright a colour is to the eye, 0 to 1.
double GetLuminance(const QColor& color) {
  const auto linear = [](float part) {
    return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// Black or white, whichever has more contrast on the colour: always 4.5 to 1 or more.
QColor TextOn(const QColor& background) {
  constexpr double kEvenContrast = 0.179;  // luminance on which both read alike
  return GetLuminance(background) > kEvenContrast ? QColor(Qt::black) : QColor(Qt::white);
}

}  // namespace

void TCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
  const auto* cell = index.data(kShownCellRole).value<const TShownCell*>();
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  if (selected) painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
  if (cell == nullptr) return;
  QColor text = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  if (cell->FBackground.isValid()) {  // stays in sight in a selected row
    painter->fillRect(option.rect, cell->FBackground);
    text = TextOn(cell->FBackground);
  } else if (!selected && (cell->FText.startsWith(u'-') || !cell->FHint.isEmpty())) {
    text = option.palette.color(QPalette::BrightText);
  }
  if (cell->FBar) PaintBar(*painter, option.rect, *cell, selected);
  if (cell->FChanged) {
    painter->fillRect(QRect(option.rect.topLeft(), QSize(kMarkWidth, option.rect.height())), text);
  }
  painter->setPen(text);
  QRect inside = option.rect;
  if (cell->FButton != TCellButton::None) {
    inside.setRight(inside.right() - GetCellButtonWidth());
    PaintButton(*painter, option.rect.adjusted(option.rect.width() - GetCellButtonWidth(), 0, 0, 0),
                cell->FButton);
  }
  inside.adjust(kPadding + (cell->FChanged ? kMarkWidth : 0), 0, -kPadding, 0);
  FTexts.Draw(*painter, inside, cell->FAlignment, cell->FText, option.font);
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));  // the cell that keys go to
  }
}

bool TCellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
  const QString hint = index.data(Qt::ToolTipRole).toString();
  const QString text = index.data(Qt::DisplayRole).toString();
  const bool cut = sizeHint(option, index).width() > option.rect.width();
  const QString& shown = hint.isEmpty() && cut ? text : hint;
  // Nothing to tell is no reason to take a hint away that the view itself shows.
  if (!shown.isEmpty()) QToolTip::showText(event->globalPos(), shown, view, option.rect);
  return true;
}

QSize TCellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* cell = index.data(kShownCellRole).value<const TShownCell*>();
  const int width = cell == nullptr ? 0 : FTexts.GetWidth(cell->FText, option.font);
  const int button = cell == nullptr || cell->FButton == TCellButton::None ? 0 : GetCellButtonWidth();
  return {width + button + 2 * kPadding + kMarkWidth, FRowHeight};
}

}  // namespace margindesk
