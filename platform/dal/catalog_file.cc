// Catalog file opening: existence and access checks first (SQLite alone
// would create a missing file or report every problem alike), then the open
// without SQLITE_OPEN_CREATE and one read of the schema.
#include "platform/dal/catalog_file.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/config.h"
#include "platform/dal/dal_status.h"
#include "platform/dal/sql_functions.h"

namespace Corvela {
namespace Dal {

namespace {

// Checks the file before SQLite sees it; 0 or a status with *why set.
int CheckFile(const std::string& path, std::string* why) {
  struct stat st;
  if (path.empty()) {
    *why = "no catalog database is configured";
    return DAL_CATALOG_MISSING;
  }
  if (stat(path.c_str(), &st) != 0) {
    const int err = errno;
    *why = path + ": " + strerror(err);
    return (err == ENOENT || err == ENOTDIR) ? DAL_CATALOG_MISSING : DAL_CATALOG_UNREADABLE;
  }
  if (!S_ISREG(st.st_mode)) {
    *why = path + ": not a regular file";
    return DAL_CATALOG_UNREADABLE;
  }
  if (access(path.c_str(), R_OK) != 0) {
    *why = path + ": " + strerror(errno);
    return DAL_CATALOG_UNREADABLE;
  }
  if (st.st_size == 0) {
    *why = path + ": empty file, not a catalog database";
    return DAL_CATALOG_CORRUPT;
  }
  return DAL_SUCCESS;
}

// Reads the schema once, so that a damaged file or a lock held past the
// timeout shows at open time; an SQLite database without tables is not a
// catalog either.
int CheckSchema(sqlite3* db, const std::string& path, std::string* why) {
  sqlite3_stmt* stmt = nullptr;
  int rc = sqlite3_prepare_v2(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table'", -1,
                              &stmt, nullptr);
  if (rc == SQLITE_OK) rc = sqlite3_step(stmt);
  const bool noTables = rc == SQLITE_ROW && sqlite3_column_int64(stmt, 0) == 0;
  if (rc != SQLITE_ROW) *why = path + ": " + sqlite3_errmsg(db);
  sqlite3_finalize(stmt);
  if (rc != SQLITE_ROW) return DalStatusFromSqlite(rc);
  if (noTables) {
    *why = path + ": holds no tables, not a catalog database";
    return DAL_CATALOG_CORRUPT;
  }
  return DAL_SUCCESS;
}

}  // namespace

void SqliteCloser::operator()(sqlite3* db) const { sqlite3_close_v2(db); }

CatalogLocation ConfiguredCatalog() {
  CatalogLocation where;
  where.path = SW_catalog_path();
  where.busyTimeoutMs = SW_catalog_busy_timeout_ms();
  return where;
}

int OpenCatalogFile(const CatalogLocation& where, bool readOnly, SqliteHandle* db,
                    std::string* why) {
  db->reset();
  int status = CheckFile(where.path, why);
  if (status != DAL_SUCCESS) return status;

  sqlite3* raw = nullptr;
  const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  int rc = sqlite3_open_v2(where.path.c_str(), &raw, flags, nullptr);
  SqliteHandle handle(raw);
  if (rc != SQLITE_OK) {
    *why = where.path + ": " + (raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc));
    return rc == SQLITE_NOMEM ? DAL_OUT_OF_MEMORY : DAL_CATALOG_UNREADABLE;
  }
  sqlite3_busy_timeout(raw, where.busyTimeoutMs > 0 ? where.busyTimeoutMs : 0);
  // A write is on disk before the call that made it returns, whatever the
  // library's compiled-in default (docs/catalog.md, "Writes").
  sqlite3_exec(raw, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
  rc = RegisterDialectFunctions(raw);
  if (rc != SQLITE_OK) {
    *why = std::string("cannot register SQL functions: ") + sqlite3_errstr(rc);
    return DalStatusFromSqlite(rc);
  }
  status = CheckSchema(raw, where.path, why);
  if (status != DAL_SUCCESS) return status;
  *db = std::move(handle);
  return DAL_SUCCESS;
}

}  // namespace Dal
}  // namespace Corvela
