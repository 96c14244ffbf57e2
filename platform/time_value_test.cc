// The time value keeps its microseconds below one second, with the sign of
// its seconds, and orders by seconds first.
#include "platform/time_value.h"

#include <utility>

#include "gtest/gtest.h"

namespace {

TEST(TimeValueTest, CarriesWholeSecondsOutOfTheMicrosecondsAndOrders) {
  const struct {
    time_t sec;
    suseconds_t usec;
    time_t wantSec;
    suseconds_t wantUsec;
  } cases[] = {
      {12, 999999, 12, 999999}, {12, 1000000, 13, 0}, {0, 2500000, 2, 500000},
      {1, -1, 0, 999999},       {-1, 1, 0, -999999},  {0, -1500000, -1, -500000},
      {-2, -1000001, -3, -1},   {3600, 0, 3600, 0},
  };
  for (const auto& c : cases) {
    ACE_Time_Value value(c.sec, c.usec);
    EXPECT_EQ(std::make_pair(value.sec(), value.usec()), std::make_pair(c.wantSec, c.wantUsec))
        << c.sec << " " << c.usec;
  }

  EXPECT_TRUE(ACE_Time_Value::zero == ACE_Time_Value());
  EXPECT_TRUE(ACE_Time_Value(0, 1) > ACE_Time_Value::zero);
  EXPECT_TRUE(ACE_Time_Value(0, -1) < ACE_Time_Value::zero);
  EXPECT_TRUE(ACE_Time_Value(1, 0) > ACE_Time_Value(0, 999999));
  EXPECT_TRUE(ACE_Time_Value(10) <= ACE_Time_Value(10));
  EXPECT_TRUE(ACE_Time_Value(10) >= ACE_Time_Value(10));
  EXPECT_TRUE(ACE_Time_Value(10) != ACE_Time_Value(10, 1));
}

}  // namespace
