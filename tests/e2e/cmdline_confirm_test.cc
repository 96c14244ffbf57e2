// Confirmation prompts of the real binary, answered on standard input.
// Only the answers that stop an operation are followed to the end of the
// run: what happens after a yes is the business of the operation.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"

namespace {

using e2e::kDestinationPrompt;
using e2e::kExpiredPrompt;
using e2e::kWorkGroupPrompt;

const char kNoEntries[] = "No entries removed\n";
const char kNoDests[] = "No destinations cancelled\n";

TEST(CmdlineConfirmTest, DeclinedOperationsEndWithStatusZeroOthersGoOn) {
  e2e::Root root;
  const std::vector<std::string> destination = {"cancel", "-destination", "d"};
  const struct {
    std::vector<std::string> args;
    const char* input;
    const char* prompt;   // "" for none
    const char* refusal;  // what follows the prompt when declined; nullptr for a run that goes on
  } cases[] = {
      {{"dropwg"}, "n\n", kWorkGroupPrompt, kNoEntries},
      {{"dropwg"}, "", kWorkGroupPrompt, kNoEntries},  // end of input
      {{"dropwg"}, "  x y\n", kWorkGroupPrompt, kNoEntries},
      {{"remove_exp"}, "no\n", kExpiredPrompt, kNoEntries},
      {{"remove_exp"}, "", kExpiredPrompt, kNoEntries},
      {{"cancel", "-lifecycle", "s", "-destination", "d"}, "Yes\n", kDestinationPrompt, kNoDests},
      {destination, "yes-please\n", kDestinationPrompt, kNoDests},
      {destination, "", kDestinationPrompt, kNoDests},
      // A yes, -nowarn, or a cancel without a destination goes on to the operation.
      {{"dropwg"}, "\n yes\n", kWorkGroupPrompt, nullptr},
      {{"dropwg"}, "Y\n", kWorkGroupPrompt, nullptr},
      {{"remove_exp"}, "Y", kExpiredPrompt, nullptr},  // "y" in remove_exp_test.cc
      {destination, "YES\n", kDestinationPrompt, nullptr},
      {{"dropwg", "-nowarn"}, "n\n", "", nullptr},
      {{"remove_exp", "-NOWARN"}, "n\n", "", nullptr},
      {{"cancel", "-destination", "d", "-nowarn"}, "n\n", "", nullptr},
      {{"cancel", "-lifecycle", "s"}, "n\n", "", nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.args) + " answered " + testing::PrintToString(c.input));
    const e2e::Result r = root.Run(c.args, c.input);
    if (c.refusal) {
      EXPECT_EQ(r, (e2e::Result{std::string(c.prompt) + c.refusal, "", 0}));
      continue;
    }
    // The prompt is all the front end writes; no refusal follows it.
    EXPECT_EQ(r.out.substr(0, std::string(c.prompt).size()), c.prompt);
    EXPECT_EQ(r.out.find("(y/n)") != std::string::npos, *c.prompt != '\0');
    EXPECT_EQ(r.out.find(kNoEntries), std::string::npos);
    EXPECT_EQ(r.out.find(kNoDests), std::string::npos);
  }
}

}  // namespace
