#pragma once

#include <cstddef>
#include <functional>
#include <istream>
#include <optional>
#include <ostream>
#include <string>

namespace margindesk {

// The value of an environment variable; none when it is not set.
using TEnvironment = std::function<std::optional<std::string>(const std::string& name)>;

// What a command meets of the world outside, so that a test can put its own in the place of each.
struct TTerminal {
  std::istream& FIn;
  std::ostream& FOut;
  std::ostream& FErr;
  TEnvironment FEnvironment;
  bool FColour = false;    // the output is read on a screen that shows colours
  std::size_t FWidth = 0;  // of that screen in columns; 0 for no screen
};

}  // namespace margindesk
