// DbConnectionManager: the pool of catalog connections of one database
// account, and MSRGuard, the lease of one connection from it.
//
// Connections are opened on the first lease that needs one and stay open
// until the manager is destroyed; a lease given back makes its connection
// free for the next lease, and the connection stays usable by whoever keeps
// its pointer while the manager lives. Of the seven tuning values the pool
// uses the connection limit, the open attempts with their delay and the
// statement cache size; the others (minimum connections, login and idle
// timeouts) have no meaning for a local database file and are only logged.
#ifndef PLATFORM_DAL_CONNECTION_MANAGER_H_
#define PLATFORM_DAL_CONNECTION_MANAGER_H_

#include <memory>
#include <vector>

#include "platform/dal/catalog_file.h"
#include "platform/dal/dal_types.h"
#include "platform/dal/db_connection.h"
#include "platform/dal/sql_dialect.h"

namespace Corvela {
namespace Dal {

class DbConnectionManager {
 public:
  // A manager for `userIdType` on `catalog`, or on the configured catalog
  // when `catalog` is null. With `readOnly` connections cannot write. Never
  // fails outright: isUsable() tells whether the arguments were acceptable
  // (a known account, 1 <= minConnections <= maxConnections).
  DbConnectionManager(unsigned int minConnections, unsigned int maxConnections,
                      unsigned int openAttempts, unsigned int openRetryDelaySeconds,
                      unsigned int loginTimeoutSeconds, unsigned int idleTimeoutSeconds,
                      unsigned int statementCacheSize, USERID_TYPES userIdType, bool readOnly,
                      const CatalogLocation* catalog = nullptr);
  DbConnectionManager(const DbConnectionManager&) = delete;
  DbConnectionManager& operator=(const DbConnectionManager&) = delete;
  // Closes every connection (and the views still open on them).
  ~DbConnectionManager();

  bool isUsable() const { return usable_; }

  // Leases a connection (owned by the manager) into *out. Returns 0, or
  // DAL_MANAGER_UNUSABLE, DAL_POOL_EXHAUSTED, or the status of opening the
  // catalog (missing, unreadable, corrupt, locked) with *out null.
  int Lease(MSRDbConnection** out);
  // Gives a lease back; unknown connections and null are ignored.
  void GiveBack(MSRDbConnection* connection);

 private:
  int OpenConnection(MSRDbConnection** out);

  bool usable_ = false;
  unsigned int maxConnections_;
  unsigned int openAttempts_;
  unsigned int openRetryDelaySeconds_;
  bool readOnly_;
  CatalogLocation catalog_;
  SqlTranslationCache translations_;
  std::vector<std::unique_ptr<MSRDbConnection>> connections_;
};

// Leases a connection for as long as the guard lives.
class MSRGuard {
 public:
  // Leases from `manager` into `out` (null on failure); status() tells the
  // outcome (DAL_MANAGER_UNUSABLE for a null manager).
  MSRGuard(DbConnectionManager* manager, MSRDbConnection*& out);
  MSRGuard(const MSRGuard&) = delete;
  MSRGuard& operator=(const MSRGuard&) = delete;
  // Gives the lease back.
  ~MSRGuard();

  int status() const { return status_; }

 private:
  DbConnectionManager* manager_;
  MSRDbConnection* connection_ = nullptr;
  int status_;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_CONNECTION_MANAGER_H_
