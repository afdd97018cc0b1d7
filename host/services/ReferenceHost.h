#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/engine/OrderActionManager.h"
#include "host/engine/OrderEngine.h"
#include "host/services/AccountAdapter.h"
#include "host/services/BatchConfirmation.h"
#include "host/services/ColumnDialog.h"
#include "host/services/ConfigManager.h"
#include "host/services/CurrencyAdapter.h"
#include "host/services/EditorManager.h"
#include "host/services/FileService.h"
#include "host/services/Formatter.h"
#include "host/services/GlobalChannelManager.h"
#include "host/services/HostCalls.h"
#include "host/services/HostData.h"
#include "host/services/LanguageManager.h"
#include "host/services/LookAndFeelService.h"
#include "host/services/MarketAdapter.h"
#include "host/services/MessageBoxCtrl.h"
#include "host/services/OpenViews.h"
#include "host/services/OrderAdapter.h"
#include "host/services/PositionAdapter.h"
#include "host/services/PreferenceDialog.h"
#include "host/services/SubscribeAdapter.h"
#include "host/services/SubscriptionCount.h"
#include "host/services/SymbolList.h"
#include "host/services/TimerControl.h"
#include "host/services/UiLoop.h"
#include "host/services/UserAppProfile.h"
#include "host/services/Workspaces.h"

namespace margindesk {

class TBook;

struct TReferenceHostOptions {
  std::filesystem::path FLanguageDirectory;
  std::optional<std::filesystem::path> FConfigFile;       // none: a configuration that is gone with the host
  std::optional<std::filesystem::path> FWorkspaceFolder;  // none: no workspace is kept
  std::string FUser;                                      // the signed-in user
  std::int32_t FLanguage = kLanguageEnglish;
  TUiLoop::TClock FClock = &std::chrono::steady_clock::now;
  TFileLimits FFileLimits;
  TOrderEngine::TClock FWallClock = &std::chrono::system_clock::now;  // dates orders and fills
};

// The reference host: it owns every service and the data behind them, and has them installed for as long as
// it lives. When it goes, the services that were there before are back.
//
// Changes of its data are published together, once per turn of its loop. Everything runs on the thread that
// made it.
class TReferenceHost {
 public:
  // Throws TLanguageFileError or TConfigError when a file cannot be used, with nothing installed.
  TReferenceHost(const THostContents& contents, const TReferenceHostOptions& options);
  // Reads the book once and writes every booking of an order into it, so it must outlive the host; throws
  // TBookError besides.
  TReferenceHost(TBook& book, const TReferenceHostOptions& options);
  ~TReferenceHost();
  TReferenceHost(const TReferenceHost&) = delete;
  TReferenceHost& operator=(const TReferenceHost&) = delete;

  // Reads the book again, which is the one that the host was made with if it was made with one; everything
  // counts as changed. When the book cannot be read, TBookError leaves the host as it was.
  void Reload(TBook& book);

  // Fills the resting orders that the market takes since prices or exchanges changed, and publishes what
  // changed now instead of in the next turn of the loop: currencies, items, accounts,
  // positions and prices, in that order. What handlers change meanwhile waits for the next turn.
  void Publish();

  // Called at the end of every publication; an empty one for nobody.
  void SetPublishListener(std::function<void()> listener) { FPublished = std::move(listener); }

  // Saves the current workspace, lets go of it and closes every view, the last opened first. A front calls it
  // before its plug-in objects go; the host does when it goes itself.
  void CloseViews();

  // How many registrations are left: with every service together, and those of one owner. The host's own do
  // not count, account boxes do.
  std::size_t CountRegistrations() const;
  std::size_t CountRegistrationsOf(const void* owner) const;

  // The registrations that there are, by kind and then by key, the host's own left out. Kinds: "config",
  // "timer", "channels", "account_boxes", "multi_currency", "currency_list", "currency_ratios",
  // "reference_items", "account_loads", "monitor_information", "simulations", "position_prices", "positions",
  // "sub_account_positions".
  std::vector<TSubscriptionCount> GetSubscriptions() const;

