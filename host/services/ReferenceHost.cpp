#include "host/services/ReferenceHost.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>

#include "host/services/BookChange.h"
#include "host/services/HostContentsOfBook.h"

namespace margindesk {

namespace {

TConfigManager MakeConfig(const TReferenceHostOptions& options) {
  if (options.FConfigFile) return TConfigManager(*options.FConfigFile, options.FUser);
  return TConfigManager(options.FUser);
}

void WriteFault(std::string_view what, const void* /*owner*/) {
  const std::string line = std::string("A notification handler failed: ").append(what).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TReferenceHost::TFaultReport::TFaultReport() : FPrevious(SetHandlerFaultSink(&WriteFault)) {}
TReferenceHost::TFaultReport::~TFaultReport() { SetHandlerFaultSink(FPrevious); }

TReferenceHost::TReferenceHost(const THostContents& contents, const TReferenceHostOptions& options)
    : TReferenceHost(contents, options, {}) {}

TReferenceHost::TReferenceHost(TBook& book, const TReferenceHostOptions& options)
    : TReferenceHost(ReadHostContents(book), options,
                     [this, &book](const TBookChange& change) { Write(book, change); }) {}

TReferenceHost::TReferenceHost(const THostContents& contents, const TReferenceHostOptions& options,
                               TOrderEngine::TBookWriter writer)
    : FData(contents),
      FLoop(options.FClock),
      FConfig(&MakeConfig, options),
      FLanguage(options.FLanguageDirectory),
      FFormatter(*FConfig),
      FProfile([this] { return FData.GetPeriodExchanges(); }),
      FTimer(FLoop),
      FFiles(FLoop, options.FFileLimits),
      FCurrencies(FData),
      FMarket(FData),
      FSubscriptions(FData, [this](TCode symbol) { LoadItemLater(symbol); }),
      FAccounts(FData),
      FPositions(FData),
      FOrders(FData),
      FEngine(FData, *FAccounts, FLoop, std::move(writer), options.FWallClock),
      FOrderActions(FEngine),
      FCalls(FData),
      FColumnDialog(*FChannels),
      FConfirmation(*FChannels, FData),
      FSymbolLists(*FChannels, FData),
      FViews(*FCalls),
      FPreferences(FViews, *FConfig) {
  if (options.FWorkspaceFolder) FWorkspaces.emplace(*options.FWorkspaceFolder, FViews, FLoop);
  FLanguage->SetLanguage(options.FLanguage);
  FData.TakeChanges();  // nobody listens yet
  FData.SetChangeListener([this] { FLoop.Post([this] { Publish(); }); });
}

TReferenceHost::~TReferenceHost() {
  CloseViews();
  FData.SetChangeListener({});
}

void TReferenceHost::Reload(TBook& book) {
  const THostContents contents = ReadHostContents(book);
  FEngine.DropSimulations();
  FData.Replace(contents);
}

// A booking that was reckoned from figures that are no longer those of the book is refused, and the book read
// again for the next one.
void TReferenceHost::Write(TBook& book, const TBookChange& change) {
  try {
    WriteBookChange(book, change);
  } catch (const TBookChangedError&) {
    if (std::exchange(FBookIsNewer, true)) throw;
    FLoop.Post([this, &book] {
      FBookIsNewer = false;
      try {
        Reload(book);
      } catch (const TBookError& error) {
        FMessageBox->ShowMessage(error.what());
      }
    });
    throw;
  }
}

void TReferenceHost::LoadItemLater(TCode symbol) {
  FLoop.Post([this, symbol] {
    FData.LoadItem(symbol);
    Publish();
  });
}

void TReferenceHost::Publish() {
  if (!FData.HasChanges()) return;
  FEngine.Match(TCodeSet(FData.GetChanges().FSymbols));
  const THostChanges changes = FData.TakeChanges();
  FCurrencies->Publish(changes);
  FSubscriptions->Publish(changes);
  FAccounts->Publish(changes);
  FPositions->Publish(changes);
  if (FPublished) FPublished();
}

void TReferenceHost::CloseViews() {
  if (FWorkspaces) FWorkspaces->Release();
  FViews.CloseAll();
}

template <class TVisit>
void TReferenceHost::VisitHandlers(TVisit&& visit) const {
  visit("config", "", FConfig->Handlers());
  visit("timer", "", FTimer->Handlers());
  FChannels->VisitHandlers(visit);
  FCurrencies->VisitHandlers(visit);
  FSubscriptions->VisitHandlers(visit);
  FAccounts->VisitHandlers(visit);
  FPositions->VisitHandlers(visit);
}

std::size_t TReferenceHost::CountRegistrations() const {
  std::size_t count = FEditors->GetAccountEditorCount();
  VisitHandlers([&](std::string_view /*kind*/, std::string_view /*key*/, const auto& handlers) {
    count += handlers.GetCount() - handlers.GetCountOf(&*FFormatter);
  });
  return count;
}

std::size_t TReferenceHost::CountRegistrationsOf(const void* owner) const {
  std::size_t count = 0;
  VisitHandlers([&](std::string_view /*kind*/, std::string_view /*key*/, const auto& handlers) {
    count += handlers.GetCountOf(owner);
  });
  return count;
}

std::vector<TSubscriptionCount> TReferenceHost::GetSubscriptions() const {
  std::vector<TSubscriptionCount> counts;
  const auto add = [&counts](std::string_view kind, std::string_view key, std::size_t count) {
    if (count > 0) counts.push_back({std::string(kind), std::string(key), count});
  };
  VisitHandlers([&](std::string_view kind, std::string_view key, const auto& handlers) {
    if constexpr (requires { handlers.GetKeyCounts(); }) {
      for (const auto& [code, count] : handlers.GetKeyCounts()) add(kind, code.Text(), count);
    } else {
      add(kind, key, handlers.GetCount() - handlers.GetCountOf(&*FFormatter));
    }
  });
  for (const auto& [group, count] : FEditors->CountAccountEditors()) add("account_boxes", group, count);
  std::ranges::stable_sort(counts, {}, &TSubscriptionCount::FKind);
  return counts;
}

}  // namespace margindesk
