// The two notification listings share every step; what differs (record,
// host column, query, printers, messages) is gathered in one side struct
// per direction.
#include "import/list_import_notifications.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "catalog/database_connection.h"
#include "import/notification_store.h"
#include "platform/debuglog.h"
#include "platform/rguid.h"
#include "util/format.h"
#include "util/line_writer.h"
#include "util/message.h"
#include "util/output_form.h"
#include "util/process.h"

using Corvela::Dal::ParameterBinder;
using Orvantic::Stashwell::FormatTime;
using Orvantic::Stashwell::LineWriter;

namespace {

const char kNullShort[] = "*NULL*";
const char kNullUser[] = "(none specified)";
// Room for the longest short line: three texts and the numbers around them.
const size_t kShortLineSize = 3 * DBData::kNotificationTextSize + 16 * LineWriter::kMaxDigits + 64;

// The where text and its parameters, built from the filters in a fixed
// order. The parameters point into the arguments, which outlive the query.
class NotificationFilter {
 public:
  NotificationFilter(const char* hostColumn, ImportNotificationType_e type, TimeRangeType range,
                     long time, const std::string& client, const std::string& hostname)
      : type_(type), time_(time) {
    if (!client.empty()) {
      Add("ClientMachineName = ?");
      binder_.bindInputString(client.c_str(), Corvela::Dal::DAL_NTS, false);
    }
    if (type != IMPORT_NOTIFICATION_ALL) {
      Add("NotificationType = ?");
      binder_.bindInputInt32(&type_);
    }
    if (!hostname.empty()) {
      Add(std::string(hostColumn) + " = ?");
      binder_.bindInputString(hostname.c_str(), Corvela::Dal::DAL_NTS, false);
    }
    if (range != TIME_RANGE_NONE) {
      Add(std::string("CreatedDateTime") + (range == TIME_RANGE_BEFORE ? " < ?" : " > ?"));
      binder_.bindInputInt64(&time_);
    }
  }

  const std::string& where() const { return where_; }
  const DBData::BindingStruct* bindings() { return binder_.getBindings(); }

 private:
  void Add(const std::string& condition) {
    if (!where_.empty()) where_ += " AND ";
    where_ += condition;
  }

  std::string where_;
  ParameterBinder binder_;
  int32_t type_;
  int64_t time_;
};

// The text of a GUID, or the placeholder when it cannot be formed.
const char* GuidText(const unsigned char* guid) {
  static char text[RGUID_BRACED_TEXT_SIZE];
  return RGUIDAsString(guid, text, sizeof text, 1) != 0 ? "improperly formatted GUID" : text;
}

// A user-form line: the label, then the value.
LineWriter& Label(LineWriter& w, const char* label) { return w.Char(' ').Text(label); }
LineWriter& TextLine(LineWriter& w, const char* label, const char* text) {
  return Label(w, label).TextOr(text, kNullUser).Char('\n');
}
LineWriter& NumberLine(LineWriter& w, const char* label, int64_t value) {
  return Label(w, label).Int(value).Char('\n');
}
LineWriter& UnsignedLine(LineWriter& w, const char* label, uint64_t value) {
  return Label(w, label).UInt(value).Char('\n');
}
LineWriter& TimeLine(LineWriter& w, const char* label, int64_t t) {
  return Label(w, label).Int(t).Char('(').Text(FormatTime(t, false).c_str()).Text(")\n");
}

struct InputSide {
  typedef DBData::SLP_InNotifications Record;
  static constexpr const char* kHostColumn = "FromHostName";
  static void PrintNoRecords() {
    PrintMsg(stderr, "SmeSlp0820N", "No input notification records found");
  }
  static constexpr const char* kJson = "PrintInputImportNotificationsJson unimplemented\n";

  static int Get(DatabaseConnection& db, RecordList<Record>& records, NotificationFilter& filter) {
    return DBData::GetSlpInNotificationRecords(db.connection, db.view, records, filter.bindings(),
                                               filter.where(), "", "");
  }

  static void PrintShort(LineWriter& w, const Record& r) {
    LineWriter::Span s(w, kShortLineSize);
    s.Literal(CmdVersion).Char(' ').Int(r.NotificationKey).Char(' ');
    s.FieldOr(r.ClientMachineName, kNullShort).Char(' ').Int(r.BackupTime).Char(' ');
    s.UInt(r.SourceImageKey).Char(' ').UInt(r.NotificationType).Char(' ');
    s.FieldOr(r.FromHostName, kNullShort).Char(' ');
    const char* guid = GuidText(r.FromHostMachineId);
    s.Text(guid, strlen(guid)).Char(' ').UInt(r.FromHostSWVersion).Char(' ');
    s.Int(r.ErrorCode).Char(' ').FieldOr(r.ErrorString, kNullShort).Char(' ');
    s.Int(r.CreatedDateTime).Char('\n');
  }

