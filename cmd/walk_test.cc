// The argument walk: how values are kept. Which problems are reported, in
// which order, and where the enumerated values land are shown end to end
// (tests/e2e/cmdline_parse_test.cc and the operations' tests).
#include "cmd/walk.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "cmd/parse.h"

namespace {

class WalkTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    InitCommandTables();
    setenv("TZ", "UTC", 1);
    tzset();
  }

  // Walks "cyclectl" followed by `args`; the stderr text lands in err_.
  ArgumentWalk Walk(std::vector<std::string> args) {
    args_ = std::move(args);
    args_.insert(args_.begin(), "cyclectl");
    argv_.clear();
    for (std::string& arg : args_) argv_.push_back(&arg[0]);
    testing::internal::CaptureStderr();
    ArgumentWalk walk = WalkArguments(static_cast<int>(argv_.size()), argv_.data());
    err_ = testing::internal::GetCapturedStderr();
    return walk;
  }

  std::vector<std::string> args_;
  std::vector<char*> argv_;
  std::string err_;
};

TEST_F(WalkTest, TextsAreKeptAsTextAndAsOptionalValues) {
  ArgumentWalk walk =
      Walk({"list", "-lifecycle", "slp1", "-client", "", "-policy", "p", "-m", "other"});
  const CommandLine& l = walk.line;
  EXPECT_FALSE(walk.errorSeen);
  EXPECT_STREQ(l.lifecycle.get(), "slp1");
  EXPECT_STREQ(l.client.get(), "");  // given empty: present but empty
  EXPECT_TRUE(l.client.empty());
  EXPECT_EQ(l.backupId.get(), nullptr);
  EXPECT_STREQ(l.masterServer.get(), "other");
  EXPECT_TRUE(l.given(OPT_CLIENT));
  EXPECT_FALSE(l.given(OPT_BACKUPID));
  EXPECT_EQ(walk.argumentCount, 5);  // an option and its value count once
}

TEST_F(WalkTest, NumbersFollowStrtolIntoTheirFieldWidths) {
  const CommandLine l = Walk({"list", "-copy_state", "70000", "-frag_state", "12abc", "-jobid",
                              "x9", "-key", "9000000000", "-days", "4294967296", "-version", "3",
                              "-schedtype", "7", "-slpindex", "2147483647"})
                            .line;
  EXPECT_EQ(*l.copyState.get(), static_cast<short>(70000));
  EXPECT_EQ(*l.fragState.get(), 12);
  EXPECT_EQ(l.jobId, 0);
  EXPECT_EQ(l.slpIndex, 2147483647);
  EXPECT_EQ(l.key, 9000000000LL);
  EXPECT_EQ(l.days, 4294967296L);
  EXPECT_EQ(l.version, 3);
  ASSERT_NE(l.versionGiven(), nullptr);
  EXPECT_EQ(*l.versionGiven(), 3);
  EXPECT_EQ(l.schedType, 7);
}

TEST_F(WalkTest, SharedValuesAndLastOccurrenceWin) {
  CommandLine l = Walk({"list", "-U", "-json", "-image_state", "3", "-image_inactive", "-client",
                        "a", "-client", "b"})
                      .line;
  EXPECT_EQ(l.outputForm, OUTPUT_JSON);
  EXPECT_EQ(*l.imageState.get(), -2);
  EXPECT_STREQ(l.client.get(), "b");

  l = Walk({"list", "-copy_incomplete", "-STATE", "4"}).line;
  EXPECT_EQ(*l.copyState.get(), -1);
  EXPECT_EQ(*l.fragState.get(), 4);
  EXPECT_TRUE(l.given(OPT_FRAG_STATE));  // -state is -frag_state

  l = Walk({"list", "-after", "01/02/2024", "-before", "01/03/2024 10:00:00"}).line;
  EXPECT_EQ(l.timeRange, TIME_RANGE_BEFORE);
  EXPECT_EQ(l.time, 1704276000L);
  EXPECT_TRUE(l.given(OPT_AFTER));
  EXPECT_TRUE(l.given(OPT_BEFORE));
}

TEST_F(WalkTest, OptionsSelectTheOperationOnlyWhenNoneIsSet) {
  struct {
    std::vector<std::string> args;
    operation_e op;
    bool admin;
    bool catalog;
  } cases[] = {
      {{"-test_import_frags", "f"}, OP_ADD_IMPORT_FRAGS, true, false},
      {{"-test_import_frags"}, OP_ADD_IMPORT_FRAGS, true, false},  // before the value
      {{"-list_import_frags"}, OP_LIST_IMPORT_FRAGS, false, true},
      {{"-testhook"}, OP_TESTHOOK, true, false},
      {{"-h"}, OP_HELP, false, false},
      {{"list", "-testhook", "-help"}, OP_LIST, false, true},
      {{"nosuch", "-testhook"}, OP_TESTHOOK, true, false},
  };
  for (const auto& c : cases) {
    const CommandLine l = Walk(c.args).line;
    EXPECT_EQ(l.operation, c.op) << c.args[0];
    EXPECT_EQ(l.requiresAdmin, c.admin) << c.args[0];
    EXPECT_EQ(l.requiresCatalog, c.catalog) << c.args[0];
  }
  EXPECT_TRUE(Walk({"list", "-HELP"}).line.helpRequested);
}

TEST_F(WalkTest, UnknownWordClearsTheOperation) {
  ArgumentWalk walk = Walk({"list", "bogus"});
  EXPECT_EQ(walk.line.operation, OP_NONE);
  EXPECT_FALSE(walk.line.requiresCatalog);
  walk = Walk({"new_session", "NS", "new_session"});
  EXPECT_FALSE(walk.errorSeen);
  EXPECT_EQ(walk.line.operation, OP_NEW_SESSION);
  EXPECT_EQ(err_, "");
}

}  // namespace
