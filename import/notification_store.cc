// The notification record store: SQL texts, binding tables, text forms and
// the one frame every database function runs in (connection check, a view
// of its own when none is passed, one failure line in the record log).
#include "import/notification_store.h"

#include <cinttypes>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>

#include "platform/rguid.h"
#include "util/cmn.h"

namespace DBData {

using namespace Corvela::Dal;

const std::string inNotificationColumns =
    "NotificationKey, ClientMachineName, BackupTime, SourceImageKey, NotificationType, "
    "FromHostName, FromHostMachineId, FromHostSWVersion, ErrorCode, ErrorString, "
    "DATEDIFF(SECOND, '1970-01-01 00:00:00', CreatedDateTime)";

const std::string outNotificationColumns =
    "NotificationKey, ClientMachineName, BackupTime, SourceImageKey, NotificationType, "
    "DestinationHostName, ErrorCode, ErrorString, RetryCount, "
    "DATEDIFF(SECOND, '1970-01-01 00:00:00', LastRetryTime), "
    "DATEDIFF(SECOND, '1970-01-01 00:00:00', CreatedDateTime)";

#define IN_COLUMN(n, type, field)                                         \
  DalResultColumn(n, nullptr, type, offsetof(SLP_InNotifications, field), \
                  sizeof(SLP_InNotifications::field))
#define OUT_COLUMN(n, type, field)                                         \
  DalResultColumn(n, nullptr, type, offsetof(SLP_OutNotifications, field), \
                  sizeof(SLP_OutNotifications::field))

const BindingStruct InNotification_Binding[kNotificationColumns] = {
    IN_COLUMN(1, DAL_VT_SBIGINT, NotificationKey),  IN_COLUMN(2, DAL_VT_CHAR, ClientMachineName),
    IN_COLUMN(3, DAL_VT_SBIGINT, BackupTime),       IN_COLUMN(4, DAL_VT_UBIGINT, SourceImageKey),
    IN_COLUMN(5, DAL_VT_ULONG, NotificationType),   IN_COLUMN(6, DAL_VT_CHAR, FromHostName),
    IN_COLUMN(7, DAL_VT_GUID, FromHostMachineId),   IN_COLUMN(8, DAL_VT_ULONG, FromHostSWVersion),
    IN_COLUMN(9, DAL_VT_SLONG, ErrorCode),          IN_COLUMN(10, DAL_VT_CHAR, ErrorString),
    IN_COLUMN(11, DAL_VT_SBIGINT, CreatedDateTime),
};

const BindingStruct OutNotification_Binding[kNotificationColumns] = {
    OUT_COLUMN(1, DAL_VT_SBIGINT, NotificationKey),
    OUT_COLUMN(2, DAL_VT_CHAR, ClientMachineName),
    OUT_COLUMN(3, DAL_VT_SBIGINT, BackupTime),
    OUT_COLUMN(4, DAL_VT_UBIGINT, SourceImageKey),
    OUT_COLUMN(5, DAL_VT_ULONG, NotificationType),
    OUT_COLUMN(6, DAL_VT_CHAR, DestinationHostName),
    OUT_COLUMN(7, DAL_VT_SLONG, ErrorCode),
    OUT_COLUMN(8, DAL_VT_CHAR, ErrorString),
    OUT_COLUMN(9, DAL_VT_SLONG, RetryCount),
    OUT_COLUMN(10, DAL_VT_SBIGINT, LastRetryTime),
    OUT_COLUMN(11, DAL_VT_SBIGINT, CreatedDateTime),
};

#undef IN_COLUMN
#undef OUT_COLUMN

namespace {

const char kInTable[] = "SLP_MAIN.SLP_InNotifications";
const char kOutTable[] = "SLP_MAIN.SLP_OutNotifications";

// The view one database function works on: the caller's, or one of its own
// that goes back to the connection when the call ends.
class CallView {
 public:
  CallView(DbConnection* connection, DalOdbcView* view) : connection_(connection), view_(view) {}
  ~CallView() {
    if (owned_) connection_->ReturnOdbcView(view_);
  }
  CallView(const CallView&) = delete;
  CallView& operator=(const CallView&) = delete;