  static void PrintUser(LineWriter& w, const Record& r, uint64_t number) {
    w.Text("Input notification record ").UInt(number).Char('\n');
    NumberLine(w, "Notification Key              : ", r.NotificationKey);
    TextLine(w, "Client Machine Name           : ", r.ClientMachineName);
    TimeLine(w, "Backup Time                   : ", r.BackupTime);
    UnsignedLine(w, "Source Image Key              : ", r.SourceImageKey);
    UnsignedLine(w, "Notification Type             : ", r.NotificationType);
    TextLine(w, "From Host Name                : ", r.FromHostName);
    TextLine(w, "From Host Machine ID          : ", GuidText(r.FromHostMachineId));
    UnsignedLine(w, "From Host SWU version         : ", r.FromHostSWVersion);
    NumberLine(w, "Error Code                    : ", r.ErrorCode);
    TextLine(w, "Error String                  : ", r.ErrorString);
    TimeLine(w, "Created Date Time             : ", r.CreatedDateTime);
  }
};

struct OutputSide {
  typedef DBData::SLP_OutNotifications Record;
  static constexpr const char* kHostColumn = "DestinationHostName";
  static void PrintNoRecords() {
    PrintMsg(stderr, "SmeSlp0830N", "No output notification records found");
  }
  static constexpr const char* kJson = "PrintOutputImportNotificationsJson unimplemented\n";

  static int Get(DatabaseConnection& db, RecordList<Record>& records, NotificationFilter& filter) {
    return DBData::GetSlpOutNotificationRecords(db.connection, db.view, records, filter.bindings(),
                                                filter.where(), "", "");
  }

  static void PrintShort(LineWriter& w, const Record& r) {
    LineWriter::Span s(w, kShortLineSize);
    s.Literal(CmdVersion).Char(' ').Int(r.NotificationKey).Char(' ');
    s.FieldOr(r.ClientMachineName, kNullShort).Char(' ').Int(r.BackupTime).Char(' ');
    s.UInt(r.SourceImageKey).Char(' ').UInt(r.NotificationType).Char(' ');
    s.FieldOr(r.DestinationHostName, kNullShort).Char(' ').Int(r.ErrorCode).Char(' ');
    s.FieldOr(r.ErrorString, kNullShort).Char(' ').Int(r.RetryCount).Char(' ');
    s.Int(r.LastRetryTime).Char(' ').Int(r.CreatedDateTime).Char('\n');
  }

  static void PrintUser(LineWriter& w, const Record& r, uint64_t number) {
    w.Text("Output notification record ").UInt(number).Char('\n');
    NumberLine(w, "Notification Key              : ", r.NotificationKey);
    TextLine(w, "Client Machine Name           : ", r.ClientMachineName);
    TimeLine(w, "Backup Time                   : ", r.BackupTime);
    UnsignedLine(w, "Source Image Key              : ", r.SourceImageKey);
    UnsignedLine(w, "Notification Type             : ", r.NotificationType);
    TextLine(w, "Destination Host Type         : ", r.DestinationHostName);
    NumberLine(w, "Error Code                    : ", r.ErrorCode);
    TextLine(w, "Error String                  : ", r.ErrorString);
    NumberLine(w, "Retry Count                   : ", r.RetryCount);
    TimeLine(w, "Last Retry Time               : ", r.LastRetryTime);
    TimeLine(w, "Created Date Time             : ", r.CreatedDateTime);
  }
};

// Reports a failure on standard error and in the debug log.
void ReportFailure(const char* text) { logmsg(16, text, progname.c_str()); }

template <typename Side>
void ListNotifications(outputform_e form, ImportNotificationType_e type, TimeRangeType range,
                       long time, const std::string& client, const std::string& hostname) {
  DatabaseConnection db(Corvela::Dal::USERID_SLP_ADMIN);
  if (!db.connected) {
    ReportFailure(PrintMsg(stderr, "SmeSlp0690N", "cannot create database connection manager"));
    return;
  }
  NotificationFilter filter(Side::kHostColumn, type, range, time, client, hostname);
  RecordList<typename Side::Record> records;
  int status = Side::Get(db, records, filter);
  if (status != 0 && status != Corvela::Dal::DAL_NO_DATA) {
    ReportFailure(
        PrintMsg(stderr, "SmeSlp0680N", "error fetching data from database, status = %d", status));
    return;
  }
  if (records.empty()) {
    Side::PrintNoRecords();
    return;
  }
  if (form == OUTPUT_JSON || form == OUTPUT_JSON_COMPACT) {
    fputs(Side::kJson, stderr);
    return;
  }
  if (form != OUTPUT_SHORT && form != OUTPUT_USER && form != OUTPUT_BRIEF) {
    PrintUnsupportedForm(form);
    return;
  }
  LineWriter w(stdout);
  uint64_t number = 0;
  for (const typename Side::Record& r : records) {
    switch (form) {
      case OUTPUT_SHORT:
        Side::PrintShort(w, r);
        break;
      case OUTPUT_USER:
        Side::PrintUser(w, r, ++number);
        break;
      default:
        w.Int(r.NotificationKey).Char('\n');
        break;
    }
  }
}

}  // namespace

void ListInputImportNotifications(outputform_e form, ImportNotificationType_e type,
                                  TimeRangeType range, long time, const std::string& client,
                                  const std::string& hostname) {
  ListNotifications<InputSide>(form, type, range, time, client, hostname);
}

void ListOutputImportNotifications(outputform_e form, ImportNotificationType_e type,
                                   TimeRangeType range, long time, const std::string& client,
                                   const std::string& hostname) {
  ListNotifications<OutputSide>(form, type, range, time, client, hostname);
}
