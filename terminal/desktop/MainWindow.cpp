#include "terminal/desktop/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QInputDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTime>
#include <algorithm>

#include "model/contract/Constdef.h"
#include "model/contract/LookAndFeelService.h"
#include "model/contract/Package.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/PreferenceWindow.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

constexpr std::string_view kScaleKey = "ScaleSize";
constexpr std::string_view kSkinKey = "SkinName";
constexpr std::string_view kGeometryKey = "DesktopGeometry";
constexpr std::string_view kDocksKey = "DesktopDocks";
constexpr std::string_view kWorkspaceKey = "DesktopWorkspace";
constexpr const char* kFirstWorkspace = "default";

}  // namespace

TMainWindow::TMainWindow(TReferenceHost& host, TPackages& packages)
    : FHost(host), FPackages(packages), FConnection(new QLabel(this)), FUpdated(new QLabel(this)) {
  setWindowTitle(QStringLiteral("MarginDesk"));
  setDockOptions(AllowTabbedDocks | AllowNestedDocks | GroupedDragging);
  statusBar()->addPermanentWidget(FConnection);
  statusBar()->addPermanentWidget(FUpdated);
  FHost.Views().SetListener(this);
  ApplyLook();
  BuildMenus();
  UpdateStatus();
}

TMainWindow::~TMainWindow() {
  FHost.CloseViews();
  FHost.Views().SetListener(nullptr);
}

// --- views

void TMainWindow::OpenView(const std::string& className) {
  try {
    if (FHost.Views().Open(className) == 0) ReportFault(ToQt(className), HostText("Desktop_NoView"));
  } catch (const std::exception& error) {
    ReportFault(ToQt(className), QString::fromUtf8(error.what()));
  }
}

void TMainWindow::ViewOpened(const TOpenView& view) {
  auto* dock = new TViewDock(FHost.Views(), view, this, [this](TViewHandle handle) { CloseView(handle); });
  std::int32_t width = 0;
  std::int32_t height = 0;
  if (TIBaseView* plugin = FHost.Views().FindClass(view.FClass); plugin->GetDefaultSize(width, height)) {
    dock->resize(width, height);
  }
  TViewDock* const before = FDocks.empty() ? nullptr : FDocks.rbegin()->second;
  FDocks[view.FHandle] = dock;
  addDockWidget(Qt::LeftDockWidgetArea, dock);
  if (before != nullptr) splitDockWidget(before, dock, Qt::Horizontal);
  dock->show();
}

void TMainWindow::ViewClosing(TViewHandle handle) {
  const auto found = FDocks.find(handle);
  if (found == FDocks.end()) return;
  delete found->second;  // with its binders, before the controls go
  FDocks.erase(found);
}

void TMainWindow::ViewCaptionChanged(TViewHandle handle) {
  const auto found = FDocks.find(handle);
  if (found != FDocks.end()) found->second->Update();
}

// The click that closes a view comes out of the dock that goes with it.
void TMainWindow::CloseView(TViewHandle handle) {
  QMetaObject::invokeMethod(
      this, [this, handle] { FHost.Views().Close(handle); }, Qt::QueuedConnection);
}

// --- menus

void TMainWindow::SetExtraMenus(std::function<void(QMenuBar& bar)> add) {
  FExtraMenus = std::move(add);
  BuildMenus();
}

void TMainWindow::BuildMenus() {
  menuBar()->clear();
  for (const TMenuEntry& entry : BuildMenu(FHost.Views())) {
    AddEntries(*menuBar()->addMenu(ToQt(entry.FCaption)), entry.FItems);
  }
  AddWorkspaceMenu();
  AddViewMenu();
  if (FExtraMenus) FExtraMenus(*menuBar());
  QMenu* help = menuBar()->addMenu(HostText("Desktop_Help"));
  help->addAction(HostText("Desktop_About"), this, [this] { ShowAbout(); });
}

