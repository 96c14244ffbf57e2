// The reactivation time at the bound of the number of hours, which needs a
// fixed current time; what each duration and date text sends is shown end
// to end (tests/e2e/image_copy_processing_test.cc).
#include "remote/image_copy_processing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

TEST(ReactivationTime, HoursUpToTheLargestThatFits) {
  const uint64_t max = std::numeric_limits<uint64_t>::max();
  const int64_t now = 1700000000;
  const uint64_t fits = (max - now) / 3600;
  uint64_t t = 0;
  EXPECT_EQ(ReactivationTime(std::to_string(fits), "", now, &t), 0);
  EXPECT_EQ(t, now + fits * 3600);
  t = 7;
  for (const std::string& bad : {std::to_string(fits + 1), std::string("18446744073709551616"),
                                 std::string(" "), std::string("-1"), std::string("x1")}) {
    EXPECT_EQ(ReactivationTime(bad, "", now, &t), 20) << bad;
  }
  EXPECT_EQ(t, 7u) << "a refused duration leaves the result alone";
}

}  // namespace
