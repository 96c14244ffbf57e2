// Status texts and the mapping of catalog engine codes to statuses.
#include "platform/dal/dal_status.h"

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

// Engine codes and the status each stands for.
struct CodeMapping {
  sqldb::Code code;
  int status;
};

const CodeMapping kCodeMappings[] = {
    {sqldb::Code::kOk, DAL_SUCCESS},
    {sqldb::Code::kRow, DAL_SUCCESS},
    {sqldb::Code::kDone, DAL_NO_DATA},
    {sqldb::Code::kBusy, DAL_BUSY_TIMEOUT},
    {sqldb::Code::kReadOnly, DAL_READ_ONLY},
    {sqldb::Code::kConstraint, DAL_CONSTRAINT_VIOLATION},
    {sqldb::Code::kFull, DAL_IO_ERROR},
    {sqldb::Code::kIo, DAL_IO_ERROR},
    {sqldb::Code::kCorrupt, DAL_CATALOG_CORRUPT},
    {sqldb::Code::kMissing, DAL_CATALOG_MISSING},
    {sqldb::Code::kNoAccess, DAL_CATALOG_UNREADABLE},
    {sqldb::Code::kUnreachable, DAL_CATALOG_UNREADABLE},
    {sqldb::Code::kCanceled, DAL_EXECUTION_ERROR},
    {sqldb::Code::kNoMemory, DAL_OUT_OF_MEMORY},
    {sqldb::Code::kRange, DAL_VALUE_OUT_OF_RANGE},
    {sqldb::Code::kMisuse, DAL_INVALID_ARGUMENT},
    {sqldb::Code::kError, DAL_SQL_ERROR},
};

}  // namespace

const char* DalStatusText(int status) {
  for (const StatusText& s : kStatusTexts) {
    if (s.status == status) return s.text;
  }
  return "unknown status";
}

int DalStatusFromCode(sqldb::Code code) {
  for (const CodeMapping& m : kCodeMappings) {
    if (m.code == code) return m.status;
  }
  return DAL_EXECUTION_ERROR;
}

}  // namespace Dal
}  // namespace Corvela
