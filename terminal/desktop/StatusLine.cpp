#include "terminal/desktop/StatusLine.h"

#include <QStringList>
#include <chrono>

#include "controls/AccountEdit.h"
#include "model/contract/Constdef.h"
#include "terminal/desktop/HostText.h"

namespace margindesk {

namespace {

constexpr std::chrono::milliseconds kBeat{500};
constexpr std::size_t kMostNamed = 20;  // symbols in the hint

}  // namespace

TStatusLine::TStatusLine(TReferenceHost& host, QStatusBar& bar, std::function<bool()> isSimulationOld)
    : FHost(host),
      FIsSimulationOld(std::move(isSimulationOld)),
      FSimulation(new QLabel(&bar)),
      FStale(new QLabel(&bar)),
      FConnection(new QLabel(&bar)),
      FUpdated(new QLabel(&bar)) {
  for (QLabel* label : {FSimulation, FStale, FConnection, FUpdated}) {
    label->setContentsMargins(6, 2, 6, 2);
    bar.addPermanentWidget(label);
  }
  FSimulation->hide();
  FStale->hide();
  FHost.SetPublishListener([this] {
    FTime = QTime::currentTime();
    FChanged = true;
  });
  QObject::connect(&FTimer, &QTimer::timeout, &bar, [this] { Refresh(); });
  FTimer.start(kBeat);
  UpdateTexts();
}

TStatusLine::~TStatusLine() { FHost.SetPublishListener({}); }

void TStatusLine::UpdateTexts() {
  FConnection->setText(QStringLiteral("● ") + HostText("Desktop_Connected"));
  FSimulation->setText(QStringLiteral("⚠ ") + HostText("Desktop_SimulationOld"));
  FChanged = true;
  Refresh();
}

void TStatusLine::Refresh() {
  FSimulation->setVisible(FIsSimulationOld());
  if (!std::exchange(FChanged, false)) return;
  FUpdated->setText(HostText("Desktop_Updated") + u' ' + FTime.toString(QStringLiteral("HH:mm:ss")));
  const std::vector<TCode> stale = FindStaleSymbols();
  FStale->setVisible(!stale.empty());
  FStale->setText(QStringLiteral("⚠ ") + HostText("Desktop_Stale").arg(stale.size()));
  QStringList names;
  for (const TCode symbol : stale) {
    if (static_cast<std::size_t>(names.size()) == kMostNamed) {
      names << QStringLiteral("…");
      break;
    }
    names << ToQt(symbol.Text());
  }
  FStale->setToolTip(names.join(u'\n'));
}

std::vector<TCode> TStatusLine::FindStaleSymbols() const {
  TCodeSet seen;
  std::vector<TCode> stale;
  for (const TOpenView& view : FHost.Views().GetViews()) {
    const auto* box = dynamic_cast<TAccountEdit*>(view.FFrame->FindComponent("edtAccount"));
    if (box == nullptr) continue;
    const TCode account(box->GetHint());
    AddStaleSymbols(account, seen, stale);
    const TAccountRecord* record = FHost.Data().FindAccount(account);
    if (record == nullptr) continue;
    for (const TCode sub : record->FSubAccounts) AddStaleSymbols(sub, seen, stale);
  }
  return stale;
}

void TStatusLine::AddStaleSymbols(TCode account, TCodeSet& seen, std::vector<TCode>& stale) const {
  const TAccountRecord* record = FHost.Data().FindAccount(account);
  if (record == nullptr || record->FPositions == nullptr) return;
  for (const TPositionFacts& position : record->FPositions->GetFacts()) {
    if (!seen.Insert(position.FSymbol)) continue;
    if (FHost.Data().GetItem(position.FSymbol).GetStatus() != kItemReady) stale.push_back(position.FSymbol);
  }
}

}  // namespace margindesk
