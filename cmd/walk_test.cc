// The argument walk: how values are kept, an operation named twice; then the
// cross-option rules on the walked line. Which problems are reported, in which
// order, and where the enumerated values land are shown end to end
// (tests/e2e/cmdline_parse_test.cc and the operations' tests).
#include "cmd/walk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <sstream>
#include <string>
#include <vector>

#include "cmd/cross_rules.h"
#include "cmd/parse.h"

namespace {

class WalkTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    InitCommandTables();
    setenv("TZ", "UTC", 1);
    tzset();
  }

  // Walks "cyclectl" followed by the blank-separated words of `words`, where
  // '' stands for an empty argument; what it writes to stderr is dropped.
  ArgumentWalk Walk(const std::string& words) {
    std::istringstream in(words);
    args_ = {"cyclectl"};
    for (std::string word; in >> word;) args_.push_back(word == "''" ? "" : word);
    argv_.clear();
    for (std::string& arg : args_) argv_.push_back(&arg[0]);
    testing::internal::CaptureStderr();
    ArgumentWalk walk = WalkArguments(static_cast<int>(argv_.size()), argv_.data());
    testing::internal::GetCapturedStderr();
    return walk;
  }

  // The stderr text of the cross-option rules on the walk of `words`, with
  // "ok" appended when they all hold.
  std::string Rules(const std::string& words) {
    const ArgumentWalk walk = Walk(words);
    EXPECT_FALSE(walk.errorSeen) << words;
    testing::internal::CaptureStderr();
    const bool ok = CheckCrossOptionRules(walk.line);
    return testing::internal::GetCapturedStderr() + (ok ? "ok" : "");
  }

  std::vector<std::string> args_;
  std::vector<char*> argv_;
};

// Texts are kept as text and as optional values, numbers by strtol in the
// width of their field.
TEST_F(WalkTest, ValuesAndTheOperationAreKept) {
  const ArgumentWalk walk = Walk("list -lifecycle slp1 -client '' -policy p -m other");
  CommandLine l = walk.line;
  EXPECT_FALSE(walk.errorSeen);
  EXPECT_EQ(walk.argumentCount, 5);  // an option and its value count once
  EXPECT_STREQ(l.lifecycle.get(), "slp1");
  EXPECT_STREQ(l.client.get(), "");  // given empty: present but empty
  EXPECT_TRUE(l.client.empty() && l.given(OPT_CLIENT));
  EXPECT_TRUE(l.backupId.get() == nullptr && !l.given(OPT_BACKUPID));
  EXPECT_STREQ(l.masterServer.get(), "other");

  // Of options sharing one field the last wins; -state is -frag_state.
  l = Walk(
          "list -U -json -image_state 3 -image_inactive -client a -client b -copy_incomplete "
          "-copy_state 70000 -frag_state 4 -STATE 12abc -jobid x9 -key 9000000000 "
          "-days 4294967296 -version 3 -schedtype 7 -slpindex 2147483647 -after 01/02/2024 "
          "-before 01/03/2024")
          .line;
  EXPECT_EQ(l.outputForm, OUTPUT_JSON);
  EXPECT_EQ(l.timeRange, TIME_RANGE_BEFORE);
  EXPECT_TRUE(l.given(OPT_FRAG_STATE) && l.given(OPT_AFTER) && l.given(OPT_BEFORE));
  ASSERT_NE(l.versionGiven(), nullptr);
  std::ostringstream values;
  values << *l.imageState.get() << " " << l.client.get() << " " << *l.copyState.get() << " "
         << *l.fragState.get() << " " << l.jobId << " " << l.slpIndex << " " << l.key << " "
         << l.days << " " << l.version << " " << *l.versionGiven() << " " << l.schedType << " "
         << l.time;
  EXPECT_EQ(values.str(), "-2 b 4464 12 0 2147483647 9000000000 4294967296 3 3 7 1704240000");

  // The same operation named twice, in either spelling, is no conflict. What
  // options select and the flags a run gets from the row are shown end to end
  // (tests/e2e/cmdline_usage_test.cc, cmdline_parse_test.cc, startup_test.cc).
  const ArgumentWalk twice = Walk("new_session NS new_session");
  EXPECT_FALSE(twice.errorSeen);
  EXPECT_EQ(twice.line.operation, OP_NEW_SESSION);
}

// Each message's own case is in the end-to-end tests; these are the cases
// around them: what counts as absent, the order of the required options,
// and command lines that pass.
TEST_F(WalkTest, CrossOptionRulesReportTheFirstBrokenRule) {
  // An empty text counts as absent.
  EXPECT_EQ(Rules("inactive -lifecycle ''"),
            "One of -backupid, -destination, -lifecycle must be provided\n");
  for (const char* args : {"list -backupid b1 -lifecycle ''", "list", "list -jobid 5 -mediaid m",
                           "inactive -lifecycle s -duration 4", "redo -backupid b1 -slpindex 1",
                           "report -version 0 -lifecycle s"}) {
    EXPECT_EQ(Rules(args), "ok") << args;
  }

  // update_hwm names the first of its required options that is missing.
  std::string args = "update_hwm";
  for (const char* option :
       {"-mediaserver", "-storageserver", "-stssubtype", "-mediaid", "-totalcap", "-usedcap"}) {
    EXPECT_EQ(Rules(args),
              std::string("The ") + option + " option is required for this operation\n");
    args += std::string(" ") + option + " 1";
  }
  EXPECT_EQ(Rules(args), "ok");
}

}  // namespace
