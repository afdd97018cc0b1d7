#pragma once

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <map>

#include "host/loader/Packages.h"
#include "host/services/MenuModel.h"
#include "host/services/OpenViews.h"
#include "host/services/ReferenceHost.h"
#include "terminal/desktop/StatusLine.h"
#include "terminal/desktop/ViewDock.h"
#include "terminal/desktop/views/HostViews.h"

namespace margindesk {

// The terminal's window: the menus that the packages' views make up, a dock for every open view and for those
// of the host, workspaces, language, skin and scale, and a status bar. It keeps no state of its own that
// matters: what is open, and how, is the host's.
class TMainWindow : public QMainWindow, private TOpenViewsListener {
 public:
  // Both must outlive it; the host keeps workspaces.
  TMainWindow(TReferenceHost& host, TPackages& packages);
  ~TMainWindow() override;

  // Opens the workspace that was current when the terminal was last closed; where there is none, a view of
  // the account in a new workspace.
  void Restore(const std::string& account);

  // Adds menus of others to the bar, now and whenever it is made anew: the language changed then.
  void SetExtraMenus(std::function<void(QMenuBar& bar)> add);

  // Says in the status bar that something failed, and where. The terminal goes on.
  void ReportFault(const QString& where, const QString& what);
  // The same of a notification's handler; the view is named that owns it.
  void ReportFaultOf(const void* owner, const QString& what);

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void ViewOpened(const TOpenView& view) override;
  void ViewClosing(TViewHandle handle) override;
  void ViewCaptionChanged(TViewHandle handle) override;

  void BuildMenus();
  void AddEntries(QMenu& menu, const std::vector<TMenuEntry>& entries);
  void AddWorkspaceMenu();
  void AddViewMenu();
  void OpenView(const std::string& className);
  void CloseView(TViewHandle handle);
  QDockWidget* FindFocusedDock() const;  // null for none
  void GoToDock(int step);               // to the next visible one, or the one before
  bool IsSimulationOld() const;
  void SetLanguage(std::int32_t index);
  void ApplyLook();
  void SaveWorkspaceAs();
  void MakeCurrentWorkspace(const std::string& name);
  void Place(TViewDock& dock);  // beside the others, or in a tab over the last where there is no room
  void OpenFirstView();
  void FinishLoading();
  void ResetWorkspace();
  void LoadWorkspace(const std::string& name);
  void ShowPreferences();
  void ShowAbout();
  void SaveGeometry();
  void RestoreGeometry();
  void RestoreDocks();

  TReferenceHost& FHost;
  TPackages& FPackages;
  std::map<TViewHandle, TViewDock*> FDocks;
  TStatusLine FStatus;
  THostViews FHostViews;
  QTimer FSaveTimer;     // of where the docks are
  std::string FAccount;  // of the first view
  bool FShown = false;
  bool FLeaving = false;
  std::function<void(QMenuBar& bar)> FExtraMenus;
};

}  // namespace margindesk
