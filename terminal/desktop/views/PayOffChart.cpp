#include "terminal/desktop/views/PayOffChart.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/views/Figure.h"

namespace margindesk {

namespace {

constexpr double kMargin = 0.12;  // of the range, beyond what has to be seen
constexpr int kGap = 6;
constexpr int kXLabels = 6;
constexpr int kYLabels = 5;

struct TChartColors {
  QColor FProfit, FLoss, FNow, FMark;
};

TChartColors GetColors(const QPalette& palette) {
  const bool dark = palette.color(QPalette::Base).lightness() < 128;
  if (dark) return {{0x81, 0xc7, 0x84}, {0xff, 0x8a, 0x80}, {0x8a, 0xb4, 0xf8}, {0xff, 0xb7, 0x4d}};
  return {{0x1b, 0x7a, 0x34}, {0xb3, 0x26, 0x1e}, {0x0b, 0x57, 0xd0}, {0x8a, 0x4b, 0x00}};
}

// A round step that cuts a range into about so many parts: 1, 2 or 5 times a power of ten.
double MakeStep(double range, int parts) {
  const double raw = range / parts;
  const double power = std::pow(10, std::floor(std::log10(raw)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= raw) return factor * power;
  }
  return 10 * power;
}

// The text of an axis: as many decimals as the step needs.
QString ShowStep(double value, double step) {
  const int decimals = step >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(step) - 1e-9));
  return ToQt(TCustomFormatter::GetInstance().FormatNumber(value, decimals, true));
}

}  // namespace

TPayOffChart::TPayOffChart(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void TPayOffChart::SetCase(const TPayOffCase& payOff, const TPayOffFigures& figures) {
  FCase = payOff;
  FFigures = figures;
  FAtExpiry.clear();
  FNow.clear();
  update();
  if (FCase.FLegs.empty() || FCase.FSpot <= 0) return;

  double low = FCase.FSpot;
  double high = FCase.FSpot;
  const auto see = [&](double spot) {
    low = std::min(low, spot);
    high = std::max(high, spot);
  };
  for (const TPayOffLeg& leg : FCase.FLegs) {
    if (leg.FRight != 0) see(leg.FStrike);
  }
  std::ranges::for_each(FFigures.FBreakEvens, see);
  const double beyond = std::max(high - low, FCase.FSpot * kMargin) / 2;
  FSpots = {std::max(low - beyond, 0.0), high + beyond};

  FAmounts = {0, 0};
  for (int i = 0; i <= kSamples; ++i) {
    const double spot = FSpots.FLow + (FSpots.FHigh - FSpots.FLow) * i / kSamples;
    FAtExpiry.push_back(ReckonPayOff(FCase.FLegs, spot));
    FNow.push_back(ReckonPayOffNow(FCase.FLegs, spot, FCase.FVolatility));
    FAmounts.FLow = std::min({FAmounts.FLow, FAtExpiry.back(), FNow.back()});
    FAmounts.FHigh = std::max({FAmounts.FHigh, FAtExpiry.back(), FNow.back()});
  }
  const double margin = std::max((FAmounts.FHigh - FAmounts.FLow) * kMargin, 1e-6);
  FAmounts.FLow -= margin;
  FAmounts.FHigh += margin;
}

QStringList TPayOffChart::TellAt(double spot) const {
  return {HostText("Desktop_PriceOf")
              .arg(ToQt(FCase.FUnderlying.Text()), ShowFigure(spot, kFormatPrice, FCase.FUnderlying)),
          HostText("Desktop_AtExpiry") + QStringLiteral(": ") + ShowAmount(ReckonPayOff(FCase.FLegs, spot)),
          HostText("Desktop_Today") + QStringLiteral(": ") +
              ShowAmount(ReckonPayOffNow(FCase.FLegs, spot, FCase.FVolatility))};
}

// --- pointer

void TPayOffChart::SetPointer(std::optional<double> spot) {
  if (FAtExpiry.empty()) spot.reset();
  if (spot) spot = std::clamp(*spot, FSpots.FLow, FSpots.FHigh);
  if (spot == FPointer) return;
  FPointer = spot;
  if (FPointer) setAccessibleDescription(TellAt(*FPointer).join(QStringLiteral(", ")));
  update();
}

void TPayOffChart::mouseMoveEvent(QMouseEvent* event) {
  const QRectF plot = GetPlot();
  const double part = (event->position().x() - plot.left()) / plot.width();
  if (part < 0 || part > 1) {
    SetPointer({});
  } else {
    SetPointer(FSpots.FLow + part * (FSpots.FHigh - FSpots.FLow));
  }
}

void TPayOffChart::leaveEvent(QEvent* /*event*/) { SetPointer({}); }

void TPayOffChart::keyPressEvent(QKeyEvent* event) {
  const double step = (FSpots.FHigh - FSpots.FLow) / 100;
  const double at = FPointer.value_or(FCase.FSpot);
  switch (event->key()) {
    case Qt::Key_Left:
      return SetPointer(at - step);
    case Qt::Key_Right:
      return SetPointer(at + step);
    case Qt::Key_Escape:
      return SetPointer({});
    default:
      QWidget::keyPressEvent(event);
  }
}

// --- painting

QRectF TPayOffChart::GetPlot() const {
  const QFontMetrics metrics(font());
  const double step = MakeStep(FAmounts.FHigh - FAmounts.FLow, kYLabels);
  const int left = std::max(metrics.horizontalAdvance(ShowStep(FAmounts.FLow, step)),
                            metrics.horizontalAdvance(ShowStep(FAmounts.FHigh, step))) +
                   2 * kGap;
  const int line = metrics.height();
  return QRectF(rect()).adjusted(left, 2 * line + 3 * kGap, -2 * kGap, -line - 2 * kGap);
}

double TPayOffChart::ToX(double spot) const {
  const QRectF plot = GetPlot();
  return plot.left() + plot.width() * (spot - FSpots.FLow) / (FSpots.FHigh - FSpots.FLow);
}

double TPayOffChart::ToY(double amount) const {
  const QRectF plot = GetPlot();
  return plot.bottom() - plot.height() * (amount - FAmounts.FLow) / (FAmounts.FHigh - FAmounts.FLow);
}

void TPayOffChart::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  if (FAtExpiry.empty()) return;
  PaintAxes(painter);
  PaintCurves(painter);
  PaintMarks(painter);
  PaintPointer(painter);
}

