#pragma once

#include <string>

#include "model/contract/Code.h"

namespace margindesk {

// China Connect: mainland shares traded through the exchange link and kept on a linked account of their own.
bool IsChinaConnectOn();
bool IsChinaConnectExchange(TCode exchange);
TCode GetChinaConnectAccount(TCode account);  // the linked account's identifier; empty when there is none

// A new identifier, "{8-4-4-4-12}" in upper-case hexadecimal digits: 122 random bits, so that none comes
// twice.
std::string CreateNewGUID();

}  // namespace margindesk
