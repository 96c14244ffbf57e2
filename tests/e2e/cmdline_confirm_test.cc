// Confirmation prompts of the real binary, answered on standard input.
// Only the answers that stop an operation are followed to the end of the
// run: what happens after a yes is the business of the operation.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"

namespace {

const char kDestinationPrompt[] =
    "This operation will also cancel other destinations if they are using the specified "
    "destination as source. Do you wish to proceed? (y/n): ";
const char kWorkGroupPrompt[] =
    "This operation will remove work group information in the database.  This will increase "
    "the time taken for SLP processing and may impact ongoing SLP operations.  Do you wish to "
    "proceed ? (y/n):";
const char kExpiredPrompt[] =
    "This operation will remove all expired image fragment entries in the database.  Any files "
    "containing backup images corresponding to these entries must be deleted manually.  Do you "
    "wish to proceed? (y/n) >";

TEST(CmdlineConfirmTest, DeclinedOperationsEndWithStatusZero) {
  e2e::Root root;
  const std::string noEntries = "No entries removed\n";
  const std::string noDestinations = "No destinations cancelled\n";
  const struct {
    std::vector<std::string> args;
    std::string input;
    std::string out;
  } cases[] = {
      {{"dropwg"}, "n\n", kWorkGroupPrompt + noEntries},
      {{"dropwg"}, "", kWorkGroupPrompt + noEntries},  // end of input
      {{"dropwg"}, "  x y\n", kWorkGroupPrompt + noEntries},
      {{"remove_exp"}, "no\n", kExpiredPrompt + noEntries},
      {{"remove_exp"}, "", kExpiredPrompt + noEntries},
      {{"cancel", "-lifecycle", "s", "-destination", "d"},
       "Yes\n",
       kDestinationPrompt + noDestinations},
      {{"cancel", "-destination", "d"}, "yes-please\n", kDestinationPrompt + noDestinations},
      {{"cancel", "-destination", "d"}, "", kDestinationPrompt + noDestinations},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root.Run(c.args, c.input), (e2e::Result{c.out, "", 0}))
        << c.args[0] << " [" << c.input << "]";
  }
}

// A yes, -nowarn, or a cancel without a destination goes on to the operation.
TEST(CmdlineConfirmTest, AcceptedOrSkippedPromptsGoOnToTheOperation) {
  e2e::Root root;
  const struct {
    std::vector<std::string> args;
    std::string input;
    std::string prompt;  // "" for none
  } cases[] = {
      {{"dropwg"}, "\n yes\n", kWorkGroupPrompt},
      {{"dropwg"}, "Y\n", kWorkGroupPrompt},
      {{"remove_exp"}, "Y", kExpiredPrompt},  // "y" in remove_exp_test.cc
      {{"cancel", "-destination", "d"}, "YES\n", kDestinationPrompt},
      {{"dropwg", "-nowarn"}, "n\n", ""},
      {{"remove_exp", "-NOWARN"}, "n\n", ""},
      {{"cancel", "-destination", "d", "-nowarn"}, "n\n", ""},
      {{"cancel", "-lifecycle", "s"}, "n\n", ""},
  };
  for (const auto& c : cases) {
    const std::string out = root.Run(c.args, c.input).out;
    // The prompt is all the front end writes; no refusal follows it.
    EXPECT_EQ(out.substr(0, c.prompt.size()), c.prompt) << c.args.back();
    if (c.prompt.empty()) {
      EXPECT_EQ(out.find("(y/n)"), std::string::npos) << c.args.back();
    }
    EXPECT_EQ(out.find("No entries removed"), std::string::npos) << c.args.back();
    EXPECT_EQ(out.find("No destinations cancelled"), std::string::npos) << c.args.back();
  }
}

}  // namespace
