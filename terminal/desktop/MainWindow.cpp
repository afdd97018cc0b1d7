#include "terminal/desktop/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QInputDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <algorithm>
#include <chrono>

#include "controls/GridTableView.h"
#include "controls/VirtualTree.h"
#include "model/contract/Basedcdatacontrol.h"
#include "model/contract/Constdef.h"
#include "model/contract/LookAndFeelService.h"
#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/Package.h"
#include "terminal/desktop/HostPage.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/KeptColumns.h"
#include "terminal/desktop/PreferenceWindow.h"
#include "terminal/desktop/Skin.h"
#include "terminal/desktop/ToolkitTexts.h"
#include "terminal/desktop/binders/AccountBox.h"

namespace margindesk {

namespace {

constexpr std::string_view kGeometryKey = "DesktopGeometry";
constexpr std::string_view kDocksKey = "DesktopDocks";
constexpr std::string_view kColumnsKey = "DesktopColumns_";
constexpr std::string_view kHostViewsKey = "DesktopHostViews";
constexpr std::string_view kWorkspaceKey = "DesktopWorkspace";
constexpr const char* kFirstWorkspace = "default";
constexpr const char* kFirstView = "TIAccountInfo";
constexpr std::chrono::milliseconds kSaveDelay{1000};

// Where faults of notification handlers are told; null for nowhere.
TMainWindow* faultWindow = nullptr;
THandlerFaultSink faultsBefore = nullptr;

void TellFault(std::string_view what, const void* owner) {
  if (faultWindow != nullptr) faultWindow->ReportFaultOf(owner, ToQt(what));
  if (faultsBefore != nullptr) faultsBefore(what, owner);
}

// The data control behind a component of a form, as the object that registers handlers; null for none.
const void* FindDataControl(const TComponent* component) {
  if (const auto* tree = dynamic_cast<const TVirtualTree*>(component)) {
    const auto* source = tree->GetDataSource();
    return source == nullptr ? nullptr : dynamic_cast<const void*>(source->GetDataControl());
  }
  const auto* grid = dynamic_cast<const TGridTableView*>(component);
  const auto* source = grid == nullptr ? nullptr : grid->GetDataSource();
  return source == nullptr ? nullptr : dynamic_cast<const void*>(source->GetDataControl());
}

// Whether a handler of the owner is one of the frame's, or of what stands behind its controls.
bool BelongsTo(const TFrame& frame, const void* owner) {
  return owner == dynamic_cast<const void*>(&frame) ||
         std::ranges::any_of(frame.GetComponents(), [owner](const TComponent* component) {
           return owner != nullptr && owner == FindDataControl(component);
         });
}

}  // namespace

TMainWindow::TMainWindow(TReferenceHost& host, TPackages& packages)
    : FHost(host),
      FPackages(packages),
      FStatus(host, *statusBar(), [this] { return IsSimulationOld(); }),
      FHostViews(host, *this) {
  setWindowTitle(QStringLiteral("MarginDesk"));
  setDockOptions(AllowTabbedDocks | AllowNestedDocks | GroupedDragging);
  setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
  QObject::connect(&FSaveTimer, &QTimer::timeout, this, [this] { SaveGeometry(); });
  faultWindow = this;
  faultsBefore = SetHandlerFaultSink(&TellFault);
  SetKnownAccounts([this] {
    std::vector<TKnownAccount> known;
    for (const TCode account : FHost.Data().GetAccounts()) {
      const TAccountRecord* record = FHost.Data().FindAccount(account);
      if (record != nullptr) known.push_back({std::string(account.Text()), record->FFacts.FName});
    }
    return known;
  });
  FHost.Views().SetListener(this);
  UseToolkitTexts(FHost.Language().GetLanguageIndex());
  ApplyLook();
  BuildMenus();
}

TMainWindow::~TMainWindow() {
  SetHandlerFaultSink(faultsBefore);
  faultWindow = nullptr;
  SetKnownAccounts({});
  FHost.CloseViews();
  FHost.Views().SetListener(nullptr);
}

// --- views

void TMainWindow::OpenView(const std::string& className) {
  std::string name = className;
  if (TIBaseView* const plugin = FHost.Views().FindClass(className)) plugin->GetDefaultCaption(name);
  try {
    if (FHost.Views().Open(className) == 0) ReportFault(ToQt(name), HostText("Desktop_NoView"));
  } catch (const std::exception& error) {
    ReportFault(ToQt(name), QString::fromUtf8(error.what()));
  }
}

void TMainWindow::ViewOpened(const TOpenView& view) {
  auto* dock = new TViewDock(FHost.Views(), view, this, [this](TViewHandle handle) { CloseView(handle); });
  Place(*dock);
  FDocks[view.FHandle] = dock;
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (FHost.Views().FindClass(view.FClass)->GetDefaultSize(width, height)) {
    resizeDocks({dock}, {Scaled(width)}, Qt::Horizontal);
  }
  dock->show();
  dock->raise();
  FStatus.NoteChange();
}

void TMainWindow::Place(TViewDock& dock) {
  TViewDock* const before = FDocks.empty() ? nullptr : FDocks.rbegin()->second;
  addDockWidget(Qt::LeftDockWidgetArea, &dock);
  if (before == nullptr || before->isFloating()) return;
  const int needed = before->minimumSizeHint().width() + dock.minimumSizeHint().width();
  if (isVisible() && before->width() < needed) {
    tabifyDockWidget(before, &dock);
  } else {
    splitDockWidget(before, &dock, Qt::Horizontal);
  }
}

void TMainWindow::ViewClosing(TViewHandle handle) {
  const auto found = FDocks.find(handle);
  if (found == FDocks.end()) return;
  TViewDock* const dock = found->second;
  FDocks.erase(found);  // first: the view's caption may still change while its dock goes
  delete dock;          // with its binders, before the controls go
  FStatus.NoteChange();
}

void TMainWindow::ViewCaptionChanged(TViewHandle handle) {
  const auto found = FDocks.find(handle);
  if (found != FDocks.end()) found->second->Update();
  FStatus.NoteChange();
}

// The click that closes a view comes out of the dock that goes with it.
void TMainWindow::CloseView(TViewHandle handle) {
  if (FLeaving) return;  // it is open when the terminal comes back
  QMetaObject::invokeMethod(
      this, [this, handle] { FHost.Views().Close(handle); }, Qt::QueuedConnection);
}

QDockWidget* TMainWindow::FindFocusedDock() const {
  for (QObject* at = QApplication::focusWidget(); at != nullptr; at = at->parent()) {
    if (auto* dock = qobject_cast<QDockWidget*>(at)) return dock;
  }
  return nullptr;
}

void TMainWindow::GoToDock(int step) {
  QList<QDockWidget*> docks = findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly);
  docks.removeIf([](const QDockWidget* dock) { return dock->isHidden(); });
  if (docks.isEmpty()) return;
  const qsizetype at = docks.indexOf(FindFocusedDock());
  const qsizetype next = at < 0 ? 0 : (at + step + docks.size()) % docks.size();
  QDockWidget* dock = docks[next];
  dock->raise();
  dock->activateWindow();
  for (QWidget* widget : dock->widget()->findChildren<QWidget*>()) {
    if ((widget->focusPolicy() & Qt::TabFocus) == 0 || !widget->isVisibleTo(dock) || !widget->isEnabled()) {
      continue;
    }
    widget->setFocus(Qt::TabFocusReason);
    return;
  }
}

