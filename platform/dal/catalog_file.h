// Opening the catalog for the data-access layer: the catalog is never
// created here (a missing database is an error, not an empty catalog), a
// catalog that another process is writing is waited for within the run's
// lock-wait allowance, and a database that is not a catalog is reported by
// status before any statement runs.
#ifndef PLATFORM_DAL_CATALOG_FILE_H_
#define PLATFORM_DAL_CATALOG_FILE_H_

#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

// Which catalog to open and how long to wait for another process's lock.
using CatalogLocation = sqldb::Location;

// Opens the catalog at `where` read-write (read-only with `readOnly`).
// Returns 0 with *db set, or a status (DAL_CATALOG_MISSING,
// DAL_CATALOG_UNREADABLE, DAL_CATALOG_CORRUPT, DAL_BUSY_TIMEOUT, ...) with
// *db empty and the cause in *why.
int OpenCatalogFile(const CatalogLocation& where, bool readOnly,
                    std::unique_ptr<sqldb::Database>* db, std::string* why);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_CATALOG_FILE_H_
