#pragma once

#include "host/services/HostData.h"
#include "terminal/desktop/views/FactForm.h"
#include "terminal/desktop/views/HostDock.h"

namespace margindesk {

// The account's more-information page where no address is configured: who the account is, its funds by
// currency, limits and margin status, under the headings of the language file's "MoreInfo" section.
class TMoreInfoPage : public THostDock {
 public:
  TMoreInfoPage(THostData& hostData, TCode account, QWidget* parent);

  void SetAccount(TCode account);

  void UpdateTexts() override;
  void Refresh() override;

 private:
  THostData& FData;
  TCode FAccount;
  TFactForm* FForm;
};

}  // namespace margindesk
