#include "host/services/Workspaces.h"

#include <algorithm>
#include <exception>

#include "host/book/BookError.h"
#include "host/services/Fault.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

namespace {

void Tell(const std::string& line) { TCustomMessageBoxCtrl::GetInstance().ShowMessage(line); }

// Runs what a view does and answers why it failed: "" when it did not.
template <class TAction>
std::string FaultOf(TAction action) {
  const auto fault = CatchFault(action);
  if (!fault) return {};
  return fault->empty() ? "unknown exception" : QuotedForMessage(*fault);
}

}  // namespace

TWorkspaces::TWorkspaces(std::filesystem::path folder, TOpenViews& views, TUiLoop& loop)
    : FStore(std::move(folder)), FViews(views), FLoop(loop) {}

TWorkspaces::~TWorkspaces() { Release(); }

bool TWorkspaces::Save(const std::string& name) {
  if (FLoading) return false;
  TWorkspace workspace;
  if (name != FName && IsDamaged(name)) SetAside(name);
  try {
    workspace = Collect();
    FStore.Save(name, workspace);
  } catch (const std::exception& error) {
    Tell(error.what());
    return false;
  }
  // The workspace before has its own changes still to be saved, under its own name.
  if (name != FName) Flush();
  MakeCurrent(name, std::move(workspace));
  return true;
}

bool TWorkspaces::Load(const std::string& name) {
  if (FLoading) return false;
  TWorkspace workspace;
  try {
    workspace = FStore.Load(name);
  } catch (const TWorkspaceError& error) {
    std::string line = error.what();
    if (error.IsDamaged()) {
      try {
        line += "; set aside as " + FStore.SetAside(name);
      } catch (const TWorkspaceError& failure) {
        line += "; ";
        line += failure.what();
      }
      if (name == FName) FSaved.reset();  // the views that are open make a sound one
    }
    Tell(line);
    return false;
  }
  if (name != FName) Flush();
  FLoading = true;
  const bool whole = Restore(workspace);
  FLoading = false;
  // What a view did not take of its layout stays saved until something changes.
  FaultOf([&] { workspace = Collect(); });
  MakeCurrent(name, std::move(workspace));
  FTakenWhole = whole;
  return true;
}

bool TWorkspaces::IsDamaged(const std::string& name) const {
  try {
    FStore.Load(name);
    return false;
  } catch (const TWorkspaceError& error) {
    return error.IsDamaged();
  }
}

// Tells where the file is now, or why it stays in its place.
void TWorkspaces::SetAside(const std::string& name) {
  try {
    Tell(name + ": the workspace as it was is set aside as " + FStore.SetAside(name));
  } catch (const TWorkspaceError& failure) {
    Tell(failure.what());
  }
}

void TWorkspaces::MakeCurrent(const std::string& name, TWorkspace saved) {
  FName = name;
  FSaved = std::move(saved);
  FTakenWhole = true;
  FFailureTold = false;
  StopTimer();
  FTimer = FLoop.StartTimer(kSaveDelay, [this] { Flush(); });
}

void TWorkspaces::Flush() {
  if (FLoading || FName.empty()) return;
  try {
    TWorkspace workspace = Collect();
    if (FSaved == workspace) return;
    // What the views did not take of it must outlast the save.
    if (!std::exchange(FTakenWhole, true)) SetAside(FName);
    FStore.Save(FName, workspace);
    FSaved = std::move(workspace);
    FFailureTold = false;
  } catch (const std::exception& error) {  // a view may fail, too
    if (!std::exchange(FFailureTold, true)) Tell(error.what());
  }
}

void TWorkspaces::Release() {
  Flush();
  StopTimer();
  FName.clear();
  FKept.clear();
  FSaved.reset();
}

void TWorkspaces::StopTimer() { FLoop.StopTimer(std::exchange(FTimer, 0)); }

TWorkspace TWorkspaces::Collect() const {
  TWorkspace workspace;
  for (const TOpenView& view : FViews.GetViews()) {
    workspace.push_back({view.FClass, FViews.GetGroup(view.FHandle), FViews.GetLayout(view.FHandle)});
  }
  for (const auto& [place, view] : FKept) {
    const std::size_t at = std::min(place, workspace.size());
    workspace.insert(workspace.begin() + static_cast<std::ptrdiff_t>(at), view);
  }
  return workspace;
}

bool TWorkspaces::Restore(const TWorkspace& workspace) {
  FViews.CloseAll();
  FKept.clear();
  bool whole = true;
  for (std::size_t place = 0; place < workspace.size(); ++place) {
    if (!RestoreView(place, workspace[place])) whole = false;
  }
  return whole;
}

bool TWorkspaces::RestoreView(std::size_t place, const TWorkspaceView& view) {
  const std::string name = QuotedForMessage(view.FClass);
  TViewHandle handle = 0;
  std::string fault = FaultOf([&] { handle = FViews.Open(view.FClass); });
  if (handle == 0) {
    if (fault.empty()) fault = FViews.HasClass(view.FClass) ? "cannot be opened" : "unknown view";
    FKept.emplace_back(place, view);
    Tell(name + ": " + fault + "; kept in the workspace");
    return true;
  }
  if (!view.FLayout.empty()) fault = FaultOf([&] { FViews.SetLayout(handle, view.FLayout); });
  const bool whole = fault.empty();
  if (!whole) Tell(name + ": its layout is not applied whole: " + fault);
  // The group comes last: the layout's account must neither move the views of the group nor be moved by them.
  fault = FaultOf([&] { FViews.SetGroup(handle, view.FGroup); });
  if (!fault.empty()) Tell(name + ": its group is not applied: " + fault);
  return whole;
}

}  // namespace margindesk