bool TMainWindow::IsSimulationOld() const {
  return std::ranges::any_of(FDocks, [](const auto& entry) { return entry.second->Simulation().IsOld(); });
}

// --- look and language

void TMainWindow::SetLanguage(std::int32_t index) {
  if (index == FHost.Language().GetLanguageIndex() || !FHost.Language().SetLanguage(index)) return;
  TConfigManager& config = FHost.Config();
  config.WriteString(config.GetUserSection(), kLanguageKey, std::to_string(index), false);
  UseToolkitTexts(index);
  ApplyLook();
  std::vector<TViewDock*> current;  // those of which a simulation is not out of date
  for (const auto& [handle, dock] : FDocks) {
    if (!dock->Simulation().IsOld()) current.push_back(dock);
  }
  FHost.Views().SetLanguage(index);
  for (TViewDock* dock : current) dock->Simulation().Retake();
  FHost.Preferences().SetLanguage(index);
  for (const auto& [handle, dock] : FDocks) dock->Update();
  FHostViews.UpdateTexts();
  BuildMenus();
  FStatus.UpdateTexts();
  statusBar()->clearMessage();
}

void TMainWindow::ApplyLook() {
  ApplySkin(*qApp, TCustomLookAndFeelService::GetInstance().GetSkinName(), ReadScale(FHost.Config()));
}

