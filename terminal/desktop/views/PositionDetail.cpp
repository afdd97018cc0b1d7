#include "terminal/desktop/views/PositionDetail.h"

#include <QVBoxLayout>

#include "host/framework/PositionFigures.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/views/Figure.h"

namespace margindesk {

namespace {

using TKind = TFact::TKind;

struct TPositionLine {
  const char* FText;
  double TPositionFacts::*FFigure;
};

constexpr TPositionLine kQuantities[] = {
    {"Desktop_Held", &TPositionFacts::FHoldingQuantity},
    {"Desktop_Excluded", &TPositionFacts::FExcludedQuantity},
    {"Desktop_BODQty", &TPositionFacts::FBODQuantity},
    {"Desktop_BoughtToday", &TPositionFacts::FTodayBuyQuantity},
    {"Desktop_SoldToday", &TPositionFacts::FTodaySellQuantity},
    {"Desktop_Voucher", &TPositionFacts::FVoucherQuantity},
    {"Desktop_Covered", &TPositionFacts::FCoveredQuantity},
};

struct TPriceLine {
  const char* FText;
  double TPriceFacts::*FPrice;
};

constexpr TPriceLine kPrices[] = {
    {"Desktop_Last", &TPriceFacts::FLast},
    {"Desktop_Bid", &TPriceFacts::FBid},
    {"Desktop_Ask", &TPriceFacts::FAsk},
    {"Desktop_PreviousClose", &TPriceFacts::FPreviousClose},
};

constexpr TPositionLine kAverages[] = {
    {"Desktop_Average", &TPositionFacts::FAveragePrice},
    {"Desktop_BuyAverage", &TPositionFacts::FBuyAveragePrice},
    {"Desktop_SellAverage", &TPositionFacts::FSellAveragePrice},
};

// The market as a profit and loss of the position grid sees it.
struct TMarketOfHost {
  const THostData& FData;

  bool IsMarketOpen(TCode exchange) const {
    const TExchangeFacts* facts = FData.FindExchange(exchange);
    return facts != nullptr && facts->FOpen;
  }
  static double GetMiddleOne(double a, double b, double c) { return MiddleOfThree(a, b, c); }
};

// The lines of a form as they are put together.
struct TFacts {
  void Heading(const char* text) { FLines.push_back({HostText(text), {}, TKind::kHeading}); }
  void Text(const char* text, const QString& value) { FLines.push_back({HostText(text), value}); }
  void Number(const QString& caption, const QString& value) {
    FLines.push_back({caption, value, TKind::kNumber});
  }
  void Number(const char* text, const QString& value) { Number(HostText(text), value); }

