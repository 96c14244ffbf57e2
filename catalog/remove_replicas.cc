// remove_repl: finds the target machine's key, then deletes its replication
// targets in one statement, which either removes every matching record or
// none. Both texts reach the statements only as bound parameters.
#include "catalog/remove_replicas.h"

#include <cstdio>

#include "catalog/database_connection.h"
#include "platform/debuglog.h"
#include "util/message.h"
#include "util/process.h"

using namespace Corvela::Dal;

namespace {

const int kReplicationTargetType = 12;

const int kNoMachineGiven = 152;
const int kNoConnection = 25;
const int kUnknownMachine = 48;
const int kStatementFailed = 130;

// Logs SmeSlp0670N and the statement; returns the message text.
const char* LogStatementFailure(int status, const std::string& sql) {
  const char* text = LocalizeMsg("SmeSlp0670N", "error executing SQL query, status = %d", status);
  logmsg(16, text, progname.c_str());
  logmsg(2, sql.c_str(), progname.c_str());
  return text;
}

}  // namespace

int RemoveReplicas(const std::string& targetMachine, const std::string& targetInfo) {
  if (targetMachine.empty()) {
    PrintMsg(stderr, "SmeSlp0710N", "target machine value must be provided");
    return kNoMachineGiven;
  }
  DatabaseConnection db(USERID_DBM_ADMIN);
  if (!db.connected) return kNoConnection;

  const std::string lookup =
      "SELECT MachineKey FROM EMM_MAIN.EMM_Machine WHERE MachinePrimaryName = ?"
      " AND MachineSwuType = " +
      std::to_string(kReplicationTargetType);
  ParameterBinder machine;
  machine.bindInputString(targetMachine.c_str(), DAL_NTS, false);
  uint32_t key = 0;
  int status =
      db.connection->ULongReturningQuery(db.view, lookup, machine.getBindings(), &key,
                                         LOG_AT_VERBOSITY_3, "ULongReturningQuery", "ULong");
  if (status == DAL_NO_DATA) {
    PrintMsg(stderr, "SmeSlp0750N", "No target machine with name '%s' located.",
             targetMachine.c_str());
    return kUnknownMachine;
  }
  if (status != DAL_SUCCESS) {
    LogStatementFailure(status, lookup);
    return kStatementFailed;
  }

  std::string sql =
      "DELETE FROM DBM_MAIN.DBM_ImageReplicationDestination WHERE TargetMachineKey = " +
      std::to_string(key);
  ParameterBinder volume;
  const bool withInfo = !targetInfo.empty();
  if (withInfo) {
    sql += " AND VolumeInfo = ?";
    volume.bindInputString(targetInfo.c_str(), DAL_NTS, false);
  }
  status = db.connection->Execute(db.view, sql, volume.getBindings(), LOG_AT_VERBOSITY_5,
                                  "RemoveReplicas", false, false);
  if (status == DAL_NO_DATA) {
    const char* text =
        withInfo ? PrintMsg(stdout, "SmeSlp0720N",
                            "No replication records for target machine '%s' with target info "
                            "'%s' found",
                            targetMachine.c_str(), targetInfo.c_str())
                 : PrintMsg(stdout, "SmeSlp0730N",
                            "No replication records for target machine "
                            "'%s' found",
                            targetMachine.c_str());
    logmsg(4, text, progname.c_str());
    return 0;
  }
  if (status != DAL_SUCCESS) {
    fprintf(stderr, "%s\n", LogStatementFailure(status, sql));
    return kStatementFailed;
  }
  int64_t count = 0;
  db.view->RowCount(&count);
  const char* text =
      withInfo ? PrintMsg(stdout, "SmeSlp0760N",
                          "%ld replication records for target machine '%s' with target info "
                          "'%s' deleted",
                          static_cast<long>(count), targetMachine.c_str(), targetInfo.c_str())
               : PrintMsg(stdout, "SmeSlp0740N",
                          "%ld replication records for target machine '%s' deleted",
                          static_cast<long>(count), targetMachine.c_str());
  logmsg(4, text, progname.c_str());
  return 0;
}
