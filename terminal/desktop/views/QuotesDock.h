#pragma once

#include <QLabel>
#include <QPolygonF>
#include <deque>

#include "host/services/HostData.h"
#include "terminal/desktop/views/FactForm.h"
#include "terminal/desktop/views/HostDock.h"

namespace margindesk {

// The last prices of a symbol as a line, the newest on the right.
class TPriceLine : public QWidget {
 public:
  explicit TPriceLine(QWidget* parent);

  void Clear();
  void Add(double price);

  QSize sizeHint() const override { return {220, 64}; }
  QSize minimumSizeHint() const override { return {100, 40}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::deque<double> FPrices;
};

// A symbol's quotes with its live price: last and change, bid and ask, and the prices since it was opened.
class TQuotesDock : public THostDock {
 public:
  static constexpr const char* kKind = "quotes";

  TQuotesDock(THostData& hostData, TCode symbol, QWidget* parent);

  void SetSymbol(TCode symbol);

  std::vector<std::string> Describe() const override;
  void UpdateTexts() override;
  void Refresh() override;

 private:
  THostData& FData;
  TCode FSymbol;
  QLabel* FName;
  QLabel* FPrice;
  QLabel* FChange;
  TPriceLine* FLine;
  TFactForm* FForm;
  double FLast = 0;  // the price that is shown
  int FDirection = 0;
};

}  // namespace margindesk
