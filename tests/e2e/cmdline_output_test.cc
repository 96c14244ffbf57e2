// A run whose standard output cannot be written: a full disk is reported
// once and fails the run, whether it ended early (usage, testhook) or ran its
// operation; a reader that stops early ends the run quietly with the status
// of a process killed by SIGPIPE.
#include <gtest/gtest.h>

#include <string>

#include "tests/e2e/harness.h"

namespace {

// Runs cyclectl in `root` with `args` and standard output on /dev/full.
e2e::Result RunIntoFullDisk(const e2e::Root& root, const std::string& args) {
  std::string command =
      std::string("exec '") + STASHWELL_BIN_DIR + "/cyclectl' " + args + " >/dev/full";
  return e2e::RunProgram("/bin/sh", {"sh", "-c", command},
                         {"STASHWELL_ROOT=" + root.path(), "TZ=UTC", "LC_ALL=C"}, "", false, 60);
}

TEST(CmdlineOutputTest, FullDiskFailsTheRun) {
  e2e::RootOptions options;
  options.demoImages = 2000;  // far more output than the buffers hold
  e2e::Root root(options);
  for (const char* args : {"remove_all", "list -help", "-testhook"}) {
    e2e::Result r = RunIntoFullDisk(root, args);
    EXPECT_EQ(r.err, "cyclectl: cannot write standard output: No space left on device\n") << args;
    EXPECT_EQ(r.status, 74) << args;
  }
  // A write that failed while the listing ran leaves no reason behind.
  e2e::Result r = RunIntoFullDisk(root, "list");
  EXPECT_EQ(r.err, "cyclectl: cannot write standard output\n");
  EXPECT_EQ(r.status, 74);
}

TEST(CmdlineOutputTest, ReaderThatStopsEarlyEndsTheRunQuietly) {
  e2e::RootOptions options;
  options.demoImages = 2000;
  e2e::Root root(options);
  e2e::RunOptions head;
  head.stdoutLimit = 100;
  for (const char* form : {"-l", "-U"}) {
    e2e::Result r = root.Run({"list", form}, "", head);
    EXPECT_EQ(r.out.size(), 100u) << form;
    EXPECT_EQ(r.err, "") << form;
    EXPECT_EQ(r.status, 141) << form;
  }
  head.stdoutLimit = 10;
  e2e::Result r = root.Run({"list", "-help"}, "", head);
  EXPECT_EQ(r.err, "");
  EXPECT_EQ(r.status, 0) << "a short text is written before the reader goes";
}

}  // namespace
