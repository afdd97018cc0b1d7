#include "host/services/MessageBoxCtrl.h"

#include <cstdio>
#include <string>

namespace margindesk {

namespace {

constexpr std::int32_t kConfirmationNo = 7;

void WriteToStandardError(std::string_view text) {
  const std::string line = std::string(text).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TMessageBoxCtrl::TMessageBoxCtrl()
    : FSink(&WriteToStandardError), FPolicy([](std::string_view) { return false; }) {}

void TMessageBoxCtrl::ShowMessage(std::string_view text) { FSink(text); }

std::int32_t TMessageBoxCtrl::ShowConfirmation(std::string_view text) {
  FSink(text);
  return FPolicy(text) ? kConfirmationYes : kConfirmationNo;
}

}  // namespace margindesk
