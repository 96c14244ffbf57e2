// The catalog library's connections: one open catalog database per
// connection identifier handed out by emmlib_initialize, with the log
// callback given there and a cache of master server names and keys. Also
// the mapping of the engine's codes to the library's statuses.
#ifndef PLATFORM_EMMLIB_CONNECTION_H_
#define PLATFORM_EMMLIB_CONNECTION_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/debuglog.h"
#include "platform/emmlib/statement.h"
#include "platform/sqldb/sqldb.h"

namespace emm {

class Connection {
 public:
  Connection(std::unique_ptr<sqldb::Database> db, LogFunction log, std::string source);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The database, owned by the connection.
  sqldb::Database* db() const { return db_.get(); }

  // Writes `text` to the log callback (when one was given) at `severity`.
  void Log(int severity, const std::string& text) const;
  // Logs the database's last error for `call` at severity 16 and returns the
  // library status for `code`.
  unsigned Fail(const char* call, sqldb::Code code) const;

  // Prepares `sql` into *stmt (owned by the caller, to end before the
  // connection) and binds `params`. Returns EMMLIB_OK, or the failure's
  // status, logged for `call`.
  unsigned Prepare(const char* call, const std::string& sql, const Params& params,
                   std::unique_ptr<sqldb::Statement>* stmt) const;

  // The machine key of a master server named `name` (any of its aliases of
  // machine type 3 or 5, letter case ignored); -1 when there is none (and
  // for a null name).
  // Status in *status (0, or a database failure).
  int64_t MasterServerKey(const char* name, unsigned* status);
  // The primary name of the master server with machine key `key`; the empty
  // text when there is none. The reference stays valid until the next call.
  const std::string& MasterServerName(int64_t key);

 private:
  std::unique_ptr<sqldb::Database> db_;  // first: ends after the statements
  LogFunction log_;
  std::string source_;
  std::unique_ptr<sqldb::Statement> keyLookup_;
  std::unique_ptr<sqldb::Statement> nameLookup_;
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

// The library status for an engine code other than kOk, kRow and kDone.
unsigned StatusFromCode(sqldb::Code code);

}  // namespace emm

#endif  // PLATFORM_EMMLIB_CONNECTION_H_
