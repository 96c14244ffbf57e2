// beginOfDay in time zones with daylight-saving changes.
#include "catalog/catalog_util.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <ctime>
#include <string>

namespace {

// Sets TZ for the life of the object.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const char* zone) {
    const char* old = getenv("TZ");
    hadOld_ = old != nullptr;
    if (hadOld_) old_ = old;
    setenv("TZ", zone, 1);
    tzset();
  }
  ~ScopedTimeZone() {
    if (hadOld_) {
      setenv("TZ", old_.c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

 private:
  bool hadOld_;
  std::string old_;
};

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
  };
  for (const ZoneCase& c : cases) {
    ScopedTimeZone zone(c.zone);
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
}

TEST(BeginOfDayTest, MidnightInsideTheGap) {
  ScopedTimeZone zone("America/Sao_Paulo");
  // 2018-11-04 12:00 -02; the day starts at 01:00 -02 (03:00 UTC).
  EXPECT_EQ(beginOfDay(1541340000), 1541300400);
  // 2018-11-03 23:59:59 -03 belongs to the day before.
  EXPECT_EQ(beginOfDay(1541300399), 1541300399 - 86399);
}

}  // namespace
