// The catalog library's connections: one open SQLite database per connection
// identifier handed out by emmlib_initialize, with the log callback given
// there and a cache of master server names and keys. Also the mapping of
// SQLite result codes to the library's statuses.
#ifndef PLATFORM_EMMLIB_CONNECTION_H_
#define PLATFORM_EMMLIB_CONNECTION_H_

#include <sqlite3.h>

#include <cstdint>
#include <string>

#include "platform/debuglog.h"
#include "platform/emmlib/sqlite_stmt.h"

namespace emm {

class Connection {
 public:
  Connection(sqlite3* db, LogFunction log, std::string source);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  sqlite3* db() const { return db_; }

  // Writes `text` to the log callback (when one was given) at `severity`.
  void Log(int severity, const std::string& text) const;
  // Logs the database's last error for `call` at severity 16 and returns the
  // library status for `rc`.
  unsigned Fail(const char* call, int rc) const;

  // The machine key of a master server named `name` (any of its aliases of
  // machine type 3 or 5, letter case ignored); -1 when there is none.
  // Status in *status (0, or a database failure).
  int64_t MasterServerKey(const char* name, unsigned* status);
  // The primary name of the master server with machine key `key`; the empty
  // text when there is none. The reference stays valid until the next call.
  const std::string& MasterServerName(int64_t key);

 private:
  sqlite3* db_;
  LogFunction log_;
  std::string source_;
  Statement keyLookup_;
  Statement nameLookup_;
  int64_t cachedNameKey_ = -1;
  std::string cachedName_;
};

// The connection named by *cid, or null with *status set (EMMLIB_INVALID_ARGUMENT
// for a null cid, EMMLIB_NOT_CONNECTED for an unknown one).
Connection* FindConnection(const int* cid, unsigned* status);
// The most recently opened connection still open (the one the db_... calls
// use), or null.
Connection* DefaultConnection();
// Registers an open connection; returns its identifier (1, 2, ...).
int AddConnection(Connection* connection);
// Closes connection `id` and releases its open queries; false when unknown.
bool CloseConnection(int id);

// The library status for an SQLite result code other than OK/ROW/DONE.
unsigned StatusFromSqlite(int rc);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_CONNECTION_H_
