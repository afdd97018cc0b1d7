#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/contract/Handlers.h"

namespace margindesk {

using TCallLog = std::vector<std::string>;

// Writes its name into a log when it is notified, and then does what the test wants.
struct TListener {
  std::string FName;
  TCallLog* FLog;
  std::function<void()> FAction;
  void* FData = nullptr;

  void Handle(void* /*sender*/, void* data) {
    FLog->push_back(FName);
    FData = data;
    if (FAction) FAction();
  }

  THandler GetHandler() { return MakeHandler<&TListener::Handle>(this); }
};

}  // namespace margindesk