  // Checks the connection and gets a view when none was passed; returns 0
  // or the status, which `caller` has then logged.
  int Open(const char* caller) {
    if (connection_ == nullptr) {
      LogMessage(0, caller, "invalid DB connection specified");
      return kNoConnection;
    }
    if (view_ != nullptr) return 0;
    int status = 0;
    view_ = connection_->GetOdbcView(&status);
    if (view_ == nullptr && status == 0) status = DAL_OUT_OF_MEMORY;
    if (status != 0) {
      LogMessage(0, caller, "failed to open ODBC view, status = %d", status);
      return status;
    }
    owned_ = true;
    return 0;
  }

  int Execute(const std::string& sql, const BindingStruct* bindings, const char* caller) {
    return connection_->Execute(view_, sql, bindings, LOG_AT_VERBOSITY_5, caller, false, false);
  }
  DbConnection* connection() const { return connection_; }
  DalOdbcView* view() const { return view_; }

 private:
  DbConnection* connection_;
  DalOdbcView* view_;
  bool owned_ = false;
};

// Runs a statement that changes rows. `failure` is the log format of a
// failed statement (one %d for the status).
int RunChange(DbConnection* connection, DalOdbcView* view, const std::string& sql,
              const BindingStruct* bindings, int* rowsAffected, const char* caller,
              const char* failure) {
  CallView call(connection, view);
  int status = call.Open(caller);
  if (status != 0) return status;
  status = call.Execute(sql, bindings, caller);
  if (status != 0) {
    LogMessage(0, caller, failure, status);
    return status;
  }
  if (rowsAffected != nullptr) {
    int64_t count = 0;
    call.view()->RowCount(&count);
    *rowsAffected = static_cast<int>(count);
  }
  return 0;
}

std::string WhereClause(const std::string& where) {
  return where.empty() ? std::string() : "WHERE " + where;
}

int RunDelete(DbConnection* connection, DalOdbcView* view, int* rowsAffected,
              const BindingStruct* bindings, const std::string& where, const char* table,
              const char* caller, const char* failure) {
  if (rowsAffected != nullptr) *rowsAffected = 0;
  std::string sql = std::string("DELETE FROM ") + table + " " + WhereClause(where);
  return RunChange(connection, view, sql, bindings, rowsAffected, caller, failure);
}

// A text parameter of an insert, read from the record's field.
BindingStruct TextParameter(const char* name, const char* text) {
  BindingStruct b = DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, DAL_NTS, text, DAL_NTS);
  b.name = name;
  return b;
}

// Runs a notification query and appends its rows to `records`, `perFetch`
// at a time.
template <typename Record>
int RunQuery(DbConnection* connection, DalOdbcView* view, RecordList<Record>& records,
             const BindingStruct* bindings, const std::string& sql, const BindingStruct* table,
             unsigned int perFetch, const char* caller, const char* direction) {
  CallView call(connection, view);
  int status = call.Open(caller);
  if (status != 0) return status;
  status = call.Execute(sql, bindings, caller);
  if (status != 0) {
    LogMessage(0, caller,
               "failed to execute SQL statement to get %s notification records, status = %d",
               direction, status);
    return status;
  }
  std::unique_ptr<Record[]> batch(new Record[perFetch]);
  for (;;) {
    memset(static_cast<void*>(batch.get()), 0, sizeof(Record) * perFetch);
    unsigned int rows = perFetch;
    status = call.connection()->Fetch(call.view(), batch.get(), sizeof(Record), table,
                                      kNotificationColumns, &rows, true, false);
    if (status != 0) break;
    for (unsigned int i = 0; i < rows; ++i) records.push_back(batch[i]);
  }
  if (status == DAL_NO_DATA) return 0;
  LogMessage(0, caller, "failed to fetch %s notification records from DB, status = %d", direction,
             status);
  return status;
}

}  // namespace

