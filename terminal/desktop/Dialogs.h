#pragma once

#include <QMessageBox>
#include <QPointer>
#include <cstdint>
#include <string_view>

#include "host/services/ReferenceHost.h"
#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

// Messages and questions as windows. A message holds nothing up; a question does.
class TMessageWindows final : public TCustomMessageBoxCtrl {
 public:
  // A message that comes while another one is still being read stands below it.
  void ShowMessage(std::string_view text) override;
  std::int32_t ShowConfirmation(std::string_view text) override;

 private:
  QPointer<QMessageBox> FMessage;  // the one that is open
};

// The host's questions and messages as windows, for as long as it lives: message and confirmation boxes, the
// column dialog, the batch confirmation. Cancel is the default everywhere: Enter alone sends no order.
class TDialogs {
 public:
  explicit TDialogs(TReferenceHost& host);  // which must outlive it
  ~TDialogs();
  TDialogs(const TDialogs&) = delete;
  TDialogs& operator=(const TDialogs&) = delete;

 private:
  TReferenceHost& FHost;
  TMessageWindows FMessages;
  TServiceScope<TCustomMessageBoxCtrl> FScope{FMessages};
};

}  // namespace margindesk
