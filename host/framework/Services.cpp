// The one slot of every service: the terminal and all packages find their services here.

#include "host/framework/HostFunctions.h"
#include "model/contract/AccountAdapter.h"
#include "model/contract/ClassRegistry.h"
#include "model/contract/ConfigManager.h"
#include "model/contract/CurrencyAdapter.h"
#include "model/contract/EditorManager.h"
#include "model/contract/FileService.h"
#include "model/contract/Formatter.h"
#include "model/contract/GlobalChannelManager.h"
#include "model/contract/LanguageManager.h"
#include "model/contract/LookAndFeelService.h"
#include "model/contract/MarketAdapter.h"
#include "model/contract/MessageBoxCtrl.h"
#include "model/contract/OrderActionManager.h"
#include "model/contract/OrderAdapter.h"
#include "model/contract/PositionAdapter.h"
#include "model/contract/SubscribeAdapter.h"
#include "model/contract/TimerControl.h"
#include "model/contract/UserAppProfile.h"

namespace margindesk {

template class TService<TClassRegistry>;
template class TService<TCustomAccountAdapter>;
template class TService<TCustomConfigManager>;
template class TService<TCustomCurrencyAdapter>;
template class TService<TEditorManager>;
template class TService<TCustomFileService>;
template class TService<TCustomFormatter>;
template class TService<TCustomGlobalChannelManager>;
template class TService<THostFunctions>;
template class TService<TCustomLanguageManager>;
template class TService<TCustomLookAndFeelService>;
template class TService<TCustomMarketAdapter>;
template class TService<TCustomMessageBoxCtrl>;
template class TService<TCustomOrderActionManager>;
template class TService<TCustomOrderAdapter>;
template class TService<TCustomPositionAdapter>;
template class TService<TCustomSubscribeAdapter>;
template class TService<TCustomTimerControl>;
template class TService<TCustomUserAppProfile>;

}  // namespace margindesk
