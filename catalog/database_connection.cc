// Opening an operation's catalog connection and the master server key
// lookup.
#include "catalog/database_connection.h"

#include <cstdio>
#include <new>

#include "platform/debuglog.h"
#include "util/message.h"
#include "util/process.h"

using namespace Corvela::Dal;

namespace {

// Machine types whose aliases name a master server: master, clustered master.
const int kMasterServerTypes[] = {3, 5};

// Status GetMasterServerKey returns when the key cannot be found.
const int kKeyNotFound = 13;

// The message on standard error and the same text in the debug log.
void ReportCannotCreateManager() {
  logmsg(16, PrintMsg(stderr, "SmeSlp0690N", "cannot create database connection manager"),
         progname.c_str());
}

void ReportCannotConnect(int status) {
  logmsg(16, PrintMsg(stderr, "SmeSlp0660N", "cannot connect to database, status = %d", status),
         progname.c_str());
}

}  // namespace

DatabaseConnection::DatabaseConnection(USERID_TYPES userIdType, const CatalogLocation* catalog) {
  manager.reset(new (std::nothrow)
                    DbConnectionManager(2, 32, 1, 1, 30, 15, 40, userIdType, false, catalog));
  if (!manager || !manager->isUsable()) {
    ReportCannotCreateManager();
    return;
  }
  MSRGuard guard(manager.get(), connection);
  if (guard.status() != DAL_SUCCESS) {
    ReportCannotConnect(guard.status());
    return;
  }
  int status = DAL_SUCCESS;
  view = connection->GetOdbcView(&status);
  if (status != DAL_SUCCESS) {
    ReportCannotConnect(status);
    return;
  }
  connected = true;
}

DatabaseConnection::~DatabaseConnection() {
  if (connection && view) connection->ReturnOdbcView(view);
  view = nullptr;
  connection = nullptr;
  manager.reset();
  connected = false;
}

int DatabaseConnection::GetMasterServerKey(unsigned int* key, const std::string& machineName) {
  if (key == nullptr) return kKeyNotFound;
  if (masterServerKey != 0) {
    *key = masterServerKey;
    return 0;
  }
  *key = 0;
  if (!connected) return kKeyNotFound;
  const std::string sql = std::string("SELECT m.ParentKey FROM EMM_Main.EMM_Machine m ") +
                          "JOIN EMM_Main.EMM_MachineAlias a ON m.ParentKey = a.MachineKey " +
                          "WHERE a.MachineSwuType IN (" + std::to_string(kMasterServerTypes[0]) +
                          ", " + std::to_string(kMasterServerTypes[1]) +
                          ") AND UPPER(a.MachineAliasName) = UPPER(?)";
  ParameterBinder binder;
  binder.bindInputString(machineName.c_str(), DAL_NTS, false);
  uint32_t value = 0;
  const int status = connection->ULongReturningQuery(
      view, sql, binder.getBindings(), &value, LOG_AT_VERBOSITY_3, "ULongReturningQuery", "ULong");
  if (status != DAL_SUCCESS) return kKeyNotFound;
  masterServerKey = value;
  *key = value;
  return 0;
}
