// A run whose standard output cannot be written: a full disk is reported
// once and fails the run, whether it ended early (usage, testhook) or ran its
// operation; a reader that stops early ends the run quietly with the status
// of a process killed by SIGPIPE.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"

namespace {

const char kNoSpace[] = "cyclectl: cannot write standard output: No space left on device\n";

TEST(CmdlineOutputTest, FullDiskFailsTheRunAnEarlyReaderEndsItQuietly) {
  e2e::RootOptions options;
  options.demoImages = 2000;  // far more output than the buffers hold
  e2e::Root root(options);
  e2e::RunOptions full;
  full.stdoutFile = "/dev/full";
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{"remove_all"}, {"list", "-help"}, {"-testhook"}}) {
    EXPECT_EQ(root.Run(args, "", full), (e2e::Result{"", kNoSpace, 74})) << args[0];
  }
  // Writes fail while the listing runs; the loss is still reported once (the
  // reason only when the last flush failed too: stdio keeps no errno).
  e2e::Result r = root.Run({"list"}, "", full);
  if (r.err == kNoSpace) r.err = "cyclectl: cannot write standard output\n";
  EXPECT_EQ(r, (e2e::Result{"", "cyclectl: cannot write standard output\n", 74}));

  // A reader that stops early.
  e2e::RunOptions head;
  head.stdoutLimit = 100;
  for (const char* form : {"-l", "-U"}) {
    const std::string whole = root.Run({"list", form}).out;
    EXPECT_EQ(root.Run({"list", form}, "", head), (e2e::Result{whole.substr(0, 100), "", 141}))
        << form;
  }
  head.stdoutLimit = 10;
  // A short text is all written before the reader goes.
  std::string start = e2e::Golden("synopsis/list.txt").substr(0, 10);
  EXPECT_EQ(root.Run({"list", "-help"}, "", head), (e2e::Result{start, "", 0}));
}

}  // namespace
