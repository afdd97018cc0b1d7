#pragma once

#include <string>
#include <vector>

#include "controls/EditProperties.h"

namespace margindesk {

// A fixed list to choose from. An open editor has a copy of it.
class TComboBoxProperties : public TEditProperties {
 public:
  using TEditProperties::TEditProperties;

  std::vector<std::string> FItems;
};

}  // namespace margindesk
