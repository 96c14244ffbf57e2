// The PostgreSQL engine of sqldb.h: the catalog in the schemas EMM_Main,
// DBM_Main and SLP_MAIN of a database on a server, reached through libpq.
#ifndef PLATFORM_SQLDB_PG_ENGINE_H_
#define PLATFORM_SQLDB_PG_ENGINE_H_

#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"

namespace sqldb {

// Open() for Location::engine kPostgres. where.conninfo is a libpq
// connection string or URI; the password, when it holds one, appears in no
// message.
Code OpenPostgres(const Location& where, OpenMode mode, std::unique_ptr<Database>* db,
                  std::string* why);

// The place a connection string leads to, "host:port/database", for
// messages; never its password.
std::string PostgresDisplay(const std::string& conninfo);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_PG_ENGINE_H_
