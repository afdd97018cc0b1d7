#pragma once

#include <functional>
#include <string_view>

#include "model/contract/MessageBoxCtrl.h"

namespace margindesk {

// The message box of a terminal without a display: a message goes to a sink (standard error unless replaced),
// a question to the sink and then to a policy, which says no unless replaced. A front with a display installs
// its own service.
class TMessageBoxCtrl : public TCustomMessageBoxCtrl {
 public:
  using TSink = std::function<void(std::string_view text)>;
  using TPolicy = std::function<bool(std::string_view question)>;

  TMessageBoxCtrl();

  void ShowMessage(std::string_view text) override;
  std::int32_t ShowConfirmation(std::string_view text) override;

  void SetSink(TSink sink) { FSink = std::move(sink); }
  void SetPolicy(TPolicy policy) { FPolicy = std::move(policy); }

 private:
  TSink FSink;
  TPolicy FPolicy;
};

}  // namespace margindesk
