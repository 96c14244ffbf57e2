// The SQLite engine of sqldb.h: the catalog as one database file.
#ifndef PLATFORM_SQLDB_SQLITE_ENGINE_H_
#define PLATFORM_SQLDB_SQLITE_ENGINE_H_

#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"

namespace sqldb {

// Open() for Location::engine kSqlite.
Code OpenSqlite(const Location& where, OpenMode mode, std::unique_ptr<Database>* db,
                std::string* why);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_SQLITE_ENGINE_H_
