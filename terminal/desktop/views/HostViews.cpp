#include "terminal/desktop/views/HostViews.h"

#include <QDesktopServices>
#include <QUrl>
#include <algorithm>

#include "controls/Frame.h"
#include "controls/GridTableView.h"
#include "host/framework/PositionRowKey.h"
#include "model/CommaText.h"
#include "model/contract/BaseOrderData.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/Positionviewdatacontrol.h"
#include "terminal/desktop/Text.h"
#include "terminal/desktop/views/MoreInfoPage.h"
#include "terminal/desktop/views/PayOffDock.h"
#include "terminal/desktop/views/PositionDetail.h"
#include "terminal/desktop/views/QuotesDock.h"

namespace margindesk {

namespace {

constexpr std::string_view kAddressKey = "AcctInfo_URL";
constexpr const char* kLinkedDetail = "linked-position";  // in place of the dock's own kind

constexpr int kWidth = 40;  // percent of the window that the first dock takes

// TWebViewRecord::FMode.
constexpr std::int32_t kAccountChanged = 1;
constexpr std::int32_t kOpenPage = 2;

// The address of a page in the person's browser; an empty one is none, and so is one that is not the web's.
QUrl ReadAddress(const TWebViewRecord& record, const TConfigManager& config) {
  const std::string text =
      record.FAddress.empty() ? config.ReadString(config.GetUserSection(), kAddressKey) : record.FAddress;
  const QUrl address(ToQt(text), QUrl::StrictMode);
  const bool web = address.scheme() == QStringLiteral("http") || address.scheme() == QStringLiteral("https");
  return web ? address : QUrl();
}

}  // namespace

THostViews::THostViews(TReferenceHost& host, QMainWindow& window) : FHost(host), FWindow(window) {
  FHost.Calls().SetViewOpener([this](void* sender, std::int32_t viewID, std::int32_t /*number*/,
                                     const TBaseData* data, bool /*flag1*/,
                                     bool /*flag2*/) { return OpenView(sender, viewID, data); });
  FHost.Channels().SetResponder(kMessageMoreInfo, [this](void* record) {
    if (record != nullptr) AnswerMoreInfo(*static_cast<const TWebViewRecord*>(record));
  });
  FHost.Channels().AddChannelHandler(kChannelLinkedAccount, MakeHandler<&THostViews::FollowAccount>(this),
                                     this);
  FHost.Channels().AddChannelHandler(kChannelLinkedSymbol, MakeHandler<&THostViews::FollowSymbol>(this),
                                     this);
  FTimer = FHost.Loop().StartTimer(kBeat, [this] { Refresh(); });
}

THostViews::~THostViews() {
  FHost.Loop().StopTimer(FTimer);
  FHost.Channels().RemoveChannelHandler(kChannelLinkedSymbol, this);
  FHost.Channels().RemoveChannelHandler(kChannelLinkedAccount, this);
  FHost.Channels().SetResponder(kMessageMoreInfo, {});
  FHost.Calls().SetViewOpener({});
  for (const auto& dock : FDocks) delete dock.data();
}

bool THostViews::OpenView(const void* sender, std::int32_t viewID, const TBaseData* data) {
  const auto* order = dynamic_cast<const TCustomClientOrder*>(data);
  if (order == nullptr) return false;
  const TCode account = order->GetAccount();
  std::string key = FindChosenKey(sender, account);
  if (viewID == kViewPositionDetail) {
    Show(*new TPositionDetail(FHost.Data(), account, std::move(key), &FWindow));
  } else if (viewID == kViewOptionsPayOff) {
    Show(*new TPayOffDock(FHost.Data(), account, std::move(key), &FWindow));
  } else {
    return false;
  }
  return true;
}

void THostViews::AnswerMoreInfo(const TWebViewRecord& record) {
  QPointer<THostDock>& page = FPages[record.FSender];
  if (record.FMode == kOpenPage) {
    const QUrl address = ReadAddress(record, FHost.Config());
    if (address.isValid() && QDesktopServices::openUrl(address)) return;
    if (page == nullptr) {  // nor is there a browser for it
      page = new TMoreInfoPage(FHost.Data(), TCode(record.FAccount), &FWindow);
      Show(*page);
    } else {
      page->show();
      page->raise();
    }
  } else if (record.FMode == kAccountChanged) {
    if (page != nullptr) static_cast<TMoreInfoPage&>(*page).SetAccount(TCode(record.FAccount));
  } else {
    delete page.data();
    FPages.erase(record.FSender);
  }
}

void THostViews::FollowAccount(void* /*sender*/, void* data) {
  const TCode account(static_cast<const TChannelData*>(data)->FText);
  std::string key = FindChosenKey(nullptr, account);
  if (FDetail == nullptr) {
    FDetail = new TPositionDetail(FHost.Data(), account, std::move(key), &FWindow);
    Show(*FDetail);
  } else {
    static_cast<TPositionDetail&>(*FDetail).Choose(account, std::move(key));
    FDetail->show();
    FDetail->raise();
  }
}

void THostViews::FollowSymbol(void* /*sender*/, void* data) {
  const TCode symbol(static_cast<const TChannelData*>(data)->FText);
  if (FQuotes == nullptr) {
    FQuotes = new TQuotesDock(FHost.Data(), symbol, &FWindow);
    Show(*FQuotes);
  } else {
    static_cast<TQuotesDock&>(*FQuotes).SetSymbol(symbol);
    FQuotes->show();
    FQuotes->raise();
  }
}

// What a package hands over names the account alone.
std::string THostViews::FindChosenKey(const void* control, TCode account) const {
  std::string found;
  for (const TOpenView& view : FHost.Views().GetViews()) {
    for (const TComponent* component : view.FFrame->GetComponents()) {
      const auto* grid = dynamic_cast<const TGridTableView*>(component);
      if (grid == nullptr || grid->GetDataSource() == nullptr) continue;
      auto* rows = dynamic_cast<TPositionViewDataControl*>(grid->GetDataSource()->GetDataControl());
      const void* position = nullptr;
      if (rows == nullptr || !rows->GetRowValue(grid->GetFocusedRecordIndex(), position)) continue;
      if (static_cast<const TCustomPositionData*>(position)->GetAccountID() != account) continue;
      const std::string rowKey = rows->GetRowKey(grid->GetFocusedRecordIndex());
      // The view's account, a line end and the row's own key.
      found = PositionKeyOf(std::string_view(rowKey).substr(rowKey.find('\n') + 1));
      if (dynamic_cast<const void*>(rows) == control) return found;
    }
  }
  return found;
}

// The first dock stands on the right, the next ones in tabs over it.
bool THostViews::Add(THostDock& dock) {
  std::erase_if(FDocks, [](const auto& other) { return other == nullptr; });
  const auto before = std::ranges::find_if(FDocks, [this](const auto& other) {
    return !other->isFloating() && FWindow.dockWidgetArea(other) == Qt::RightDockWidgetArea;
  });
  FWindow.addDockWidget(Qt::RightDockWidgetArea, &dock);
  const bool first = before == FDocks.end();
  if (!first) FWindow.tabifyDockWidget(*before, &dock);
  FDocks.emplace_back(&dock);
  dock.show();
  return first;
}

QString THostViews::FindFreeName() const {
  for (int i = 0;; ++i) {
    const QString name = QStringLiteral("hostview%1").arg(i);
    if (FWindow.findChild<QDockWidget*>(name) == nullptr) return name;
  }
}

void THostViews::Show(THostDock& dock) {
  dock.setObjectName(FindFreeName());
  const bool first = Add(dock);
  dock.raise();
  if (!first) return;
  // Once the window has laid the dock out.
  QMetaObject::invokeMethod(
      &dock,
      [&dock, &window = FWindow] {
        window.resizeDocks({&dock}, {window.width() * kWidth / 100}, Qt::Horizontal);
      },
      Qt::QueuedConnection);
}

std::string THostViews::Save() const {
  std::vector<std::string> docks;
  for (const auto& dock : FDocks) {
    std::vector<std::string> description = dock == nullptr ? std::vector<std::string>() : dock->Describe();
    if (description.empty()) continue;
    if (dock == FDetail) description.front() = kLinkedDetail;
    description.insert(description.begin(), FromQt(dock->objectName()));
    docks.push_back(JoinCommaText(description));
  }
  return JoinCommaText(docks);
}

void THostViews::Restore(const std::string& text) {
  for (const auto& dock : FDocks) delete dock.data();
  FDocks.clear();
  for (const std::string& entry : SplitCommaText(text)) {
    const std::vector<std::string> description = SplitCommaText(entry);
    THostDock* dock = description.size() < 3 ? nullptr : MakeDock(description);
    if (dock == nullptr) continue;
    dock->setObjectName(ToQt(description.front()));
    Add(*dock);
  }
}

THostDock* THostViews::MakeDock(const std::vector<std::string>& description) {
  const std::string& kind = description[1];
  const TCode code(description[2]);
  const std::string key = description.size() < 4 ? std::string() : description[3];
  if (kind == TPositionDetail::kKind) return new TPositionDetail(FHost.Data(), code, key, &FWindow);
  if (kind == TPayOffDock::kKind) return new TPayOffDock(FHost.Data(), code, key, &FWindow);
  if (kind == kLinkedDetail) {
    FDetail = new TPositionDetail(FHost.Data(), code, key, &FWindow);
    return FDetail;
  }
  if (kind != TQuotesDock::kKind) return nullptr;
  FQuotes = new TQuotesDock(FHost.Data(), code, &FWindow);
  return FQuotes;
}

void THostViews::UpdateTexts() {
  for (const auto& dock : FDocks) {
    if (dock == nullptr) continue;
    dock->Title().UpdateTexts();
    dock->UpdateTexts();
  }
}

void THostViews::Refresh() {
  for (const auto& dock : FDocks) {
    if (dock != nullptr && dock->isVisible() && !dock->visibleRegion().isEmpty()) dock->Refresh();
  }
}

}  // namespace margindesk
