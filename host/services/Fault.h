#pragma once

#include <exception>
#include <optional>
#include <string>

namespace margindesk {

// Runs an action and answers what it threw, in the fault's own words: none when it threw nothing, "" for what
// has no words. The words are a copy; nothing of the fault is left, so the code that threw it may go.
template <class TAction>
std::optional<std::string> CatchFault(TAction&& action) {
  try {
    action();
    return std::nullopt;
  } catch (const std::exception& fault) {
    return std::string(fault.what());
  } catch (...) {
    return std::string();
  }
}

}  // namespace margindesk
