#include "terminal/desktop/views/QuotesDock.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/views/Figure.h"

namespace margindesk {

namespace {

using TKind = TFact::TKind;

constexpr std::size_t kPrices = 240;
constexpr double kPriceFont = 2;  // times the font of the window
constexpr int kMargin = 10;

// With its sign whatever it is.
QString Signed(double value, const QString& text) { return value > 0 ? u'+' + text : text; }

}  // namespace

TPriceLine::TPriceLine(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TPriceLine::Clear() {
  FPrices.clear();
  update();
}

void TPriceLine::Add(double price) {
  FPrices.push_back(price);
  if (FPrices.size() > kPrices) FPrices.pop_front();
  update();
}

void TPriceLine::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect(), palette().color(QPalette::Base));
  if (FPrices.empty()) return;
  const auto [low, high] = std::ranges::minmax(FPrices);
  const QRectF plot = QRectF(rect()).adjusted(4, 6, -6, -6);
  QPolygonF points;
  for (std::size_t i = 0; i < FPrices.size(); ++i) {
    const double part = high > low ? (FPrices[i] - low) / (high - low) : 0.5;
    const double back = static_cast<double>(FPrices.size() - 1 - i) / static_cast<double>(kPrices - 1);
    points << QPointF(plot.right() - plot.width() * back, plot.bottom() - plot.height() * part);
  }
  painter.setPen(QPen(palette().color(QPalette::Link), 1.5));
  painter.drawPolyline(points);
  painter.setBrush(palette().color(QPalette::Link));
  painter.drawEllipse(points.back(), 2.5, 2.5);
}

TQuotesDock::TQuotesDock(THostData& hostData, TCode symbol, QWidget* parent)
    : THostDock(parent), FData(hostData), FSymbol(symbol) {
  auto* content = new QWidget(this);
  FName = new QLabel(content);
  FPrice = new QLabel(content);
  FChange = new QLabel(content);
  for (QLabel* label : {FName, FPrice, FChange}) label->setTextFormat(Qt::PlainText);
  FLine = new TPriceLine(content);
  FForm = new TFactForm(content);
  auto* price = new QHBoxLayout;
  price->addWidget(FPrice);
  price->addSpacing(kMargin);
  price->addWidget(FChange, 1, Qt::AlignBottom);
  auto* top = new QVBoxLayout;
  top->setContentsMargins(kMargin, kMargin / 2, kMargin, 0);
  top->addWidget(FName);
  top->addLayout(price);
  top->addWidget(FLine);
  auto* box = new QVBoxLayout(content);
  box->setContentsMargins(0, 0, 0, 0);
  box->addLayout(top);
  box->addWidget(FForm, 1);
  setWidget(content);
  UpdateTexts();
}

void TQuotesDock::SetSymbol(TCode symbol) {
  if (symbol == FSymbol) return;
  FSymbol = symbol;
  FLast = 0;
  FDirection = 0;
  FLine->Clear();
  UpdateTexts();
}

std::vector<std::string> TQuotesDock::Describe() const { return {kKind, std::string(FSymbol.Text())}; }

void TQuotesDock::UpdateTexts() {
  setWindowTitle(HostText("Desktop_Quotes") + QStringLiteral(" – ") + ToQt(FSymbol.Text()));
  FPrice->setAccessibleName(HostText("Desktop_Last"));
  FChange->setAccessibleName(HostText("Desktop_Change"));
  FLine->setAccessibleName(HostText("Desktop_PriceLine"));
  Refresh();
}

void TQuotesDock::Refresh() {
  QFont large = font();
  large.setPointSizeF(font().pointSizeF() * kPriceFont);
  if (FPrice->font() != large) FPrice->setFont(large);
  const TSymbolFacts* facts = FData.GetItem(FSymbol).GetFacts();
  if (facts == nullptr) {
    FName->setText(HostText("Desktop_NoSymbol"));
    FPrice->clear();
    FChange->clear();
    FForm->SetFacts({});
    return;
  }
  const TPriceFacts& prices = facts->FPrices;
  const double last = facts->GetPrice();
  if (FLast != 0 && last != FLast) FDirection = last > FLast ? 1 : -1;
  FLast = last;
  if (last > 0) FLine->Add(last);
  const QString arrow = FDirection == 0  ? QString()
                        : FDirection > 0 ? QStringLiteral(" ▲")
                                         : QStringLiteral(" ▼");
  FName->setText(ToQt(facts->FProduct.FName));
  FPrice->setText(ShowPrice(last, FSymbol) + arrow);
  if (prices.FLast > 0 && prices.FPreviousClose > 0) {
    const double change = prices.FLast - prices.FPreviousClose;
    const double percent = change / prices.FPreviousClose * 100;
    FChange->setText(Signed(change, ShowFigure(change, kFormatPrice, FSymbol)) + QStringLiteral("   ") +
                     Signed(percent, ToQt(TCustomFormatter::GetInstance().FormatNumber(percent, 2, true))) +
                     QStringLiteral(" %"));
    FChange->setForegroundRole(change < 0 ? QPalette::BrightText : QPalette::WindowText);
  } else {
    FChange->clear();
  }
  const TExchangeFacts* exchange = FData.FindExchange(facts->FProduct.FExchange);
  const bool open = exchange != nullptr && exchange->FOpen;
  const auto price = [&](const char* key, double value) {
    return TFact{HostText(key), ShowPrice(value, FSymbol), TKind::kNumber};
  };
  FForm->SetFacts(
      {price("Desktop_Bid", prices.FBid),
       price("Desktop_Ask", prices.FAsk),
       price("Desktop_PreviousClose", prices.FPreviousClose),
       price("Desktop_Reference", prices.FReference),
       {HostText("Desktop_Exchange"), ToQt(facts->FProduct.FExchange.Text()) + QStringLiteral("  ") +
                                          HostText(open ? "Desktop_MarketOpen" : "Desktop_MarketClosed")},
       {HostText("Desktop_Currency"), ToQt(facts->FProduct.FCurrency.Text())},
       {HostText("Desktop_LotSize"), ShowFigure(facts->FProduct.FLotSize, kFormatQuantity), TKind::kNumber}});
}

}  // namespace margindesk
