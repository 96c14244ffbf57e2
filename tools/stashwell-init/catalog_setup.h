// The catalog part of stashwell-init: the empty catalog database and the demo
// data.
#ifndef TOOLS_STASHWELL_INIT_CATALOG_SETUP_H_
#define TOOLS_STASHWELL_INIT_CATALOG_SETUP_H_

#include <cstdint>
#include <string>

#include "platform/sqldb/sqldb.h"

// The catalog file at `path`, waited for up to 30 seconds when another
// process holds its lock.
sqldb::Location CatalogFile(const std::string& path);

// The catalog in the PostgreSQL database that the connection URI `uri` names,
// waited for up to 30 seconds as the file is.
sqldb::Location CatalogOnServer(const std::string& uri);

// Creates the catalog at `where` with the catalog schema; `master` is this
// master server's name (recorded as a machine of the catalog). A PostgreSQL
// database gets the schema unless it holds an empty catalog already; one
// that holds machines is refused unless `replace`, which drops its catalog
// schemas first. Returns true on success, else false with a message in
// *error.
bool CreateCatalogDatabase(const sqldb::Location& where, const std::string& master, bool replace,
                           std::string* error);

// Fills the catalog at `where` with `images` demo images backed up in the 90
// days before `now` (seconds since the epoch); the same seed and `now` give
// the same catalog. Returns true on success, else false with *error.
bool FillDemoCatalog(const sqldb::Location& where, const std::string& master, long images,
                     unsigned seed, int64_t now, std::string* error);

#endif  // TOOLS_STASHWELL_INIT_CATALOG_SETUP_H_
