// The connection pool and its leases.
#include "platform/dal/connection_manager.h"

#include <unistd.h>

#include <string>

#include "platform/dal/dal_log.h"
#include "platform/dal/dal_status.h"

namespace Corvela {
namespace Dal {

namespace {

struct AccountName {
  USERID_TYPES type;
  const char* name;
};
const AccountName kAccounts[] = {
    {USERID_DBM_ADMIN, "dbm_admin"},
    {USERID_SLP_ADMIN, "slp_admin"},
};

const char* AccountNameOf(USERID_TYPES type) {
  for (const AccountName& a : kAccounts) {
    if (a.type == type) return a.name;
  }
  return nullptr;
}

const char kSource[] = "DbConnectionManager";

}  // namespace

DbConnectionManager::DbConnectionManager(unsigned int minConnections, unsigned int maxConnections,
                                         unsigned int openAttempts,
                                         unsigned int openRetryDelaySeconds,
                                         unsigned int loginTimeoutSeconds,
                                         unsigned int idleTimeoutSeconds,
                                         unsigned int statementCacheSize, USERID_TYPES userIdType,
                                         bool readOnly, const CatalogLocation* catalog)
    : maxConnections_(maxConnections),
      openAttempts_(openAttempts > 0 ? openAttempts : 1),
      openRetryDelaySeconds_(openRetryDelaySeconds),
      readOnly_(readOnly),
      catalog_(catalog ? *catalog : sqldb::ConfiguredLocation()),
      translations_(statementCacheSize, catalog_.engine) {
  const char* account = AccountNameOf(userIdType);
  const std::string settings =
      "account " + std::to_string(userIdType) + ", connections " + std::to_string(minConnections) +
      ".." + std::to_string(maxConnections) + ", attempts " + std::to_string(openAttempts_) +
      ", timeouts " + std::to_string(loginTimeoutSeconds) + "/" +
      std::to_string(idleTimeoutSeconds) + " s, cache " + std::to_string(statementCacheSize) +
      (readOnly ? ", read-only" : "") + ", catalog " +
      (catalog_.display.empty() ? catalog_.path : catalog_.display);
  if (account == nullptr) {
    DalError(kSource, "unknown database account: " + settings);
    return;
  }
  if (minConnections < 1 || minConnections > maxConnections) {
    DalError(kSource, "unusable connection limits: " + settings);
    return;
  }
  usable_ = true;
  DalTrace(LOG_AT_VERBOSITY_5, kSource, std::string("created for ") + account + ": " + settings);
}

DbConnectionManager::~DbConnectionManager() = default;

int DbConnectionManager::OpenConnection(MSRDbConnection** out) {
  int status = DAL_SUCCESS;
  std::string why;
  for (unsigned int attempt = 1; attempt <= openAttempts_; ++attempt) {
    std::unique_ptr<sqldb::Database> db;
    status = OpenCatalogFile(catalog_, readOnly_, &db, &why);
    if (status == DAL_SUCCESS) {
      connections_.emplace_back(new MSRDbConnection(std::move(db), &translations_));
      *out = connections_.back().get();
      return DAL_SUCCESS;
    }
    if (status != DAL_BUSY_TIMEOUT) break;
    if (attempt < openAttempts_) sleep(openRetryDelaySeconds_);
  }
  DalError(kSource, "cannot open the catalog: " + why + " (status " + std::to_string(status) +
                        ", " + DalStatusText(status) + ")");
  return status;
}

int DbConnectionManager::Lease(MSRDbConnection** out) {
  if (out == nullptr) return DAL_INVALID_ARGUMENT;
  *out = nullptr;
  if (!usable_) return DAL_MANAGER_UNUSABLE;
  MSRDbConnection* connection = nullptr;
  for (const auto& c : connections_) {
    if (!c->leased()) {
      connection = c.get();
      break;
    }
  }
  if (connection == nullptr) {
    if (connections_.size() >= maxConnections_) {
      DalError(kSource, "all " + std::to_string(maxConnections_) + " connections are leased");
      return DAL_POOL_EXHAUSTED;
    }
    const int status = OpenConnection(&connection);
    if (status != DAL_SUCCESS) return status;
  }
  connection->setLeased(true);
  *out = connection;
  return DAL_SUCCESS;
}

void DbConnectionManager::GiveBack(MSRDbConnection* connection) {
  for (const auto& c : connections_) {
    if (c.get() == connection) c->setLeased(false);
  }
}

MSRGuard::MSRGuard(DbConnectionManager* manager, MSRDbConnection*& out) : manager_(manager) {
  out = nullptr;
  status_ = manager ? manager->Lease(&connection_) : DAL_MANAGER_UNUSABLE;
  out = connection_;
}

MSRGuard::~MSRGuard() {
  if (manager_ && connection_) manager_->GiveBack(connection_);
}

}  // namespace Dal
}  // namespace Corvela
