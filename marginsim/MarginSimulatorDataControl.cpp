#include "marginsim/MarginSimulatorDataControl.h"

#include "model/contract/AccountAdapter.h"
#include "model/contract/Constdef.h"

namespace margindesk {

namespace {

// Shows the real account for a moment, without telling anybody.
class TNormalModeScope {
 public:
  explicit TNormalModeScope(TAccountInfoMode& mode) : FMode(mode), FPrevious(mode) {
    FMode = TAccountInfoMode::aimNormal;
  }
  ~TNormalModeScope() { FMode = FPrevious; }
  TNormalModeScope(const TNormalModeScope&) = delete;
  TNormalModeScope& operator=(const TNormalModeScope&) = delete;

 private:
  TAccountInfoMode& FMode;
  const TAccountInfoMode FPrevious;
};

}  // namespace

TMarginSimulatorDataControl::TMarginSimulatorDataControl(TComponent* owner)
    : TAccountInfoDataControl(owner) {}

TMarginSimulatorDataControl::~TMarginSimulatorDataControl() {
  TCustomAccountAdapter::GetInstance().UnregisterSimulateListener(FAccount, this);
}

void TMarginSimulatorDataControl::SetAccount(TCode account) {
  if (account != FAccount) {
    TCustomAccountAdapter::GetInstance().RegisterSimulateListener(
        account, MakeHandler<&TMarginSimulatorDataControl::AccountSimulateUpdate>(this), this, FAccount);
  }
  TAccountInfoDataControl::SetAccount(account);
}

void TMarginSimulatorDataControl::SetAccountInfoMode(TAccountInfoMode mode) {
  if (mode == FAccountInfoMode) return;
  FAccountInfoMode = mode;
  if (mode != TAccountInfoMode::aimNormal) return;
  FCurrentGUID.clear();
  Changed();
}

void TMarginSimulatorDataControl::AccountSimulateUpdate(void* /*sender*/, void* data) {
  const auto* accounts = static_cast<const TAccountMap*>(data);
  if (accounts == nullptr || FAccountInfoMode != TAccountInfoMode::aimSimulate) return;
  if (accounts->contains(FAccount)) Changed();
}

void TMarginSimulatorDataControl::UpdateChinaConnectFlag() {
  TAccountInfoDataControl::UpdateChinaConnectFlag();
}

bool TMarginSimulatorDataControl::IsValueChanged(TDataNode* node, std::int32_t columnID,
                                                 std::string& originalValue) {
  if (columnID != kCellValue || FAccount.IsEmpty() || FAccountInfoMode != TAccountInfoMode::aimSimulate)
    return false;
  const TCustomAccount* account = TCustomAccountAdapter::GetInstance().GetAccount(FAccount, true);
  if (account == nullptr) return false;
  const TCustomAccountData* data = nullptr;
  std::int32_t attribute = -1;
  bool total = false;
  if (const auto* field = dynamic_cast<const TAccountDataNode*>(node)) {
    data = account->GetCurrencyData(TCode());
    attribute = field->GetAttribute();
    total = true;
  } else if (const auto* value = dynamic_cast<const TAccountDataValueNode*>(node)) {
    data = account->GetCurrencyData(value->GetCurrency());
    attribute = value->GetAttribute();
  }
  if (data == nullptr || attribute < 0) return false;
  {
    const TNormalModeScope normal(FAccountInfoMode);
    originalValue = GetAccountCurrencyDisplayData(data, attribute, total);
  }
  return GetAccountCurrencyDisplayData(data, attribute, total) != originalValue;
}

}  // namespace margindesk
