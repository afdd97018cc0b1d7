#pragma once

#include <QPolygonF>
#include <QWidget>
#include <optional>
#include <vector>

#include "host/services/PayOffCase.h"

namespace margindesk {

// A pay-off as a chart: profit or loss over the underlying's price, at expiry and now, with the strikes, the
// spot price and the break-even points. Under the pointer, or at the place that the arrow keys move, the
// values are told. The curves are reckoned when they change, not while they are painted.
class TPayOffChart : public QWidget {
 public:
  explicit TPayOffChart(QWidget* parent);

  // Nothing is drawn of a case without legs or spot price.
  void SetCase(const TPayOffCase& payOff, const TPayOffFigures& figures);

  // What is told at a price of the underlying: the price, the profit at expiry and the profit now.
  QStringList TellAt(double spot) const;

  QSize sizeHint() const override { return {520, 320}; }
  QSize minimumSizeHint() const override { return {260, 180}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct TRange {
    double FLow = 0;
    double FHigh = 1;
  };

  static constexpr int kSamples = 240;

  QRectF GetPlot() const;
  double ToX(double spot) const;
  double ToY(double amount) const;
  void SetPointer(std::optional<double> spot);
  void PaintAxes(QPainter& painter) const;
  void PaintMarks(QPainter& painter) const;
  void PaintCurves(QPainter& painter) const;
  void PaintPointer(QPainter& painter) const;

  TPayOffCase FCase;
  TPayOffFigures FFigures;
  TRange FSpots;
  TRange FAmounts;
  std::vector<double> FAtExpiry;  // one a sample
  std::vector<double> FNow;
  std::optional<double> FPointer;  // the price that is told
};

}  // namespace margindesk
