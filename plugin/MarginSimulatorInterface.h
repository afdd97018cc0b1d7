#pragma once

#include <cstdint>
#include <string>

#include "model/contract/Baseview.h"

namespace margindesk {

// The plug-in object of the margin simulator: its menu entry, which is there for users who may simulate, and
// a new view each time it is opened.
class TIMarginSimulator : public TIBaseView {
 public:
  using TIBaseView::TIBaseView;

  std::string GetName() override;
  std::int32_t GetViewID() override;
  std::int32_t GetMenuLevel() override;
  std::int32_t GetMenuIndex(std::int32_t level) override;
  std::int32_t GetMenuID(std::int32_t level) override;
  std::string GetMenuCaption(std::int32_t level) override;
  std::int32_t GetMenuGroupIndex(std::int32_t level) override;
  bool GetIsVisible() override;
  TFrame* OpenNewInstance() override;
  bool GetDefaultSize(std::int32_t& width, std::int32_t& height) override;
  bool GetDefaultCaption(std::string& caption) override;
};

}  // namespace margindesk