std::string NotificationQuery(const std::string& columns, const char* table,
                              const std::string& where, const std::string& groupBy,
                              const std::string& orderBy) {
  std::string sql = "SELECT " + columns + " FROM " + table + " ";
  if (!where.empty()) sql += "WHERE " + where + " ";
  if (!groupBy.empty()) sql += "GROUP BY " + groupBy + " ";
  if (!orderBy.empty()) sql += "ORDER BY " + orderBy + " ";
  return sql;
}

char* SlpInNotification2String(char* buffer, size_t size, const SLP_InNotifications& note) {
  char guid[38] = "";
  RGUIDAsString(note.FromHostMachineId, guid, sizeof guid, 1);
  snprintf(buffer, size,
           "key=%" PRId64 ", client=%s, bt=%" PRId64 ", srcimgkey=%" PRIu64
           ", notetype=%u, fromhost=%s, fromhostid={%s}, fromhostver=%u, ec=%d, estr=%s, "
           "ctime=%" PRId64,
           note.NotificationKey, note.ClientMachineName, note.BackupTime, note.SourceImageKey,
           note.NotificationType, note.FromHostName, guid, note.FromHostSWVersion, note.ErrorCode,
           note.ErrorString, note.CreatedDateTime);
  return buffer;
}

char* SlpOutNotification2String(char* buffer, size_t size, const SLP_OutNotifications& note) {
  snprintf(buffer, size,
           "key=%" PRId64 ", client=%s, bt=%" PRId64 ", srcimgkey=%" PRIu64
           ", notetype=%u, desthost=%s, ec=%d, estr=%s, rcnt=%d, lrtime=%" PRId64
           ", ctime=%" PRId64,
           note.NotificationKey, note.ClientMachineName, note.BackupTime, note.SourceImageKey,
           note.NotificationType, note.DestinationHostName, note.ErrorCode, note.ErrorString,
           note.RetryCount, note.LastRetryTime, note.CreatedDateTime);
  return buffer;
}

void LogSlpInNotificationRecord(const char* function, const char* label,
                                const SLP_InNotifications& note) {
  char text[4096];
  LogMessage(5, function != nullptr ? function : "DBData::LogSlpInNotificationRecord", "%s %s",
             label != nullptr ? label : "SLP_InNotificationRecord",
             SlpInNotification2String(text, sizeof text, note));
}

void LogSlpOutNotificationRecord(const char* function, const char* label,
                                 const SLP_OutNotifications& note) {
  char text[4096];
  LogMessage(5, function != nullptr ? function : "DBData::LogSlpOutNotificationRecord", "%s: %s",
             label != nullptr ? label : "SLP_OutNotificationRecord",
             SlpOutNotification2String(text, sizeof text, note));
}

int InsertSlpInNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                  const SLP_InNotifications& note) {
  std::string sql =
      std::string("INSERT INTO ") + kInTable + " " +
      "(ClientMachineName, BackupTime, SourceImageKey, NotificationType, " +
      "FromHostName, FromHostMachineId, FromHostSWVersion, ErrorCode, " + "ErrorString) VALUES (" +
      "?, " + std::to_string(note.BackupTime) + ", " + std::to_string(note.SourceImageKey) + ", " +
      std::to_string(note.NotificationType) + ", " + "?, " + "?, " +
      std::to_string(note.FromHostSWVersion) + ", " + std::to_string(note.ErrorCode) + ", " + "?)";
  BindingStruct guid = DalInputParameter(DAL_VT_GUID, DAL_PT_GUID, 16, note.FromHostMachineId, 16);
  guid.name = "&(inNote.FromHostMachineId)";
  const BindingStruct bindings[] = {
      TextParameter("inNote.ClientMachineName", note.ClientMachineName),
      TextParameter("&(inNote.FromHostName)", note.FromHostName),
      guid,
      TextParameter("inNote.ErrorString", note.ErrorString),
      DalTerminator(),
  };
  return RunChange(connection, view, sql, bindings, nullptr,
                   "DBData::InsertSlpInNotificationRecord",
                   "failed to execute SQL statement to insert IN notification record, status = %d");
}

int InsertSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                   const SLP_OutNotifications& note) {
  std::string sql = std::string("INSERT INTO ") + kOutTable + " " +
                    "(ClientMachineName, BackupTime, SourceImageKey, NotificationType, " +
                    "DestinationHostName, ErrorCode, ErrorString) VALUES (" + "?, " +
                    std::to_string(note.BackupTime) + ", " + std::to_string(note.SourceImageKey) +
                    ", " + std::to_string(note.NotificationType) + ", " + "?, " +
                    std::to_string(note.ErrorCode) + ", " + "?)";
  const BindingStruct bindings[] = {
      TextParameter("outNote.ClientMachineName", note.ClientMachineName),
      TextParameter("outNote.DestinationHostName", note.DestinationHostName),
      TextParameter("outNote.ErrorString", note.ErrorString),
      DalTerminator(),
  };
  return RunChange(
      connection, view, sql, bindings, nullptr, "DBData::InsertSlpOutNotificationRecord",
      "failed to execute SQL statement to insert OUT notification record, status = %d");
}

int DeleteSlpInNotificationRecord(DbConnection* connection, DalOdbcView* view, int* rowsAffected,
                                  const BindingStruct* bindings, const std::string& where) {
  return RunDelete(connection, view, rowsAffected, bindings, where, kInTable,
                   "DBData::DeleteSlpInNotificationRecord",
                   "failed to execute SQL statement to delete IN notification record, status = %d");
}

int DeleteSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view, int* rowsAffected,
                                   const BindingStruct* bindings, const std::string& where) {
  return RunDelete(
      connection, view, rowsAffected, bindings, where, kOutTable,
      "DBData::DeleteSlpOutNotificationRecord",
      "failed to execute SQL statement to delete OUT notification record, status = %d");
}

int IncrementRetryCountInSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                                  int* rowsAffected, const BindingStruct* bindings,
                                                  const std::string& where) {
  time_t now = time(nullptr);
  if (rowsAffected != nullptr) *rowsAffected = 0;
  std::string sql = std::string("UPDATE ") + kOutTable + " SET " +
                    "RetryCount = (RetryCount + 1), LastRetryTime = DATEADD(SECOND, " +
                    std::to_string(static_cast<int64_t>(now)) + ", '1970-01-01 00:00:00') " +
                    WhereClause(where);
  return RunChange(
      connection, view, sql, bindings, rowsAffected,
      "DBData::IncrementRetryCountInSlpOutNotificationRecord",
      "failed to execute SQL statement to update OUT notification record, status = %d");
}

int GetSlpInNotificationRecords(DbConnection* connection, DalOdbcView* view,
                                RecordList<SLP_InNotifications>& records,
                                const BindingStruct* bindings, const std::string& where,
                                const std::string& groupBy, const std::string& orderBy) {
  return RunQuery(connection, view, records, bindings,
                  NotificationQuery(inNotificationColumns, kInTable, where, groupBy, orderBy),
                  InNotification_Binding, kInNotificationsPerFetch,
                  "DBData::GetSlpInNotificationRecords", "IN");
}

int GetSlpOutNotificationRecords(DbConnection* connection, DalOdbcView* view,
                                 RecordList<SLP_OutNotifications>& records,
                                 const BindingStruct* bindings, const std::string& where,
                                 const std::string& groupBy, const std::string& orderBy) {
  return RunQuery(connection, view, records, bindings,
                  NotificationQuery(outNotificationColumns, kOutTable, where, groupBy, orderBy),
                  OutNotification_Binding, kOutNotificationsPerFetch,
                  "DBData::GetSlpOutNotificationRecords", "OUT");
}

}  // namespace DBData
