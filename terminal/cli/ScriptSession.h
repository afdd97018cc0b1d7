#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "host/loader/Packages.h"
#include "host/services/HostJournal.h"
#include "host/services/ReferenceHost.h"
#include "terminal/cli/ScriptArguments.h"

namespace margindesk {

// The clock that the host of a script goes by: it moves by steps alone.
class TScriptClock {
 public:
  TUiLoop::TTimePoint Now() const noexcept { return FNow; }
  void Advance(TUiLoop::TDuration duration) noexcept { FNow += duration; }

 private:
  TUiLoop::TTimePoint FNow;
};

// The files that steps may mean.
struct TScriptFiles {
  std::filesystem::path FFolder;   // that relative names count from; empty for the current directory
  std::filesystem::path FPackage;  // that is loaded where a step names none
};

// What the steps of a script work on: a host with its open views, a journal of what these ask of it, and the
// answers that its dialogs will be given. From its making to its end the host's messages and dialogs are this
// object's; nobody else may have opened a view.
class TScriptSession {
 public:
  // All must outlive it. The host goes by the clock. reload: reads the book into the host again. packages:
  // what the steps that load and unload work on; null where there are none.
  TScriptSession(TReferenceHost& host, TScriptClock& clock, std::function<void()> reload,
                 TPackages* packages = nullptr, TScriptFiles files = {});
  ~TScriptSession();
  TScriptSession(const TScriptSession&) = delete;
  TScriptSession& operator=(const TScriptSession&) = delete;

  TReferenceHost& Host() noexcept { return FHost; }
  THostJournal& Journal() noexcept { return FJournal; }
  void Reload() { FReload(); }
  TPackages& Packages();  // throws TScriptError when there are none
  const TScriptFiles& Files() const noexcept { return FFiles; }

  // The view that a step means: the one it names, else the last opened of those that are open. Throws
  // TScriptError when there is none.
  const TOpenView& View(const TScriptArguments& step);
  TFrame& Frame(const TScriptArguments& step) { return *View(step).FFrame; }

  // Runs the host's loop until nothing is left to do now and no file is on its way. Throws TScriptError when
  // that does not end.
  void Settle();
  void Tick();  // one period of the host's timer passes

  // What dialogs will be answered, each answer once, in the order of the calls.
  void AnswerConfirmation(bool yes) { FConfirmations.push_back(yes); }
  void AnswerBatch(bool yes) { FBatches.push_back(yes); }
  void AnswerColumns(TColumnAnswer answer);

  // Messages that were shown since the last call, as they were.
  std::vector<std::string> TakeMessages();

  // Saves the workspace and closes every view.
  void Close();

 private:
  static bool TakeAnswer(std::deque<bool>& answers);  // no when there is none left
  void OfferColumnAnswer();

  TReferenceHost& FHost;
  TScriptClock& FClock;
  const std::function<void()> FReload;
  TPackages* const FPackages;
  const TScriptFiles FFiles;
  THostJournal FJournal;
  std::vector<std::string> FMessages;
  std::deque<bool> FConfirmations;
  std::deque<bool> FBatches;
  std::deque<TColumnAnswer> FColumns;
};

}  // namespace margindesk
