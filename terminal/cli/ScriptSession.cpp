#include "terminal/cli/ScriptSession.h"

#include <utility>

namespace margindesk {

namespace {

constexpr int kMostTurns = 10'000;  // of the loop after one step

// The file service gives every fetch up in the end, so waiting for it needs no limit of its own.
constexpr std::chrono::milliseconds kFetchWait{50};

}  // namespace

TScriptSession::TScriptSession(TReferenceHost& host, TScriptClock& clock, std::function<void()> reload,
                               TPackages* packages, TScriptFiles files)
    : FHost(host),
      FClock(clock),
      FReload(std::move(reload)),
      FPackages(packages),
      FFiles(std::move(files)),
      FJournal(host) {
  FHost.MessageBox().SetSink([this](std::string_view text) { FMessages.emplace_back(text); });
  FHost.MessageBox().SetPolicy([this](std::string_view /*question*/) { return TakeAnswer(FConfirmations); });
  FHost.Confirmation().SetFront([this](const TBatchQuestion& /*question*/) { return TakeAnswer(FBatches); });
}

TScriptSession::~TScriptSession() {
  Close();
  FHost.Confirmation().SetFront({});
  FHost.ColumnDialog().ClearAnswer();
  FHost.MessageBox().SetPolicy([](std::string_view) { return false; });
  FHost.MessageBox().SetSink([](std::string_view) {});
}

TPackages& TScriptSession::Packages() {
  if (FPackages == nullptr) throw TScriptError("no package can be loaded here");
  return *FPackages;
}

bool TScriptSession::TakeAnswer(std::deque<bool>& answers) {
  if (answers.empty()) return false;
  const bool yes = answers.front();
  answers.pop_front();
  return yes;
}

void TScriptSession::AnswerColumns(TColumnAnswer answer) {
  FColumns.push_back(std::move(answer));
  OfferColumnAnswer();
}

void TScriptSession::OfferColumnAnswer() {
  if (FColumns.empty() || FHost.ColumnDialog().HasAnswer()) return;
  FHost.ColumnDialog().SetAnswer(std::move(FColumns.front()));
  FColumns.pop_front();
}

const TOpenView& TScriptSession::View(const TScriptArguments& step) {
  const auto handle = step.Handle("view");
  if (!handle && FHost.Views().GetViews().empty()) throw TScriptError("no view is open");
  const TOpenView* view = handle ? FHost.Views().Find(*handle) : &FHost.Views().GetViews().back();
  if (view == nullptr) throw TScriptError("view " + std::to_string(*handle) + " is not open");
  return *view;
}

void TScriptSession::Settle() {
  OfferColumnAnswer();
  for (int turn = 0; turn < kMostTurns;) {
    const bool fetching = FHost.Files().GetPendingCount() > 0;
    if (FHost.Loop().RunOnce(fetching ? kFetchWait : TUiLoop::TDuration::zero())) {
      ++turn;
    } else if (!fetching) {
      return;
    }
  }
  throw TScriptError("the views do not come to rest");
}

void TScriptSession::Tick() {
  FClock.Advance(TTimerControl::kPeriod);
  Settle();
}

std::vector<std::string> TScriptSession::TakeMessages() { return std::exchange(FMessages, {}); }

void TScriptSession::Close() { FHost.CloseViews(); }

}  // namespace margindesk
