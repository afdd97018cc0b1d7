#pragma once

#include <span>

#include "model/contract/Package.h"

namespace margindesk {

// The package's units in the order of their start.
std::span<const TPackageUnit> GetPackageUnits() noexcept;

}  // namespace margindesk