// --- workspaces

void TMainWindow::Restore(const std::string& account) {
  FAccount = account;
  TConfigManager& config = FHost.Config();
  TWorkspaces& workspaces = *FHost.Workspaces();
  std::string name = config.ReadString(config.GetUserSection(), kWorkspaceKey);
  if (name.empty()) name = kFirstWorkspace;
  const auto isThere = [&] {
    const std::vector<std::string> names = workspaces.List();
    return std::ranges::find(names, name) != names.end();
  };
  if (!isThere() || !workspaces.Load(name)) {
    OpenFirstView();
    const std::string wanted = name;
    // One that is still there could not be read, and is left alone.
    for (int i = 2; isThere(); ++i) name = wanted + ' ' + std::to_string(i);
    // Without the package there is nothing that would be worth keeping.
    if (!FHost.Views().GetViews().empty() && workspaces.Save(name) && name != wanted) {
      MakeCurrentWorkspace(name);
    }
  }
  FinishLoading();
  FSaveTimer.start(kSaveDelay);
}

void TMainWindow::MakeCurrentWorkspace(const std::string& name) {
  FHost.Config().WriteString(FHost.Config().GetUserSection(), kWorkspaceKey, name, false);
}

void TMainWindow::OpenFirstView() {
  OpenView(kFirstView);
  if (FHost.Views().GetViews().empty()) return;
  FHost.Views().SetLayout(FHost.Views().GetViews().back().FHandle, "Account=" + FAccount);
}

void TMainWindow::FinishLoading() {
  RestoreGeometry();
  BuildMenus();
  TCustomGlobalChannelManager::GetInstance().PostChannelData(kChannelLayoutLoaded, "", nullptr, 0);
}

void TMainWindow::LoadWorkspace(const std::string& name) {
  SaveGeometry();
  if (!FHost.Workspaces()->Load(name)) return BuildMenus();  // a damaged one is not listed any more
  MakeCurrentWorkspace(name);
  FinishLoading();
}

void TMainWindow::ResetWorkspace() {
  if (TCustomMessageBoxCtrl::GetInstance().ShowConfirmation(FromQt(HostText("Desktop_ResetQuestion"))) !=
      kConfirmationYes) {
    return;
  }
  FHost.Views().CloseAll();
  FHostViews.Restore({});
  OpenFirstView();
  SaveGeometry();
}

void TMainWindow::SaveWorkspaceAs() {
  QInputDialog dialog(this);
  dialog.setWindowTitle(HostText("Desktop_SaveAs"));
  dialog.setLabelText(HostText("Desktop_Name"));
  dialog.setOkButtonText(HostText("Desktop_OK"));
  dialog.setCancelButtonText(HostText("Desktop_Cancel"));
  if (dialog.exec() != QDialog::Accepted) return;
  const std::string name = FromQt(dialog.textValue().trimmed());
  TWorkspaces& workspaces = *FHost.Workspaces();
  const std::vector<std::string> names = workspaces.List();
  const bool taken = name != workspaces.GetName() && std::ranges::find(names, name) != names.end();
  const std::string question = FromQt(HostText("Desktop_ReplaceWorkspace").arg(ToQt(name)));
  if (name.empty() ||
      (taken && TCustomMessageBoxCtrl::GetInstance().ShowConfirmation(question) != kConfirmationYes) ||
      !workspaces.Save(name)) {
    return;
  }
  MakeCurrentWorkspace(name);
  SaveGeometry();
  BuildMenus();
}

