// The argument walker's contract: where the walk starts and ends, and what
// counts as an option or a parameter. How option names are matched, whole
// and without regard to case, is shown end to end
// (tests/e2e/cmdline_parse_test.cc).
#include "platform/arg_shifter.h"

#include <string>
#include <vector>

#include "gtest/gtest.h"

namespace {

TEST(ArgShifterTest, WalksEveryArgumentOnceAndTellsOptionsFromParameters) {
  char a0[] = "list", a1[] = "-client", a2[] = "-", a3[] = "";
  std::vector<char*> args = {a0, a1, a2, a3};
  int count = static_cast<int>(args.size());
  ACE_Arg_Shifter_T<char> shifter(count, args.data());
  EXPECT_STREQ("list", shifter.get_current());
  std::string kinds;  // o option, p parameter
  for (size_t i = 0; i < args.size(); ++i) {
    kinds += shifter.is_option_next() ? "o" : "";
    kinds += shifter.is_parameter_next() ? "p " : " ";
    ASSERT_TRUE(shifter.consume_arg());
  }
  EXPECT_EQ(kinds, "p o o p ");  // a lone '-' is an option, an empty argument a parameter

  EXPECT_FALSE(shifter.is_anything_left() || shifter.is_option_next() ||
               shifter.is_parameter_next() || shifter.consume_arg());
  EXPECT_EQ(nullptr, shifter.get_current());
  EXPECT_EQ(-1, shifter.cur_arg_strncasecmp("-client"));

  int none = 0;
  ACE_Arg_Shifter_T<char> empty(none, nullptr);
  EXPECT_FALSE(empty.is_anything_left() || empty.consume_arg());
}

}  // namespace
