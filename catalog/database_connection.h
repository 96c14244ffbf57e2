// DatabaseConnection: the catalog connection of one operation that sends its
// own SQL (completion report, replication-record removal, notification
// listings, import-confirmation report, work-group listing). It creates a
// connection manager for the operation's database account, leases a
// connection and opens one statement view on it; callers run their
// statements on `connection` and `view` directly. It also resolves a machine
// name to its master server key and keeps that key for later calls.
#ifndef CATALOG_DATABASE_CONNECTION_H_
#define CATALOG_DATABASE_CONNECTION_H_

#include <memory>
#include <string>

#include "platform/dal/dal.h"

class DatabaseConnection {
 public:
  // Connects to `catalog`, or to the configured catalog when null. Never
  // throws for a database failure: a failure is reported (SmeSlp0690N or
  // SmeSlp0660N on standard error and in the debug log) and leaves
  // `connected` false.
  explicit DatabaseConnection(Corvela::Dal::USERID_TYPES userIdType,
                              const Corvela::Dal::CatalogLocation* catalog = nullptr);
  // Gives the view back to the connection and destroys the manager (which
  // closes the connection).
  ~DatabaseConnection();
  DatabaseConnection(const DatabaseConnection&) = delete;
  DatabaseConnection& operator=(const DatabaseConnection&) = delete;

  // Stores the master server key of `machineName` (an alias of a master or
  // clustered master server, matched without regard to case) in *key and
  // returns 0; returns 13 with *key 0 when it cannot be found. The first key
  // found is kept and returned by every later call, whatever the name.
  // Prints nothing.
  int GetMasterServerKey(unsigned int* key, const std::string& machineName);

  // True only when every step of construction succeeded.
  bool connected = false;
  // The key found by GetMasterServerKey; 0 = not looked up yet.
  unsigned int masterServerKey = 0;
  // The connection manager, owned; null when it could not be created.
  std::unique_ptr<Corvela::Dal::DbConnectionManager> manager;
  // The leased connection, owned by the manager.
  Corvela::Dal::MSRDbConnection* connection = nullptr;
  // The statement view, owned by the connection; handed back by the
  // destructor.
  Corvela::Dal::DalOdbcView* view = nullptr;
};

#endif  // CATALOG_DATABASE_CONNECTION_H_
