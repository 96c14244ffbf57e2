// beginOfDay in time zones with daylight-saving changes and around 1970.
#include "catalog/catalog_util.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <ctime>

namespace {

int DayOfYear(long t) {
  const time_t when = t;
  struct tm local;
  localtime_r(&when, &local);
  return local.tm_yday;
}

struct ZoneCase {
  const char* zone;
  long from;  // UTC seconds; four days are sampled from here
};

TEST(BeginOfDayTest, FirstSecondOfTheLocalDayAcrossDaylightSavingChanges) {
  const ZoneCase cases[] = {
      {"America/Sao_Paulo", 1541116800},  // 2018-11-02: midnight of 11-04 does not exist
      {"America/Sao_Paulo", 1550188800},  // 2019-02-15: 02-16 has 25 hours
      {"Europe/Berlin", 1711670400},      // 2024-03-29: 03-31 has 23 hours
      {"Europe/Berlin", 1729814400},      // 2024-10-25: 10-27 has 25 hours
      {"UTC", 1700000000},
      // Days that start before 1970, at negative seconds, are no failure.
      {"America/New_York", -2 * 86400},
      {"Asia/Tokyo", -2 * 86400},
  };
  testing::internal::CaptureStderr();
  for (const ZoneCase& c : cases) {
    setenv("TZ", c.zone, 1);
    tzset();
    for (long t = c.from; t < c.from + 4 * 86400; t += 599) {
      const long start = beginOfDay(t);
      ASSERT_LE(start, t) << c.zone << " " << t;
      EXPECT_EQ(DayOfYear(start), DayOfYear(t)) << c.zone << " " << t;
      EXPECT_NE(DayOfYear(start - 1), DayOfYear(t)) << c.zone << " " << t;
      // The day's last second belongs to it too (days last 23 to 25 hours).
      const long nextStart = beginOfDay(start + 26 * 3600);
      EXPECT_EQ(beginOfDay(nextStart - 1), start) << c.zone << " " << t;
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  unsetenv("TZ");
  tzset();
}

}  // namespace