  THostData& Data() noexcept { return FData; }
  TUiLoop& Loop() noexcept { return FLoop; }
  TConfigManager& Config() noexcept { return *FConfig; }
  TLanguageManager& Language() noexcept { return *FLanguage; }
  const TFormatter& Formatter() const noexcept { return *FFormatter; }
  TMessageBoxCtrl& MessageBox() noexcept { return *FMessageBox; }
  TFileService& Files() noexcept { return *FFiles; }
  TGlobalChannelManager& Channels() noexcept { return *FChannels; }
  THostEditorManager& Editors() noexcept { return *FEditors; }
  TAccountAdapter& Accounts() noexcept { return *FAccounts; }
  TOrderEngine& Engine() noexcept { return FEngine; }
  THostCalls& Calls() noexcept { return *FCalls; }
  TOpenViews& Views() noexcept { return FViews; }
  TPreferenceDialog& Preferences() noexcept { return FPreferences; }
  TColumnDialog& ColumnDialog() noexcept { return FColumnDialog; }
  TBatchConfirmation& Confirmation() noexcept { return FConfirmation; }
  TSymbolLists& SymbolLists() noexcept { return FSymbolLists; }
  // Null when the host keeps no workspaces.
  TWorkspaces* Workspaces() noexcept { return FWorkspaces ? &*FWorkspaces : nullptr; }

 private:
  TReferenceHost(const THostContents& contents, const TReferenceHostOptions& options,
                 TOrderEngine::TBookWriter writer);

  void Write(TBook& book, const TBookChange& change);
  // In a later turn, with its handlers told at once.
  void LoadItemLater(TCode symbol);

  // Calls visit(kind, key, list) for every list of registrations but the account boxes.
  template <class TVisit>
  void VisitHandlers(TVisit&& visit) const;

  // A service and its place among the installed ones.
  template <class TContract, class TImplementation>
  class TInstalled {
   public:
    template <class... TArguments>
    explicit TInstalled(TArguments&&... arguments)
        : FService(std::forward<TArguments>(arguments)...), FScope(FService) {}

    // From what makes it, for a service that cannot be moved.
    TInstalled(TImplementation (*make)(const TReferenceHostOptions&), const TReferenceHostOptions& options)
        : FService(make(options)), FScope(FService) {}

    TImplementation& operator*() noexcept { return FService; }
    const TImplementation& operator*() const noexcept { return FService; }
    const TImplementation* operator->() const noexcept { return &FService; }
    TImplementation* operator->() noexcept { return &FService; }

   private:
    TImplementation FService;
    TServiceScope<TContract> FScope;
  };

  // Names a fault in a handler, which the notification has survived.
  class TFaultReport {
   public:
    TFaultReport();
    ~TFaultReport();
    TFaultReport(const TFaultReport&) = delete;
    TFaultReport& operator=(const TFaultReport&) = delete;

   private:
    const THandlerFaultSink FPrevious;
  };

  // In the order of installation; they go in the reverse order.
  THostData FData;
  TUiLoop FLoop;
  TFaultReport FFaultReport;
  TInstalled<TCustomConfigManager, TConfigManager> FConfig;
  TInstalled<TCustomLanguageManager, TLanguageManager> FLanguage;
  TInstalled<TCustomMessageBoxCtrl, TMessageBoxCtrl> FMessageBox;
  TInstalled<TCustomFormatter, TFormatter> FFormatter;
  TInstalled<TCustomLookAndFeelService, TLookAndFeelService> FLookAndFeel;
  TInstalled<TCustomUserAppProfile, TUserAppProfile> FProfile;
  TInstalled<TCustomTimerControl, TTimerControl> FTimer;
  TInstalled<TCustomFileService, TFileService> FFiles;
  TInstalled<TCustomGlobalChannelManager, TGlobalChannelManager> FChannels;
  TInstalled<TEditorManager, THostEditorManager> FEditors;
  TInstalled<TCustomCurrencyAdapter, TCurrencyAdapter> FCurrencies;
  TInstalled<TCustomMarketAdapter, TMarketAdapter> FMarket;
  TInstalled<TCustomSubscribeAdapter, TSubscribeAdapter> FSubscriptions;
  TInstalled<TCustomAccountAdapter, TAccountAdapter> FAccounts;
  TInstalled<TCustomPositionAdapter, TPositionAdapter> FPositions;
  TInstalled<TCustomOrderAdapter, TOrderAdapter> FOrders;
  TOrderEngine FEngine;
  std::function<void()> FPublished;
  bool FBookIsNewer = false;  // than the data, and about to be read again
  TInstalled<TCustomOrderActionManager, TOrderActionManager> FOrderActions;
  TInstalled<THostFunctions, THostCalls> FCalls;
  TColumnDialog FColumnDialog;
  TBatchConfirmation FConfirmation;
  TSymbolLists FSymbolLists;
  TOpenViews FViews;
  TPreferenceDialog FPreferences;
  std::optional<TWorkspaces> FWorkspaces;
};

}  // namespace margindesk