void TMainWindow::AddEntries(QMenu& menu, const std::vector<TMenuEntry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const TMenuEntry& entry = entries[i];
    if (i > 0 && entries[i - 1].FGroup != entry.FGroup) menu.addSeparator();
    if (!entry.FItems.empty()) {
      AddEntries(*menu.addMenu(ToQt(entry.FCaption)), entry.FItems);
    } else {
      menu.addAction(ToQt(entry.FCaption), this, [this, name = entry.FClass] { OpenView(name); });
    }
  }
}

void TMainWindow::AddWorkspaceMenu() {
  QMenu* menu = menuBar()->addMenu(HostText("Desktop_Workspace"));
  const TWorkspaces& workspaces = *FHost.Workspaces();
  for (const std::string& name : workspaces.List()) {
    QAction* action = menu->addAction(ToQt(name), this, [this, name] { LoadWorkspace(name); });
    action->setCheckable(true);
    action->setChecked(name == workspaces.GetName());
  }
  menu->addSeparator();
  menu->addAction(HostText("Desktop_Save"), QKeySequence::Save, this, [this] { SaveGeometry(); });
  menu->addAction(HostText("Desktop_SaveAs"), QKeySequence::SaveAs, this, [this] { SaveWorkspaceAs(); });
  menu->addSeparator();
  menu->addAction(HostText("Desktop_Quit"), QKeySequence::Quit, this, [this] { close(); });
}

void TMainWindow::AddViewMenu() {
  QMenu* menu = menuBar()->addMenu(HostText("Desktop_View"));
  const auto addChoice = [this](QMenu& where, const QString& text, bool chosen, auto choose) {
    QAction* action = where.addAction(text, this, choose);
    action->setCheckable(true);
    action->setChecked(chosen);
  };
  QMenu* language = menu->addMenu(HostText("Desktop_Language"));
  constexpr std::pair<std::int32_t, const char*> kLanguages[] = {{kLanguageEnglish, "English"},
                                                                 {kLanguageSimplifiedChinese, "简体中文"},
                                                                 {kLanguageTraditionalChinese, "繁體中文"}};
  for (const auto& [index, name] : kLanguages) {
    const bool chosen = TCustomLanguageManager::GetInstance().GetLanguageIndex() == index;
    addChoice(*language, QString::fromUtf8(name), chosen,
              [this, chosenIndex = index] { SetLanguage(chosenIndex); });
  }
  TConfigManager& config = FHost.Config();
  QMenu* skin = menu->addMenu(HostText("Desktop_Skin"));
  constexpr std::pair<const char*, const char*> kSkins[] = {{"Light", "Desktop_SkinLight"},
                                                            {"Dark", "Desktop_SkinDark"}};
  for (const auto& [name, key] : kSkins) {
    const bool chosen = TCustomLookAndFeelService::GetInstance().GetSkinName() == name;
    addChoice(*skin, HostText(key), chosen, [this, &config, skinName = name] {
      config.WriteString(config.GetUserSection(), kSkinKey, skinName, true);
      ApplyLook();
      BuildMenus();
    });
  }
  QMenu* scale = menu->addMenu(HostText("Desktop_Scale"));
  for (const int percent : kScaleSteps) {
    const bool chosen = percent == std::max(config.ReadInteger(kPlatformSection, kScaleKey), 100);
    addChoice(*scale, QStringLiteral("%1 %").arg(percent), chosen, [this, &config, percent] {
      config.WriteString(kPlatformSection, kScaleKey, std::to_string(percent), true);
      ApplyLook();
      BuildMenus();
    });
  }
  menu->addSeparator();
  menu->addAction(HostText("Desktop_Preferences"), QKeySequence(Qt::CTRL | Qt::Key_Comma), this,
                  [this] { ShowPreferences(); });
}

// --- look and language

void TMainWindow::SetLanguage(std::int32_t index) {
  if (!FHost.Language().SetLanguage(index)) return;
  FHost.Views().SetLanguage(index);
  FHost.Preferences().SetLanguage(index);
  for (const auto& [handle, dock] : FDocks) dock->Update();
  BuildMenus();
  UpdateStatus();
}

void TMainWindow::ApplyLook() {
  const int scale = std::max(FHost.Config().ReadInteger(kPlatformSection, kScaleKey), 100);
  ApplySkin(*qApp, TCustomLookAndFeelService::GetInstance().GetSkinName(), scale);
}

