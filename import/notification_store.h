// DBData's notification records: the import notifications this master
// received from others (SLP_MAIN.SLP_InNotifications) and those it has to
// send or has sent (SLP_MAIN.SLP_OutNotifications). Each record is a plain
// fixed-size struct that also serves as the row buffer of a fetch; the
// functions insert, delete, count retries and query them through the
// data-access layer, and write their text forms to the record log.
//
// Every database function takes a connection and an optional view: with a
// null view it asks the connection for one and hands it back before it
// returns; a view passed in is used and left open. They return 0, the
// data-access status, or kNoConnection for a null connection, and log every
// failure at level 0 under their own qualified name. Nothing is printed.
#ifndef IMPORT_NOTIFICATION_STORE_H_
#define IMPORT_NOTIFICATION_STORE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "import/record_list.h"
#include "platform/dal/dal.h"

namespace DBData {

using Corvela::Dal::DalOdbcView;
using Corvela::Dal::DbConnection;
typedef DalOdbcView::BindingStruct BindingStruct;

// Status of a database function called without a connection.
constexpr int kNoConnection = 4000002;
// Width of every text field, its NUL included.
constexpr size_t kNotificationTextSize = 257;

struct SLP_InNotifications {
  int64_t NotificationKey;  // assigned by the database
  char ClientMachineName[kNotificationTextSize];
  int64_t BackupTime;       // seconds since 1970
  uint64_t SourceImageKey;  // the image's key on the sending master
  uint32_t NotificationType;
  char FromHostName[kNotificationTextSize];
  unsigned char FromHostMachineId[16];  // GUID
  uint32_t FromHostSWVersion;
  int32_t ErrorCode;
  char ErrorString[kNotificationTextSize];
  int64_t CreatedDateTime;  // seconds since 1970, assigned by the database
};

struct SLP_OutNotifications {
  int64_t NotificationKey;  // assigned by the database
  char ClientMachineName[kNotificationTextSize];
  int64_t BackupTime;
  uint64_t SourceImageKey;
  uint32_t NotificationType;
  char DestinationHostName[kNotificationTextSize];  // the master to notify
  int32_t ErrorCode;
  char ErrorString[kNotificationTextSize];
  int32_t RetryCount;
  int64_t LastRetryTime;    // seconds since 1970
  int64_t CreatedDateTime;  // seconds since 1970
};

// Column lists of the two queries, in record order (used after "SELECT ").
extern const std::string inNotificationColumns;
extern const std::string outNotificationColumns;

// Result binding tables of the two queries, one entry per column.
constexpr unsigned int kNotificationColumns = 11;
extern const BindingStruct InNotification_Binding[kNotificationColumns];
extern const BindingStruct OutNotification_Binding[kNotificationColumns];

// Rows read per fetch.
constexpr unsigned int kInNotificationsPerFetch = 64;
constexpr unsigned int kOutNotificationsPerFetch = 128;

// Write the record's one-line text form into `buffer` (cut to `size`
// bytes, always NUL-terminated when size > 0) and return `buffer`.
char* SlpInNotification2String(char* buffer, size_t size, const SLP_InNotifications& note);
char* SlpOutNotification2String(char* buffer, size_t size, const SLP_OutNotifications& note);

// Write the record's text form to the record log at level 5 under
// `function` with `label` in front; null takes the defaults.
void LogSlpInNotificationRecord(const char* function, const char* label,
                                const SLP_InNotifications& note);
void LogSlpOutNotificationRecord(const char* function, const char* label,
                                 const SLP_OutNotifications& note);

// Insert one row from the record; the key and the creation time (and for
// an out-record the retry count and time) are left to the database. The
// texts and the GUID go in as parameters.
int InsertSlpInNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                  const SLP_InNotifications& note);
int InsertSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                   const SLP_OutNotifications& note);

// Delete the rows matching `where` (every row when it is empty); `bindings`
// fill its '?' marks (null or a terminated list). *rowsAffected, when
// given, is set to 0 first and to the number of rows deleted on success.
// No row matching is reported as Corvela::Dal::DAL_NO_DATA.
int DeleteSlpInNotificationRecord(DbConnection* connection, DalOdbcView* view, int* rowsAffected,
                                  const BindingStruct* bindings, const std::string& where);
int DeleteSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view, int* rowsAffected,
                                   const BindingStruct* bindings, const std::string& where);

// Count one retry of the out-rows matching `where`: RetryCount + 1 and
// LastRetryTime now. Arguments and result as for the deletes.
int IncrementRetryCountInSlpOutNotificationRecord(DbConnection* connection, DalOdbcView* view,
                                                  int* rowsAffected, const BindingStruct* bindings,
                                                  const std::string& where);

// Append the rows matching `where`, grouped and ordered by `groupBy` and
// `orderBy` (each left out when empty), to the end of `records` in the
// order the database returns them. The list is never cleared: rows read
// before a failure stay in it. End of data is success.
int GetSlpInNotificationRecords(DbConnection* connection, DalOdbcView* view,
                                RecordList<SLP_InNotifications>& records,
                                const BindingStruct* bindings, const std::string& where,
                                const std::string& groupBy, const std::string& orderBy);
int GetSlpOutNotificationRecords(DbConnection* connection, DalOdbcView* view,
                                 RecordList<SLP_OutNotifications>& records,
                                 const BindingStruct* bindings, const std::string& where,
                                 const std::string& groupBy, const std::string& orderBy);

// The text of a notification query: "SELECT " columns " FROM " table " ",
// then "WHERE ", "GROUP BY " and "ORDER BY " clauses for the texts that are
// not empty, each followed by a blank.
std::string NotificationQuery(const std::string& columns, const char* table,
                              const std::string& where, const std::string& groupBy,
                              const std::string& orderBy);

}  // namespace DBData

#endif  // IMPORT_NOTIFICATION_STORE_H_