  std::vector<TFact> FLines;
};

void AddProduct(TFacts& lines, const TProductFacts& product) {
  lines.Text("Desktop_Exchange", ToQt(product.FExchange.Text()));
  lines.Text("Desktop_Currency", ToQt(product.FCurrency.Text()));
  lines.Number("Desktop_ContractSize", ShowFigure(product.FContractSize, kFormatQuantity));
  lines.Number("Desktop_LotSize", ShowFigure(product.FLotSize, kFormatQuantity));
  if (!product.FUnderlying.IsEmpty()) lines.Text("Desktop_Underlying", ToQt(product.FUnderlying.Text()));
  if (product.FOptionRight != 0) {
    lines.Text("Desktop_Right", HostText(product.FOptionRight == 'C' ? "Desktop_Call" : "Desktop_Put"));
    lines.Number("Desktop_Strike", ShowPrice(product.FStrike, product.FSymbol));
  }
  if (!product.FExpiry.empty()) lines.Text("Desktop_Expiry", ToQt(product.FExpiry));
}

void AddWorth(TFacts& lines, const TCustomPositionData& position, const TSymbolFacts& facts,
              const THostData& data) {
  lines.Heading("Desktop_WorthHeading");
  const QString currency = u' ' + ToQt(facts.FProduct.FCurrency.Text());
  double value = 0;
  if (ReckonMarketValue(position, value)) {
    lines.Number(HostText("Desktop_MarketValue") + currency, ShowAmount(value));
    const TCode base = data.GetBaseCurrency();
    if (base != facts.FProduct.FCurrency && !base.IsEmpty()) {
      lines.Number(HostText("Desktop_MarketValue") + u' ' + ToQt(base.Text()),
                   ShowAmount(ConvertAmount(value, facts.FProduct.FCurrency, base)));
    }
  }
  double average = 0;
  const TMarketOfHost market{data};
  const double price = ReckonPLPrice(market, position);
  if (ReadAveragePrice(position, average) && price > 0) {
    lines.Number(HostText("Desktop_UnrealizedPL") + currency, ShowAmount(ReckonPL(position, price, average)));
  }
  lines.Number(HostText("Desktop_RealizedPL") + currency, ShowAmount(position.GetRealizedPL()));
  lines.Number(HostText("Desktop_BoughtFor") + currency, ShowAmount(position.GetCompletedBuyAmount()));
  lines.Number(HostText("Desktop_SoldFor") + currency, ShowAmount(position.GetCompletedSellAmount()));
}

}  // namespace

TPositionDetail::TPositionDetail(THostData& hostData, TCode account, std::string key, QWidget* parent)
    : THostDock(parent), FData(hostData) {
  auto* content = new QWidget(this);
  auto* box = new QVBoxLayout(content);
  box->setContentsMargins(0, 4, 0, 0);
  auto* top = new QHBoxLayout;
  top->setContentsMargins(10, 0, 10, 0);
  FChooser = new TPositionChooser(hostData, account, std::move(key), content);
  FForm = new TFactForm(content);
  top->addWidget(FChooser, 1);
  box->addLayout(top);
  box->addWidget(FForm, 1);
  setWidget(content);
  QObject::connect(FChooser, &QComboBox::currentIndexChanged, this, [this] { Refresh(); });
  UpdateTexts();
}

void TPositionDetail::Choose(TCode account, std::string key) {
  FChooser->Choose(account, std::move(key));
  UpdateTexts();
}

std::vector<std::string> TPositionDetail::Describe() const {
  return {kKind, std::string(FChooser->GetAccount().Text()), FChooser->GetKey()};
}

void TPositionDetail::UpdateTexts() {
  setWindowTitle(HostText("Desktop_PositionDetail") + QStringLiteral(" – ") +
                 ToQt(FChooser->GetAccount().Text()));
  FChooser->setAccessibleName(HostText("Desktop_Position"));
  Refresh();
}

void TPositionDetail::Refresh() {
  FChooser->Refresh();
  TFacts lines;
  const TPositionFacts* position = FChooser->GetPosition();
  if (position == nullptr) {
    lines.Heading("Desktop_NoPosition");
    FForm->SetFacts(lines.FLines);
    return;
  }
  const TSubItemRecord& item = FData.GetItem(position->FSymbol);
  const TSymbolFacts* facts = item.GetFacts();
  const TAccountRecord* account = FData.FindAccount(FChooser->GetAccount());

  lines.Heading("Desktop_PositionHeading");
  lines.Text("Desktop_Account", ToQt(account->GetAccountID().Text() + "  " + account->FFacts.FName));
  lines.Text("Desktop_Side", HostText(position->FShort ? "Desktop_Short" : "Desktop_Long"));
  for (const auto& [text, quantity] : kQuantities) {
    lines.Number(text, ShowFigure(position->*quantity, kFormatQuantity));
  }
  if (facts != nullptr) AddProduct(lines, facts->FProduct);

  lines.Heading("Desktop_PricesHeading");
  if (facts != nullptr) {
    for (const auto& [text, price] : kPrices) {
      lines.Number(text, ShowPrice(facts->FPrices.*price, position->FSymbol));
    }
  }
  for (const auto& [text, price] : kAverages) {
    lines.Number(text, ShowPrice(position->*price, position->FSymbol));
  }
  const TCustomPositionData* record = MakePositionMap(account->FPositions).Find(FChooser->GetKey());
  if (facts != nullptr && record != nullptr) AddWorth(lines, *record, *facts, FData);
  FForm->SetFacts(lines.FLines);
}

}  // namespace margindesk
