// Status texts and the mapping of SQLite result codes to statuses.
#include "platform/dal/dal_status.h"

#include <sqlite3.h>

namespace Corvela {
namespace Dal {

namespace {

struct StatusText {
  int status;
  const char* text;
};

const StatusText kStatusTexts[] = {
    {DAL_SUCCESS, "success"},
    {DAL_INVALID_ARGUMENT, "invalid argument"},
    {DAL_CATALOG_MISSING, "catalog database does not exist"},
    {DAL_CATALOG_UNREADABLE, "catalog database cannot be opened"},
    {DAL_CATALOG_CORRUPT, "catalog database is damaged or not a catalog"},
    {DAL_BUSY_TIMEOUT, "catalog database is locked by another process"},
    {DAL_SQL_ERROR, "SQL statement error"},
    {DAL_PARAMETER_MISMATCH, "parameter count does not match the statement"},
    {DAL_CONSTRAINT_VIOLATION, "constraint violation"},
    {DAL_READ_ONLY, "catalog database is read-only"},
    {DAL_VALUE_OUT_OF_RANGE, "numeric value out of range"},
    {DAL_CONVERSION_ERROR, "value cannot be converted"},
    {DAL_DATA_TRUNCATED, "text truncated"},
    {DAL_NO_RESULT_SET, "no result set to fetch from"},
    {DAL_POOL_EXHAUSTED, "no free database connection"},
    {DAL_MANAGER_UNUSABLE, "connection manager is not usable"},
    {DAL_OUT_OF_MEMORY, "out of memory"},
    {DAL_IO_ERROR, "disk I/O error"},
    {DAL_EXECUTION_ERROR, "database engine error"},
    {DAL_NO_DATA, "no data"},
    {DAL_NOT_CONNECTED, "not connected to the database"},
};

// Primary SQLite result codes and the status each stands for; codes not
// listed are DAL_EXECUTION_ERROR.
struct SqliteMapping {
  int sqliteCode;
  int status;
};

const SqliteMapping kSqliteMappings[] = {
    {SQLITE_OK, DAL_SUCCESS},
    {SQLITE_ROW, DAL_SUCCESS},
    {SQLITE_DONE, DAL_NO_DATA},
    {SQLITE_ERROR, DAL_SQL_ERROR},
    {SQLITE_BUSY, DAL_BUSY_TIMEOUT},
    {SQLITE_LOCKED, DAL_BUSY_TIMEOUT},
    {SQLITE_NOMEM, DAL_OUT_OF_MEMORY},
    {SQLITE_READONLY, DAL_READ_ONLY},
    {SQLITE_IOERR, DAL_IO_ERROR},
    {SQLITE_FULL, DAL_IO_ERROR},
    {SQLITE_CORRUPT, DAL_CATALOG_CORRUPT},
    {SQLITE_NOTADB, DAL_CATALOG_CORRUPT},
    {SQLITE_CANTOPEN, DAL_CATALOG_UNREADABLE},
    {SQLITE_PERM, DAL_CATALOG_UNREADABLE},
    {SQLITE_AUTH, DAL_CATALOG_UNREADABLE},
    {SQLITE_CONSTRAINT, DAL_CONSTRAINT_VIOLATION},
    {SQLITE_MISMATCH, DAL_CONVERSION_ERROR},
    {SQLITE_TOOBIG, DAL_VALUE_OUT_OF_RANGE},
    {SQLITE_RANGE, DAL_PARAMETER_MISMATCH},
};

}  // namespace

const char* DalStatusText(int status) {
  for (const StatusText& s : kStatusTexts) {
    if (s.status == status) return s.text;
  }
  return "unknown status";
}

int DalStatusFromSqlite(int sqliteCode) {
  const int primary = sqliteCode & 0xff;
  for (const SqliteMapping& m : kSqliteMappings) {
    if (m.sqliteCode == primary) return m.status;
  }
  return DAL_EXECUTION_ERROR;
}

}  // namespace Dal
}  // namespace Corvela