// Docks are named by their place among the open views: handles are never given out twice.
void TMainWindow::SaveGeometry() {
  if (FHost.Workspaces()->GetName().empty()) return;
  FHost.Workspaces()->Flush();
  int place = 0;
  for (const auto& [handle, dock] : FDocks) dock->setObjectName(QStringLiteral("view%1").arg(place++));
  TConfigManager& config = FHost.Config();
  const std::string section = "Desktop_" + FHost.Workspaces()->GetName();
  config.WriteString(section, kGeometryKey, saveGeometry().toBase64().toStdString(), false);
  config.WriteString(section, kDocksKey, saveState().toBase64().toStdString(), false);
  config.WriteString(section, kHostViewsKey, FHostViews.Save(), false);
  for (const auto& [handle, dock] : FDocks) {
    const std::string key = std::string(kColumnsKey) + FromQt(dock->objectName());
    config.WriteString(section, key, ReadKeptColumns(*FHost.Views().Find(handle)->FFrame), false);
  }
}

void TMainWindow::RestoreGeometry() {
  int place = 0;
  for (const auto& [handle, dock] : FDocks) dock->setObjectName(QStringLiteral("view%1").arg(place++));
  const std::string section = "Desktop_" + FHost.Workspaces()->GetName();
  FHostViews.Restore(FHost.Config().ReadString(section, kHostViewsKey));
  const auto geometry = QByteArray::fromStdString(FHost.Config().ReadString(section, kGeometryKey));
  if (!restoreGeometry(QByteArray::fromBase64(geometry))) resize(1280, 800);
  RestoreDocks();
  for (const auto& [handle, dock] : FDocks) {
    const std::string key = std::string(kColumnsKey) + FromQt(dock->objectName());
    ShowKeptColumns(*FHost.Views().Find(handle)->FFrame, FHost.Config().ReadString(section, key));
  }
}

void TMainWindow::RestoreDocks() {
  const std::string section = "Desktop_" + FHost.Workspaces()->GetName();
  restoreState(
      QByteArray::fromBase64(QByteArray::fromStdString(FHost.Config().ReadString(section, kDocksKey))));
}

void TMainWindow::closeEvent(QCloseEvent* event) {
  SaveGeometry();
  FLeaving = true;
  FSaveTimer.stop();
  QMainWindow::closeEvent(event);
  QCoreApplication::exit(0);  // floating views hold nothing up
}

void TMainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(FShown, true)) return;
  // Before the window was laid out, the left and the right side could not be given their shares.
  QMetaObject::invokeMethod(
      this, [this] { RestoreDocks(); }, Qt::QueuedConnection);
  TCustomGlobalChannelManager::GetInstance().PostChannelData(kChannelMainFormShown, "", nullptr, 0);
}

// --- status and dialogs

void TMainWindow::ReportFault(const QString& where, const QString& what) {
  statusBar()->showMessage(QStringLiteral("⚠ %1: %2").arg(where, what));
}

void TMainWindow::ReportFaultOf(const void* owner, const QString& what) {
  const auto& views = FHost.Views().GetViews();
  const auto view =
      std::ranges::find_if(views, [owner](const TOpenView& open) { return BelongsTo(*open.FFrame, owner); });
  ReportFault(view == views.end() ? windowTitle() : ToQt(view->FCaption), what);
}

// A menu that the pointer passes has nothing to say in the status bar, and would wipe a fault away.
bool TMainWindow::event(QEvent* event) {
  return event->type() == QEvent::StatusTip || QMainWindow::event(event);
}

void TMainWindow::ShowPreferences() {
  const auto applied = [this](std::int32_t language) {
    ApplyLook();
    SetLanguage(language);
    BuildMenus();
  };
  TPreferenceWindow window(FHost.Preferences(), FHost.Config(), applied, this);
  window.exec();
}

void TMainWindow::ShowAbout() {
  QString text = QStringLiteral("MarginDesk %1\n%2 %3")
                     .arg(QStringLiteral(MARGINDESK_VERSION))
                     .arg(HostText("Desktop_Contract"))
                     .arg(kContractVersion);
  for (const auto& package : FPackages.GetPackages()) {
    text += QStringLiteral("\n%1 %2").arg(ToQt(package->GetName()), ToQt(package->GetVersion()));
  }
  QMessageBox box(QMessageBox::Information, HostText("Desktop_About"), text, QMessageBox::NoButton, this);
  box.setTextFormat(Qt::PlainText);
  box.addButton(HostText("Desktop_OK"), QMessageBox::AcceptRole);
  box.exec();
}

}  // namespace margindesk
