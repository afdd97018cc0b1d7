#pragma once

#include <filesystem>
#include <optional>

namespace margindesk {

struct TStart {
  double FMilliseconds = 0;  // from the order to start the program until its first picture with figures
  double FMegabytes = 0;     // resident a second later
};

// Starts the desktop with the demo book and what the folder keeps of earlier starts, and closes it. None:
// nothing was painted.
std::optional<TStart> MeasureStart(const std::filesystem::path& folder);

// The started program, when the arguments say that this is one: its exit code. None: they do not.
std::optional<int> RunStarted(int argc, char** argv);

double GetResidentMegabytes();

}  // namespace margindesk
