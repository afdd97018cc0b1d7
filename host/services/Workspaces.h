#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/services/OpenViews.h"
#include "host/services/UiLoop.h"
#include "host/services/WorkspaceStore.h"

namespace margindesk {

// Saves and restores which views are open, with their groups and layouts. The workspace that was loaded or
// saved last is the current one: every kSaveDelay, and when this object goes, the views are compared with
// what was saved, and saved where they differ. Views do not tell of every change that their layout holds.
//
// Faults are told through the message box, one line each ("file: reason").
class TWorkspaces {
 public:
  static constexpr std::chrono::milliseconds kSaveDelay{1000};

  // Both must outlive it.
  TWorkspaces(std::filesystem::path folder, TOpenViews& views, TUiLoop& loop);
  ~TWorkspaces();
  TWorkspaces(const TWorkspaces&) = delete;
  TWorkspaces& operator=(const TWorkspaces&) = delete;

  std::vector<std::string> List() const { return FStore.List(); }
  const std::string& GetName() const noexcept { return FName; }  // of the current one; empty for none

  // Saves the open views under a name, which becomes the current one. False: it could not be saved; the old
  // file and the current workspace stay.
  bool Save(const std::string& name);

  // Closes the open views and opens those of the workspace, each with its layout and then its group. False:
  // there is none, or it is damaged and has been set aside; the open views stay as they are.
  //
  // A view whose class is unknown, or that cannot be opened, is kept in its place in the workspace. A view
  // that does not take its layout stays open with what it took.
  bool Load(const std::string& name);

  // Saves the current workspace now if it has changed since. A failure is told once, until a save succeeds.
  void Flush();

  // Saves what has changed and lets go of the current workspace: the views may then close for good.
  void Release();

 private:
  void MakeCurrent(const std::string& name, TWorkspace saved);
  void StopTimer();
  TWorkspace Collect() const;
  bool Restore(const TWorkspace& workspace);  // whether every view took its layout
  bool RestoreView(std::size_t place, const TWorkspaceView& view);
  bool IsDamaged(const std::string& name) const;
  void SetAside(const std::string& name);

  const TWorkspaceStore FStore;
  TOpenViews& FViews;
  TUiLoop& FLoop;
  std::string FName;
  std::vector<std::pair<std::size_t, TWorkspaceView>> FKept;  // by place, of views that could not be opened
  std::optional<TWorkspace> FSaved;  // what the views were when they were saved or loaded; none: not saved
  bool FTakenWhole = true;           // every view took its layout when the workspace was loaded
  bool FFailureTold = false;
  bool FLoading = false;
  TUiLoop::TTimerId FTimer = 0;
};

}  // namespace margindesk
