// Statuses of the data-access layer. Every call returns 0 on success,
// DAL_NO_DATA when a fetch finds no further row (or a searched UPDATE or
// DELETE touches none), and one of the other codes below on failure. The
// codes and their meaning are listed in docs/data-access.md.
#ifndef PLATFORM_DAL_DAL_STATUS_H_
#define PLATFORM_DAL_DAL_STATUS_H_

#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

enum : int {
  DAL_SUCCESS = 0,
  DAL_INVALID_ARGUMENT = 2007001,    // null or foreign view, bad binding entry or buffer
  DAL_CATALOG_MISSING = 2007002,     // the catalog database file does not exist
  DAL_CATALOG_UNREADABLE = 2007003,  // it exists but cannot be opened or read
  DAL_CATALOG_CORRUPT = 2007004,     // it is not a catalog database or is damaged
  DAL_BUSY_TIMEOUT = 2007005,        // another process held a lock longer than the busy timeout
  DAL_SQL_ERROR = 2007006,           // the statement cannot be prepared or evaluated
  DAL_PARAMETER_MISMATCH = 2007007,  // parameters bound differ from the '?' marks
  DAL_CONSTRAINT_VIOLATION = 2007008,
  DAL_READ_ONLY = 2007009,           // a write through a read-only connection or file
  DAL_VALUE_OUT_OF_RANGE = 2007010,  // a number does not fit its field
  DAL_CONVERSION_ERROR = 2007011,    // a value cannot be converted to its field's type
  DAL_DATA_TRUNCATED = 2007012,      // a text was cut to fit (only when asked to fail)
  DAL_NO_RESULT_SET = 2007013,       // a fetch without a query executed on the view
  DAL_POOL_EXHAUSTED = 2007014,      // every connection the manager allows is leased
  DAL_MANAGER_UNUSABLE = 2007015,    // lease from a manager whose creation failed
  DAL_OUT_OF_MEMORY = 2007016,
  DAL_IO_ERROR = 2007017,         // the operating system failed a read or write
  DAL_EXECUTION_ERROR = 2007018,  // any other failure reported by the database engine
  DAL_NO_DATA = 2007031,          // end of data, no row
  DAL_NOT_CONNECTED = 2007054,    // a database call made without a connection
};

// A short English description of `status` for the log ("unknown status" for
// codes not listed above).
const char* DalStatusText(int status);

// The status for what a catalog engine call ended with.
int DalStatusFromCode(sqldb::Code code);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_DAL_STATUS_H_
