// The reactivation time: what each duration and date text gives, and the
// bounds of the number of hours.
#include "remote/image_copy_processing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

TEST(ReactivationTime, DurationDateAndNeither) {
  uint64_t t = 0;
  EXPECT_EQ(ReactivationTime("", "", 1000, &t), 0);
  EXPECT_EQ(t, 2147483647u);
  EXPECT_EQ(ReactivationTime("0", "", 1000, &t), 0);
  EXPECT_EQ(t, 1000u);
  // Zero from now on is still "none".
  EXPECT_EQ(ReactivationTime("0", "", 0, &t), 0);
  EXPECT_EQ(t, 2147483647u);
  // Leading blanks; reading stops at the first non-digit.
  EXPECT_EQ(ReactivationTime("  12hours", "", 1000, &t), 0);
  EXPECT_EQ(t, 1000u + 12 * 3600);
  EXPECT_EQ(ReactivationTime("", "01/01/1970 01:00:00", 1000, &t), 0);
  EXPECT_EQ(t, 3600u);
}

TEST(ReactivationTime, HoursUpToTheLargestThatFits) {
  const uint64_t max = std::numeric_limits<uint64_t>::max();
  const int64_t now = 1700000000;
  const uint64_t fits = (max - now) / 3600;
  uint64_t t = 0;
  EXPECT_EQ(ReactivationTime(std::to_string(fits), "", now, &t), 0);
  EXPECT_EQ(t, now + fits * 3600);
  t = 7;
  for (const std::string& bad : {std::to_string(fits + 1), std::string("18446744073709551616"),
                                 std::string(" "), std::string("-1"),
                                 std::string("x1")}) {
    EXPECT_EQ(ReactivationTime(bad, "", now, &t), 20) << bad;
  }
  EXPECT_EQ(t, 7u) << "a refused duration leaves the result alone";
}

}  // namespace
