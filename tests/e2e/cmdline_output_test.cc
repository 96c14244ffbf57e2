// A run whose standard output cannot be written says so and fails, whether
// it ended early (usage, testhook) or ran its operation.
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/harness.h"

namespace {

TEST(CmdlineOutputTest, LostStandardOutputFailsTheRun) {
  e2e::Root root;
  for (const char* args : {"remove_all", "list -help", "-testhook"}) {
    std::string command =
        std::string("exec '") + STASHWELL_BIN_DIR + "/cyclectl' " + args + " >/dev/full";
    e2e::Result r =
        e2e::RunProgram("/bin/sh", {"sh", "-c", command},
                        {"STASHWELL_ROOT=" + root.path(), "TZ=UTC", "LC_ALL=C"}, "", false, 60);
    EXPECT_EQ(r.err, "cyclectl: cannot write standard output: No space left on device\n") << args;
    EXPECT_EQ(r.status, 74) << args;
  }
}

}  // namespace
