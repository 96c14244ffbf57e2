// SQL functions of the native dialect that SQLite lacks, registered on every
// catalog connection of the SQLite engine (the dialect translator quotes
// their date-part argument, see platform/dal/sql_dialect.h):
//
//   DATEDIFF(part, a, b)  number of `part` boundaries from a to b; a and b
//                         are date-times: seconds since 1970 as a number (the
//                         catalog's form) or text 'YYYY-MM-DD[ HH:MM[:SS[.fff]]]'
//                         (UTC, also with 'T' and a trailing 'Z'). NULL when
//                         a or b is NULL.
//   DATEADD(part, n, d)   d moved by n parts, as seconds since 1970 (the
//                         catalog's form), whether d is a number or a text.
//   STRING(a, ...)        the texts of the arguments joined, numbers in
//                         decimal, NULLs left out; NULL when all are NULL.
//
// Date parts: SECOND (SS, S), MINUTE (MI, N), HOUR (HH), DAY (DD, D), any
// case. An unknown part or a text that is not a date-time is an SQL error.
#ifndef PLATFORM_SQLDB_SQLITE_FUNCTIONS_H_
#define PLATFORM_SQLDB_SQLITE_FUNCTIONS_H_

#include <cstdint>
#include <string_view>

struct sqlite3;

namespace sqldb {

// Registers the functions above on `db`; returns an SQLite result code.
int RegisterDialectFunctions(sqlite3* db);

// Seconds since 1970 of a UTC date-time text; false when it is not one.
bool ParseDateTime(std::string_view text, int64_t* seconds);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_SQLITE_FUNCTIONS_H_
