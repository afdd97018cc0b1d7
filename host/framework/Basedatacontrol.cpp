#include "model/contract/Basedatacontrol.h"

namespace margindesk {

void TBaseDataControl::Changed() { NotifyChange(); }

void TBaseDataControl::NotifyChange() {
  if (FOnChange) FOnChange(this);
}

}  // namespace margindesk
