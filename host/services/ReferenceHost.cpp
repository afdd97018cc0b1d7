#include "host/services/ReferenceHost.h"

#include <cstdio>

#include "host/services/HostContentsOfBook.h"

namespace margindesk {

namespace {

TConfigManager MakeConfig(const TReferenceHostOptions& options) {
  if (options.FConfigFile) return TConfigManager(*options.FConfigFile, options.FUser);
  return TConfigManager(options.FUser);
}

void WriteFault(std::string_view what) {
  const std::string line = std::string("A notification handler failed: ").append(what).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TReferenceHost::TFaultReport::TFaultReport() : FPrevious(SetHandlerFaultSink(&WriteFault)) {}
TReferenceHost::TFaultReport::~TFaultReport() { SetHandlerFaultSink(FPrevious); }

TReferenceHost::TReferenceHost(const THostContents& contents, const TReferenceHostOptions& options)
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
      FSubscriptions(FData),
      FAccounts(FData),
      FPositions(FData),
      FOrders(FData),
      FCalls(FData) {
  FLanguage->SetLanguage(options.FLanguage);
  FData.TakeChanges();  // nobody listens yet
  FData.SetChangeListener([this] { FLoop.Post([this] { Publish(); }); });
}

TReferenceHost::TReferenceHost(TBook& book, const TReferenceHostOptions& options)
    : TReferenceHost(ReadHostContents(book), options) {}

TReferenceHost::~TReferenceHost() { FData.SetChangeListener({}); }

void TReferenceHost::Reload(TBook& book) { FData.Replace(ReadHostContents(book)); }

void TReferenceHost::Publish() {
  if (!FData.HasChanges()) return;
  const THostChanges changes = FData.TakeChanges();
  FCurrencies->Publish(changes);
  FSubscriptions->Publish(changes);
  FAccounts->Publish(changes);
  FPositions->Publish(changes);
}

std::size_t TReferenceHost::CountRegistrations() const {
  const std::size_t ownHandlers = FConfig->Handlers().GetCountOf(&*FFormatter);
  return FConfig->Handlers().GetCount() - ownHandlers + FTimer->Handlers().GetCount() +
         FChannels->CountRegistrations() + FEditors->GetAccountEditorCount() +
         FCurrencies->CountRegistrations() + FSubscriptions->CountRegistrations() +
         FAccounts->CountRegistrations() + FPositions->CountRegistrations();
}

std::size_t TReferenceHost::CountRegistrationsOf(const void* owner) const {
  return FConfig->Handlers().GetCountOf(owner) + FTimer->Handlers().GetCountOf(owner) +
         FChannels->CountRegistrationsOf(owner) + FCurrencies->CountRegistrationsOf(owner) +
         FSubscriptions->CountRegistrationsOf(owner) + FAccounts->CountRegistrationsOf(owner) +
         FPositions->CountRegistrationsOf(owner);
}

}  // namespace margindesk