// --- workspaces

void TMainWindow::Restore(const std::string& account) {
  TConfigManager& config = FHost.Config();
  TWorkspaces& workspaces = *FHost.Workspaces();
  std::string name = config.ReadString(config.GetUserSection(), kWorkspaceKey);
  if (name.empty()) name = kFirstWorkspace;
  const std::vector<std::string> names = workspaces.List();
  if (std::ranges::find(names, name) == names.end() || !workspaces.Load(name)) {
    OpenView("TIAccountInfo");
    if (!FHost.Views().GetViews().empty()) {
      FHost.Views().SetLayout(FHost.Views().GetViews().back().FHandle, "Account=" + account);
    }
    workspaces.Save(name);
  }
  RestoreGeometry();
  BuildMenus();
}

void TMainWindow::LoadWorkspace(const std::string& name) {
  SaveGeometry();
  if (!FHost.Workspaces()->Load(name)) return;
  FHost.Config().WriteString(FHost.Config().GetUserSection(), kWorkspaceKey, name, false);
  RestoreGeometry();
  BuildMenus();
}

void TMainWindow::SaveWorkspaceAs() {
  const QString name = QInputDialog::getText(this, HostText("Desktop_SaveAs"), HostText("Desktop_Name"));
  if (name.trimmed().isEmpty() || !FHost.Workspaces()->Save(FromQt(name.trimmed()))) return;
  FHost.Config().WriteString(FHost.Config().GetUserSection(), kWorkspaceKey, FromQt(name.trimmed()), false);
  SaveGeometry();
  BuildMenus();
}

// Docks are named by their place among the open views: handles are never given out twice.
void TMainWindow::SaveGeometry() {
  FHost.Workspaces()->Flush();
  int place = 0;
  for (const auto& [handle, dock] : FDocks) dock->setObjectName(QStringLiteral("view%1").arg(place++));
  TConfigManager& config = FHost.Config();
  const std::string section = "Desktop_" + FHost.Workspaces()->GetName();
  config.WriteString(section, kGeometryKey, saveGeometry().toBase64().toStdString(), false);
  config.WriteString(section, kDocksKey, saveState().toBase64().toStdString(), false);
}

void TMainWindow::RestoreGeometry() {
  int place = 0;
  for (const auto& [handle, dock] : FDocks) dock->setObjectName(QStringLiteral("view%1").arg(place++));
  const std::string section = "Desktop_" + FHost.Workspaces()->GetName();
  const auto read = [&](std::string_view key) {
    return QByteArray::fromBase64(QByteArray::fromStdString(FHost.Config().ReadString(section, key)));
  };
  if (!restoreGeometry(read(kGeometryKey))) resize(1280, 800);
  restoreState(read(kDocksKey));
}

void TMainWindow::closeEvent(QCloseEvent* event) {
  SaveGeometry();
  QMainWindow::closeEvent(event);
}

void TMainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(FShown, true)) return;
  TCustomGlobalChannelManager::GetInstance().PostChannelData(kChannelMainFormShown, "", nullptr, 0);
}

// --- status and dialogs

void TMainWindow::UpdateStatus() {
  FConnection->setText(HostText("Desktop_Connected"));
  FUpdated->setText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")));
}

void TMainWindow::ReportFault(const QString& where, const QString& what) {
  statusBar()->showMessage(QStringLiteral("%1: %2").arg(where, what));
}

void TMainWindow::ShowPreferences() {
  TPreferenceWindow window(FHost.Preferences(), this);
  window.exec();
}

void TMainWindow::ShowAbout() {
  QString text = QStringLiteral("MarginDesk %1\n%2 %3")
                     .arg(QStringLiteral(MARGINDESK_VERSION))
                     .arg(HostText("Desktop_Contract"))
                     .arg(kContractVersion);
  for (const auto& package : FPackages.GetPackages()) text += u'\n' + ToQt(package->GetName());
  QMessageBox::about(this, HostText("Desktop_About"), text);
}

}  // namespace margindesk
