// Turns catalog values into text for every report: the names of the SLP
// enumerations (image state, copy state, copy type, expiration type), the SLP
// operations mask, time stamps and durations, and the split of a backup id
// into client name and backup time. The functions keep no state; the name
// tables are read-only and their order is the enumerations' wire values, so
// printers may also index them directly after a range check.
#ifndef UTIL_FORMAT_H_
#define UTIL_FORMAT_H_

#include <cstdint>
#include <string>

#include "platform/time_value.h"

namespace Orvantic {
namespace Stashwell {

// Names of the SLP state of an image (valid 0..10), of one image copy (valid
// 0..15), of a copy type (valid 0..9) and of a copy's expiration type (valid
// 0..5).
extern const char* const emmcommon_ss_image_state_str[11];
extern const char* const emmcommon_ss_image_copy_state_str[16];
extern const char* const dbss_use4_type_str[10];
extern const char* const dbss_ret_type_str[6];

// The table entry for `value`, or "INVALID" for a value outside the table
// (every negative value too). The text is a constant, never freed.
const char* FormatImageState(int value);
const char* FormatCopyState(int value);
const char* FormatCopyType(int value);
const char* FormatExpirationType(int value);

// "[<mask>] = " then, for bit 9 down to bit 0, "[<copy type name>(1|0)] ".
std::string FormatSlpOperationsMask(uint32_t mask);

// Splits "<client>_<seconds>" at the last underscore. Returns 0, or 20 for a
// text that is not a backup id (no underscore, nothing after it: outputs
// untouched; nothing before it: both outputs written). The time part is read
// with strtoll rules, so a non-numeric time gives 0 and still succeeds.
int ParseBackupId(const std::string& backupId, int64_t& backupTime, std::string& clientName);

// A value below 31,536,000 seconds is a duration ("42 secs", "42.0042 secs"
// with microseconds from `timeValue`, "1:01:01", "3 days 0:00:00"); anything
// else is local time "YYYY/MM/DD HH:MM:SS" (date only: "YYYY/MM/DD"), or
// "???" when it cannot be converted.
std::string FormatTimeMS(int64_t seconds, ACE_Time_Value timeValue, bool dateOnly);
std::string FormatTime(int64_t seconds, bool dateOnly);
std::string FormatTime(const ACE_Time_Value& timeValue, bool dateOnly);

}  // namespace Stashwell
}  // namespace Orvantic

#endif  // UTIL_FORMAT_H_
