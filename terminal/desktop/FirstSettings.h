#pragma once

#include <filesystem>

#include "host/services/ConfigManager.h"

namespace margindesk {

// What a desktop starts with that has never run with this configuration: the figures and position columns of
// a margin desk, sub-accounts that may be aggregated, the formulas of the hints, a colour of simulated
// figures that is not the one of losses, and a question before a position is closed. Only what is not set is
// written, and only once: what somebody clears stays cleared.
void WriteFirstSettings(TConfigManager& config, const std::filesystem::path& resources);

}  // namespace margindesk