void TPayOffChart::PaintAxes(QPainter& painter) const {
  const QRectF plot = GetPlot();
  const int line = QFontMetrics(font()).height();
  const QColor grid = palette().color(QPalette::Mid);
  const QColor text = palette().color(QPalette::PlaceholderText);
  const double yStep = MakeStep(FAmounts.FHigh - FAmounts.FLow, kYLabels);
  for (double value = std::ceil(FAmounts.FLow / yStep) * yStep; value <= FAmounts.FHigh; value += yStep) {
    const double y = ToY(value);
    painter.setPen(QPen(grid, 0.5));
    painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    painter.setPen(text);
    painter.drawText(QRectF(0, y - line / 2.0, plot.left() - kGap, line), Qt::AlignRight | Qt::AlignVCenter,
                     ShowStep(value, yStep));
  }
  const double xStep = MakeStep(FSpots.FHigh - FSpots.FLow, kXLabels);
  for (double spot = std::ceil(FSpots.FLow / xStep) * xStep; spot <= FSpots.FHigh; spot += xStep) {
    const QString label = ShowStep(spot, xStep);
    const int width = QFontMetrics(font()).horizontalAdvance(label);
    const double x = ToX(spot) - width / 2.0;
    if (x + width > this->width()) break;  // half of it would be cut
    painter.drawText(QRectF(x, plot.bottom() + kGap, width + 1, line), Qt::AlignCenter, label);
  }
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.drawLine(QPointF(plot.left(), ToY(0)), QPointF(plot.right(), ToY(0)));
}

