#include <QApplication>
#include <QMenuBar>
#include <algorithm>

#include "model/contract/LookAndFeelService.h"
#include "terminal/desktop/HostPage.h"
#include "terminal/desktop/HostText.h"
#include "terminal/desktop/MainWindow.h"
#include "terminal/desktop/Skin.h"

namespace margindesk {

namespace {

// Gives every entry the first of its Latin letters that no neighbour has as its mnemonic; an ampersand of a
// text stays one.
void AddMnemonics(const QList<QAction*>& actions) {
  QString taken;
  for (QAction* action : actions) {
    if (action->menu() != nullptr) AddMnemonics(action->menu()->actions());
    QString text = action->text().replace(u'&', QStringLiteral("&&"));
    for (qsizetype at = 0; at < text.size(); ++at) {
      const QChar letter = text[at].toLower();
      if (letter < u'a' || letter > u'z' || taken.contains(letter)) continue;
      taken += letter;
      text.insert(at, u'&');
      break;
    }
    action->setText(text);
  }
}

}  // namespace

void TMainWindow::SetExtraMenus(std::function<void(QMenuBar& bar)> add) {
  FExtraMenus = std::move(add);
  BuildMenus();
}

void TMainWindow::BuildMenus() {
  // The menu that is choosing now is one of them.
  for (QMenu* menu : menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) menu->deleteLater();
  menuBar()->clear();
  for (const TMenuEntry& entry : BuildMenu(FHost.Views())) {
    AddEntries(*menuBar()->addMenu(ToQt(entry.FCaption)), entry.FItems);
  }
  AddWorkspaceMenu();
  AddViewMenu();
  if (FExtraMenus) FExtraMenus(*menuBar());
  QMenu* help = menuBar()->addMenu(HostText("Desktop_Help"));
  help->addAction(HostText("Desktop_About"), this, [this] { ShowAbout(); });
  AddMnemonics(menuBar()->actions());
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
  menu->addAction(HostText("Desktop_ResetWorkspace"), this, [this] { ResetWorkspace(); });
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
  const auto addShortcut = [&](const char* key, const QKeySequence& keys, auto act) {
    // Floating views are windows of their own.
    menu->addAction(HostText(key), keys, this, act)->setShortcutContext(Qt::ApplicationShortcut);
  };
  addShortcut("Desktop_NextView", Qt::Key_F6, [this] { GoToDock(1); });
  addShortcut("Desktop_PreviousView", Qt::SHIFT | Qt::Key_F6, [this] { GoToDock(-1); });
  addShortcut("Desktop_CloseView", Qt::CTRL | Qt::Key_W, [this] {
    if (QDockWidget* dock = FindFocusedDock()) dock->close();
  });
  menu->addSeparator();
  QMenu* language = menu->addMenu(HostText("Desktop_Language"));
  for (const auto& [index, name] : kLanguageNames) {
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
    const bool chosen = percent == ReadScale(config);
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

}  // namespace margindesk
