#pragma once

#include <cstddef>

namespace margindesk {

// How often memory was asked for since the program started, in every library of it.
std::size_t GetAllocationCount() noexcept;

}  // namespace margindesk
