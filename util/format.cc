// Name tables of the SLP enumerations and the text forms of catalog values
// shared by the reports. Durations and dates are written field by field with
// zero padding that behaves like a right-adjusted, '0'-filled stream field,
// so a negative value keeps its sign in front of the padding digits.
#include "util/format.h"

#include <cstdlib>
#include <cstring>
#include <ctime>

#include "platform/swlogger.h"
#include "util/name_table.h"

namespace Orvantic {
namespace Stashwell {

const char* const emmcommon_ss_image_state_str[11] = {
    "NOT_MANAGED",
    "NOT_STARTED",
    "IN_PROCESS",
    "COMPLETE",
    "DELETED",
    "UNKNOWN",
    "UNKNOWN",
    "UNKNOWN",
    "UNKNOWN",
    "NOT_STARTED|INACTIVE",
    "IN_PROCESS|INACTIVE",
};

const char* const emmcommon_ss_image_copy_state_str[16] = {
    "NOT_MANAGED",
    "NOT_STARTED",
    "IN_PROCESS",
    "JOBCOMPLETE",
    "SIBLING_IN_PROCESS",
    "COPYCOMPLETE",
    "CANCELLED",
    "CANT_PROCESS",
    "DEFERRED",
    "NOT_STARTED|INACTIVE",
    "IN_PROCESS|INACTIVE",
    "DEPENDEES_IN_PROCESS",
    "IMPORTS_DONE",
    "REPLICATION_INCOMPLETE",
    "IMPORT_PENDING",
    "IMPORT_FAILED",
};

const char* const dbss_use4_type_str[10] = {
    "BACKUP",
    "DUPLICATE",
    "SNAPSHOT",
    "REPLICATE_TO_REMOTE_MASTER",
    "IMPORT",
    "BACKUP_FROM_SNAPSHOT",
    "INDEX_FROM_SNAPSHOT",
    "REPLICATION",
    "CLOUD_SNAPSHOT_REPLICATION",
    "CLOUD_SNAPSHOT_INDEX",
};

const char* const dbss_ret_type_str[6] = {
    "FIXED",
    "CAPACITY_MANAGED",
    "EXPIRE_AFTER_COPY",
    "REMOTE_EXPIRATION_DATE",
    "SNAPSHOT_ROTATION",
    "MIRROR",
};

namespace {

template <size_t N>
const char* Lookup(const char* const (&table)[N], int value) {
  const char* name = NameTable(table).Find(value);
  return name != nullptr ? name : "INVALID";
}

// Appends `value` in decimal, left-padded with '0' to `width` characters.
void AppendPadded(std::string& out, long long value, size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) out.append(width - digits.size(), '0');
  out += digits;
}

const int64_t kSecondsPerYear = 31536000;  // 365 days: durations lie below

// Writes `text`, followed by "(<this file>:<line>)", to the default unified
// logger when there is one and its verbosity reaches `level`.
void LogParse(int level, const std::string& text, int line) {
  SWLogger* logger = SWLogger::s_default;
  if (logger == nullptr || logger->verbose < level) return;
  const char* file = strrchr(__FILE__, '/');
  std::string full =
      text + "(" + (file != nullptr ? file + 1 : __FILE__) + ":" + std::to_string(line) + ")";
  logger->logDebug("ParseBackupId", level, full.c_str());
}

}  // namespace

const char* FormatImageState(int value) { return Lookup(emmcommon_ss_image_state_str, value); }
const char* FormatCopyState(int value) { return Lookup(emmcommon_ss_image_copy_state_str, value); }
const char* FormatCopyType(int value) { return Lookup(dbss_use4_type_str, value); }
const char* FormatExpirationType(int value) { return Lookup(dbss_ret_type_str, value); }

std::string FormatSlpOperationsMask(uint32_t mask) {
  std::string text = "[" + std::to_string(mask) + "] = ";
  for (int bit = 9; bit >= 0; --bit) {
    text += '[';
    text += dbss_use4_type_str[bit];
    text += (mask & (1u << bit)) ? "(1)] " : "(0)] ";
  }
  return text;
}

int ParseBackupId(const std::string& backupId, int64_t& backupTime, std::string& clientName) {
  LogParse(4, "parsing backupid = " + backupId, __LINE__);
  size_t underscore = backupId.rfind('_');
  if (underscore == std::string::npos) {
    LogParse(1, backupId + "is not a backupid. No '_' present.", __LINE__);
    return 20;
  }
  if (underscore + 1 == backupId.size()) {
    LogParse(1, backupId + "is not a backupid. Nothing after '_'", __LINE__);
    return 20;
  }
  backupTime = strtoll(backupId.c_str() + underscore + 1, nullptr, 10);
  clientName.assign(backupId, 0, underscore);
  if (clientName.empty()) {
    LogParse(1, backupId + "is not a backupid. nothing before '_'", __LINE__);
    return 20;
  }
  return 0;
}

std::string FormatTimeMS(int64_t seconds, ACE_Time_Value timeValue, bool dateOnly) {
  std::string text;
  if (seconds < kSecondsPerYear) {
    int64_t days = seconds / 86400;
    int64_t rest = seconds % 86400;
    int64_t hours = rest / 3600;
    rest %= 3600;
    int64_t minutes = rest / 60;
    int64_t secs = rest % 60;
    if (hours == 0 && days == 0 && minutes == 0) {
      text = std::to_string(secs);
      if (timeValue.usec() != 0) {
        text += '.';
        AppendPadded(text, timeValue.usec(), 4);
      }
      text += " secs";
      return text;
    }
    if (days != 0) text = std::to_string(days) + " days ";
    text += std::to_string(hours);
    text += ':';
    AppendPadded(text, minutes, 2);
    text += ':';
    AppendPadded(text, secs, 2);
    return text;
  }

  time_t t = static_cast<time_t>(seconds);
  struct tm local;
  if (localtime_r(&t, &local) == nullptr) return "???";
  AppendPadded(text, local.tm_year + 1900LL, 4);
  text += '/';
  AppendPadded(text, local.tm_mon + 1, 2);
  text += '/';
  AppendPadded(text, local.tm_mday, 2);
  if (!dateOnly) {
    text += ' ';
    AppendPadded(text, local.tm_hour, 2);
    text += ':';
    AppendPadded(text, local.tm_min, 2);
    text += ':';
    AppendPadded(text, local.tm_sec, 2);
  }
  return text;
}

std::string FormatTime(int64_t seconds, bool dateOnly) {
  return FormatTimeMS(seconds, ACE_Time_Value::zero, dateOnly);
}

std::string FormatTime(const ACE_Time_Value& timeValue, bool dateOnly) {
  return FormatTimeMS(timeValue.sec(), timeValue, dateOnly);
}

}  // namespace Stashwell
}  // namespace Orvantic
