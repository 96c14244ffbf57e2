// The dispatcher's default row, which no operation word reaches. What each
// operation's row hands its handler is shown end to end.
#include "cmd/dispatch.h"

#include <gtest/gtest.h>

#include <string>

#include "cmd/parse.h"
#include "util/process.h"

namespace {

TEST(DispatchTest, OperationWithoutHandlerFallsToTheDefaultRow) {
  CmdName = "cyclectl";
  CommandLine line;
  line.operation = OP_HELP;
  testing::internal::CaptureStderr();
  EXPECT_EQ(Dispatch(line), 144);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cyclectl: unrecognized operation 10\n");
}

}  // namespace
