#pragma once

#include <QMainWindow>
#include <QPointer>
#include <map>
#include <string>
#include <vector>

#include "host/services/ReferenceHost.h"
#include "model/contract/Datadef.h"
#include "terminal/desktop/views/HostDock.h"

namespace margindesk {

// The views that the host opens itself, as docks of the main window: position details and options pay-off
// when a package asks for them, an account's more-information page, and a symbol's quotes. Position details
// and quotes follow the linked channels. They are looked at again at every beat while they can be seen.
class THostViews {
 public:
  // Both must outlive it.
  THostViews(TReferenceHost& host, QMainWindow& window);
  ~THostViews();
  THostViews(const THostViews&) = delete;
  THostViews& operator=(const THostViews&) = delete;

  void UpdateTexts();  // in the current language

  // What is open, as a text that Restore takes. The more-information pages belong to their views and are not
  // among it.
  std::string Save() const;
  // Opens that in place of what is open, each dock under the object name that it had.
  void Restore(const std::string& text);

 private:
  static constexpr std::chrono::milliseconds kBeat{200};

  bool OpenView(const void* sender, std::int32_t viewID, const TBaseData* data);
  void AnswerMoreInfo(const TWebViewRecord& record);
  void FollowAccount(void* sender, void* data);
  void FollowSymbol(void* sender, void* data);
  // The key of the position that is chosen in a grid of the account's positions: in the one that stands over
  // `control` if it is there, else in any. Empty for none.
  std::string FindChosenKey(const void* control, TCode account) const;
  void Show(THostDock& dock);
  bool Add(THostDock& dock);  // whether it is alone on the right
  QString FindFreeName() const;
  THostDock* MakeDock(const std::vector<std::string>& description);  // null: of no kind that is known
  void Refresh();

  TReferenceHost& FHost;
  QMainWindow& FWindow;
  TUiLoop::TTimerId FTimer;
  std::vector<QPointer<THostDock>> FDocks;
  std::map<std::string, QPointer<THostDock>> FPages;  // more-information pages by their senders
  QPointer<THostDock> FDetail;                        // the one that follows the linked account
  QPointer<THostDock> FQuotes;
};

}  // namespace margindesk
