// Opening the catalog database file for the data-access layer: the catalog
// is never created here (a missing file is an error, not an empty catalog),
// a catalog that another process is writing is waited for up to the busy
// timeout, and a file that is not a catalog is reported by status before
// any statement runs.
#ifndef PLATFORM_DAL_CATALOG_FILE_H_
#define PLATFORM_DAL_CATALOG_FILE_H_

#include <memory>
#include <string>

struct sqlite3;

namespace Corvela {
namespace Dal {

// Which catalog to open and how long to wait for another process's lock.
struct CatalogLocation {
  std::string path;
  int busyTimeoutMs = 0;
};

// The configured catalog: SW_catalog_path() and SW_catalog_busy_timeout_ms().
CatalogLocation ConfiguredCatalog();

struct SqliteCloser {
  void operator()(sqlite3* db) const;
};
// An open catalog connection, closed when the handle goes.
using SqliteHandle = std::unique_ptr<sqlite3, SqliteCloser>;

// Opens the catalog at `where` read-write (read-only with `readOnly`), sets
// the busy timeout, registers the dialect functions and checks that the file
// is a database holding tables. Returns 0 with *db set, or a status
// (DAL_CATALOG_MISSING, DAL_CATALOG_UNREADABLE, DAL_CATALOG_CORRUPT,
// DAL_BUSY_TIMEOUT, ...) with *db empty and the cause in *why.
int OpenCatalogFile(const CatalogLocation& where, bool readOnly, SqliteHandle* db,
                    std::string* why);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_CATALOG_FILE_H_
