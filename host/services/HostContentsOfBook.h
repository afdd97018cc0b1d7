#pragma once

#include "host/services/HostContents.h"

namespace margindesk {

class TBook;

// Everything that the host holds in memory of a book. A setting that the book does not give: several
// currencies, no China Connect. Throws TBookError when the book cannot be read.
THostContents ReadHostContents(TBook& book);

}  // namespace margindesk
