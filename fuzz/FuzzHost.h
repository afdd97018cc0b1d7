#pragma once

#include "host/services/HostContents.h"
#include "host/services/ReferenceHost.h"

namespace margindesk {

// A small book: two currencies, a master account of stocks and its sub-account, one position.
THostContents MakeFuzzContents();

TReferenceHostOptions MakeFuzzOptions();

// Ends the program with a line that says what does not hold.
void Require(bool holds, const char* what);

}  // namespace margindesk
