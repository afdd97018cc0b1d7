#include "terminal/desktop/views/PayOffDock.h"

#include <QSignalBlocker>
#include <QVBoxLayout>
#include <chrono>

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/views/Figure.h"

namespace margindesk {

namespace {

constexpr double kPercent = 100;

std::chrono::sys_days GetToday() {
  return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
}

// A caption and its value, which no line end comes between, not even after a hyphen or a minus sign.
QString MakeFact(const char* key, const QString& value) {
  constexpr QChar kJoiner(0x2060);
  QString text = HostText(key) + QStringLiteral(": ") + value;
  return text.replace(u' ', QChar::Nbsp).replace(QStringLiteral("-"), QString(u'-') + kJoiner);
}

}  // namespace

TPayOffDock::TPayOffDock(THostData& hostData, TCode account, std::string key, QWidget* parent)
    : THostDock(parent), FData(hostData) {
  auto* content = new QWidget(this);
  FChooser = new TPositionChooser(hostData, account, std::move(key), content, &IsPayOffOption);
  FCombined = new QCheckBox(content);
  FVolatilityCaption = new QLabel(content);
  FVolatility = new QDoubleSpinBox(content);
  FVolatility->setRange(1, 500);
  FVolatility->setDecimals(1);
  FVolatility->setSuffix(QStringLiteral(" %"));
  FVolatility->setKeyboardTracking(false);
  FVolatilityCaption->setBuddy(FVolatility);
  FImplied = new QToolButton(content);
  FFigures = new QLabel(content);
  FFigures->setTextFormat(Qt::PlainText);
  FFigures->setWordWrap(true);
  FFigures->setTextInteractionFlags(Qt::TextSelectableByMouse);
  FChart = new TPayOffChart(content);
  FNote = new QLabel(content);
  FNote->setTextFormat(Qt::PlainText);
  FNote->setWordWrap(true);
  FNote->setForegroundRole(QPalette::PlaceholderText);

  auto* first = new QHBoxLayout;
  first->addWidget(FChooser, 1);
  first->addWidget(FCombined);
  auto* second = new QHBoxLayout;
  second->addWidget(FVolatilityCaption);
  second->addWidget(FVolatility);
  second->addWidget(FImplied);
  second->addStretch(1);
  auto* box = new QVBoxLayout(content);
  box->addLayout(first);
  box->addLayout(second);
  box->addWidget(FFigures);
  box->addWidget(FChart, 1);
  box->addWidget(FNote);
  setWidget(content);

  QObject::connect(FChooser, &QComboBox::currentIndexChanged, this, [this] {
    FOwnVolatility = false;
    Refresh();
  });
  QObject::connect(FCombined, &QCheckBox::toggled, this, [this] { Refresh(); });
  QObject::connect(FVolatility, &QDoubleSpinBox::valueChanged, this, [this] {
    FOwnVolatility = true;
    Refresh();
  });
  QObject::connect(FImplied, &QToolButton::clicked, this, [this] {
    FOwnVolatility = false;
    Refresh();
  });
  UpdateTexts();
}

std::vector<std::string> TPayOffDock::Describe() const {
  return {kKind, std::string(FChooser->GetAccount().Text()), FChooser->GetKey()};
}

void TPayOffDock::UpdateTexts() {
  setWindowTitle(HostText("Desktop_PayOff") + QStringLiteral(" – ") + ToQt(FChooser->GetAccount().Text()));
  FChooser->setAccessibleName(HostText("Desktop_Position"));
  FCombined->setText(HostText("Desktop_PayOffAll"));
  FCombined->setToolTip(HostText("Desktop_PayOffAllHint"));
  FVolatilityCaption->setText(HostText("Desktop_Volatility"));
  FVolatility->setAccessibleName(HostText("Desktop_Volatility"));
  FImplied->setText(HostText("Desktop_Implied"));
  FImplied->setToolTip(HostText("Desktop_ImpliedHint"));
  FChart->setAccessibleName(HostText("Desktop_PayOff"));
  Refresh();
}

void TPayOffDock::Refresh() {
  FChooser->Refresh();
  TPayOffCase payOff =
      MakePayOffCase(FData, FChooser->GetAccount(), FChooser->GetKey(), FCombined->isChecked(), GetToday());
  const bool shown = !payOff.FLegs.empty() && payOff.FSpot > 0;
  for (QWidget* widget : {static_cast<QWidget*>(FVolatility), static_cast<QWidget*>(FImplied),
                          static_cast<QWidget*>(FCombined)}) {
    widget->setEnabled(shown);
  }
  if (!shown) {
    FFigures->setText(HostText(payOff.FLegs.empty() ? "Desktop_NoOption" : "Desktop_NoSpot"));
    FNote->clear();
    FChart->SetCase({}, {});
    return;
  }
  if (FOwnVolatility) {
    payOff.FVolatility = FVolatility->value() / kPercent;
  } else if (!FVolatility->hasFocus()) {  // what is being typed stays
    const QSignalBlocker quiet(FVolatility);
    FVolatility->setValue(payOff.FVolatility * kPercent);
  }
  const TPayOffFigures figures = ReckonPayOffFigures(payOff.FLegs);
  ShowFigures(payOff, figures);
  FChart->SetCase(payOff, figures);
}

void TPayOffDock::ShowFigures(const TPayOffCase& payOff, const TPayOffFigures& figures) {
  const auto limit = [](const std::optional<double>& amount) {
    return amount ? ShowAmount(*amount) : HostText("Desktop_Unlimited");
  };
  QStringList breakEvens;
  for (const double spot : figures.FBreakEvens) {
    breakEvens << ShowFigure(spot, kFormatPrice, payOff.FUnderlying);
  }
  const QString gap = QStringLiteral("     ");
  const QString now = ShowAmount(ReckonPayOffNow(payOff.FLegs, payOff.FSpot, payOff.FVolatility));
  FFigures->setText(MakeFact("Desktop_MaxProfit", limit(figures.FHighest)) + gap +
                    MakeFact("Desktop_MaxLoss", limit(figures.FLowest)) + gap +
                    MakeFact("Desktop_BreakEven", breakEvens.isEmpty()
                                                      ? QStringLiteral("–")
                                                      : breakEvens.join(QStringLiteral("; "))) +
                    gap + MakeFact("Desktop_Today", now + u' ' + ToQt(payOff.FCurrency.Text())));
  const char* source = FOwnVolatility    ? "Desktop_VolatilityOwn"
                       : payOff.FImplied ? "Desktop_VolatilityImplied"
                                         : "Desktop_VolatilityAssumed";
  FNote->setText(HostText("Desktop_PayOffNote").arg(ToQt(payOff.FExpiry), HostText(source)));
}

}  // namespace margindesk