void TPayOffChart::PaintCurves(QPainter& painter) const {
  const TChartColors colors = GetColors(palette());
  const QRectF plot = GetPlot();
  const auto makeLine = [this](const std::vector<double>& amounts) {
    QPolygonF points;
    for (std::size_t i = 0; i < amounts.size(); ++i) {
      points << QPointF(ToX(FSpots.FLow + (FSpots.FHigh - FSpots.FLow) * static_cast<double>(i) / kSamples),
                        ToY(amounts[i]));
    }
    return points;
  };
  const QPolygonF expiry = makeLine(FAtExpiry);
  // Profit and loss at expiry as areas above and below zero.
  QPolygonF area = expiry;
  area << QPointF(plot.right(), ToY(0)) << QPointF(plot.left(), ToY(0));
  QPainterPath path;
  path.addPolygon(area);
  painter.save();
  for (const bool profit : {true, false}) {
    QRectF half = plot;
    (profit ? half.setBottom(ToY(0)) : half.setTop(ToY(0)));
    QColor color = profit ? colors.FProfit : colors.FLoss;
    color.setAlpha(40);
    painter.setClipRect(half);
    painter.fillPath(path, color);
  }
  painter.restore();
  painter.setPen(QPen(palette().color(QPalette::Text), 2));
  painter.drawPolyline(expiry);
  painter.setPen(QPen(colors.FNow, 2, Qt::DashLine));
  painter.drawPolyline(makeLine(FNow));

  // The legend, with the lines as they are drawn.
  const QFontMetrics metrics(font());
  double x = plot.left();
  const double y = kGap + metrics.height() / 2.0;
  const auto addEntry = [&](const QPen& pen, const char* key) {
    painter.setPen(pen);
    painter.drawLine(QPointF(x, y), QPointF(x + 24, y));
    const QString text = HostText(key);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QPointF(x + 30, y + metrics.ascent() / 2.0 - 1), text);
    x += 30 + metrics.horizontalAdvance(text) + 18;
  };
  addEntry(QPen(palette().color(QPalette::Text), 2), "Desktop_AtExpiry");
  addEntry(QPen(colors.FNow, 2, Qt::DashLine), "Desktop_Today");
}

void TPayOffChart::PaintMarks(QPainter& painter) const {
  const TChartColors colors = GetColors(palette());
  const QRectF plot = GetPlot();
  const QFontMetrics metrics(font());
  const auto drawLine = [&](double spot, const QPen& pen) {
    painter.setPen(pen);
    painter.drawLine(QPointF(ToX(spot), plot.top()), QPointF(ToX(spot), plot.bottom()));
  };
  const auto makeBox = [&](double spot, const QString& label, double top) {
    const double width = metrics.horizontalAdvance(label) + 2;
    const double left = std::clamp(ToX(spot) - width / 2, plot.left(), plot.right() - width);
    return QRectF(left, top, width, metrics.height());
  };
  // Strikes are told at the foot, from left to right; one that would stand on another has its line alone.
  std::vector<double> strikes;
  for (const TPayOffLeg& leg : FCase.FLegs) {
    if (leg.FRight != 0) strikes.push_back(leg.FStrike);
  }
  std::ranges::sort(strikes);
  double lastRight = plot.left() - kGap;
  for (const double strike : strikes) {
    drawLine(strike, QPen(palette().color(QPalette::PlaceholderText), 1, Qt::DotLine));
    const QString label =
        HostText("Desktop_StrikeAt").arg(ShowFigure(strike, kFormatPrice, FCase.FUnderlying));
    const QRectF box = makeBox(strike, label, plot.bottom() - metrics.height() - 2);
    if (box.left() < lastRight + kGap) continue;
    lastRight = box.right();
    painter.fillRect(box, palette().color(QPalette::Base));
    painter.drawText(box, Qt::AlignCenter, label);
  }
  drawLine(FCase.FSpot, QPen(colors.FMark, 1));
  const QString spot =
      HostText("Desktop_SpotAt").arg(ShowFigure(FCase.FSpot, kFormatPrice, FCase.FUnderlying));
  painter.drawText(makeBox(FCase.FSpot, spot, plot.top() - metrics.height() - 2), Qt::AlignCenter, spot);

  painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
  painter.setBrush(palette().color(QPalette::Base));
  for (const double at : FFigures.FBreakEvens) painter.drawEllipse(QPointF(ToX(at), ToY(0)), 4, 4);
  painter.setBrush(Qt::NoBrush);
}

void TPayOffChart::PaintPointer(QPainter& painter) const {
  if (!FPointer) return;
  const QRectF plot = GetPlot();
  const double x = ToX(*FPointer);
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));

  // Measured as it is drawn: a script that another font is taken for may need higher lines.
  const QString text = TellAt(*FPointer).join(u'\n');
  const QSize size = QFontMetrics(font()).size(0, text);
  QRectF box(x + 2 * kGap, plot.top() + kGap, size.width() + 2 * kGap, size.height() + kGap);
  if (box.right() > plot.right()) box.moveRight(x - 2 * kGap);
  box.moveLeft(std::max(box.left(), plot.left() + kGap));
  painter.setBrush(palette().color(QPalette::ToolTipBase));
  painter.setPen(Qt::NoPen);
  painter.drawRoundedRect(box, 3, 3);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(palette().color(QPalette::ToolTipText));
  painter.drawText(box.adjusted(kGap, kGap / 2.0, -kGap, 0), Qt::AlignLeft, text);
}

}  // namespace margindesk
