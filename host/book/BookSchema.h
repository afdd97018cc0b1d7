#pragma once

#include <span>

#include "host/book/BookTables.h"
#include "host/book/Sqlite.h"

namespace margindesk {

// Brings a store to the schema of the given tables: makes every table that is newer than the store, in one
// transaction. Throws TBookError, and changes nothing, when the file is no book (kCreate takes an empty one)
// or is a newer book.
void PrepareBookSchema(TSqliteConnection& connection, TStoreMode mode, std::span<const TBookTable> tables,
                       int version);

}  // namespace margindesk
