// The argument walker's contract: where the walk starts and ends, and what
// counts as an option or a parameter. How option names are matched, whole
// and without regard to case, is shown end to end
// (tests/e2e/cmdline_parse_test.cc).
#include "platform/arg_shifter.h"

#include <vector>

#include "gtest/gtest.h"

namespace {

TEST(ArgShifterTest, WalksEveryArgumentOnceAndTellsOptionsFromParameters) {
  char a0[] = "list", a1[] = "-client", a2[] = "-", a3[] = "";
  std::vector<char*> args = {a0, a1, a2, a3};
  int count = static_cast<int>(args.size());
  ACE_Arg_Shifter_T<char> shifter(count, args.data());

  EXPECT_TRUE(shifter.is_parameter_next());
  EXPECT_FALSE(shifter.is_option_next());
  EXPECT_STREQ("list", shifter.get_current());
  ASSERT_TRUE(shifter.consume_arg());
  EXPECT_TRUE(shifter.is_option_next());
  ASSERT_TRUE(shifter.consume_arg());
  EXPECT_TRUE(shifter.is_option_next());  // a lone '-' is an option
  ASSERT_TRUE(shifter.consume_arg());
  EXPECT_TRUE(shifter.is_parameter_next());  // an empty argument is a parameter
  ASSERT_TRUE(shifter.consume_arg());

  EXPECT_FALSE(shifter.is_anything_left());
  EXPECT_FALSE(shifter.is_option_next());
  EXPECT_FALSE(shifter.is_parameter_next());
  EXPECT_EQ(nullptr, shifter.get_current());
  EXPECT_EQ(-1, shifter.cur_arg_strncasecmp("-client"));
  EXPECT_FALSE(shifter.consume_arg());
}

TEST(ArgShifterTest, NothingToWalk) {
  int count = 0;
  ACE_Arg_Shifter_T<char> shifter(count, nullptr);
  EXPECT_FALSE(shifter.is_anything_left());
  EXPECT_FALSE(shifter.consume_arg());
}

}  // namespace
