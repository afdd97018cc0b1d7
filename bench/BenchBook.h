#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "host/services/ReferenceHost.h"

namespace margindesk {

inline constexpr std::size_t kCurrencyCount = 10;
inline constexpr std::size_t kProductCount = 1000;

// Ten currencies, a thousand products and one master account M with so many positions of its own, or spread
// over so many sub-accounts. Every currency of every account is a row of its own. Always the same for the
// same sizes.
THostContents MakeBenchBook(std::size_t positionCount, std::size_t subAccountCount);

TReferenceHostOptions GetBenchOptions();

std::vector<TCode> GetBenchCurrencies();

}  // namespace margindesk
