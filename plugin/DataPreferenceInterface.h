#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/contract/Baseview.h"

namespace margindesk {

// The plug-in object of the data preference page. It is in no registry: the host reaches it through
// TIAccountInfo.
class TIDataPreference : public TIBasePreferenceView {
 public:
  using TIBasePreferenceView::TIBasePreferenceView;

  std::string GetName() override;
  std::int32_t GetViewID() override;
  std::int32_t GetWidth() override;
  std::int32_t GetHeight() override;
  std::vector<TFrame*> GetView() override;  // makes the page when first asked
};

}  // namespace margindesk
