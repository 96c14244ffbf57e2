// Day start in local time and the empty-text marker of the short forms.
#include "catalog/catalog_util.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

long beginOfDay(long t) {
  const time_t when = static_cast<time_t>(t);
  struct tm local;
  if (localtime_r(&when, &local) == nullptr) {
    fprintf(stderr, "localtime_r(%ld) failed, %s\n", t, strerror(errno));
    return -1;
  }
  const int dayOfYear = local.tm_yday;
  local.tm_hour = 0;
  local.tm_min = 0;
  local.tm_sec = 0;
  local.tm_isdst = -1;
  // A day before 1970 starts at a negative second: only -1 with errno set
  // is a failure.
  errno = 0;
  time_t start = mktime(&local);
  if (start == static_cast<time_t>(-1) && errno != 0) {
    fprintf(stderr, "mktime failed for the day of %ld, %s\n", t, strerror(errno));
    return -1;
  }
  struct tm check;
  if (localtime_r(&start, &check) == nullptr) {
    fprintf(stderr, "localtime_r(%ld) failed, %s\n", static_cast<long>(start), strerror(errno));
    return -1;
  }
  // A midnight inside a daylight-saving gap converts to the last hour of the
  // day before; the day's first existing second is one hour later.
  if (dayOfYear > check.tm_yday) start += 3600;
  return static_cast<long>(start);
}

const char* StrOrNull(const char* text) { return (text && *text) ? text : "*NULL*"; }
