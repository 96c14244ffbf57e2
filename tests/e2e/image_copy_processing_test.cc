// End-to-end tests of cancel, inactive, active and new_session against the
// test service: the arguments sent (the reactivation time above all), each
// kind of status, the two-phase cancel with its prompts, and the debug log.
#include <gmock/gmock.h>
#include <time.h>

#include <string>
#include <vector>

#include "tests/e2e/prompts.h"
#include "tests/e2e/remote_fixture.h"
#include "tests/e2e/test_data.h"

namespace {

class ImageCopyProcessingTest : public e2e::RemoteTest {};

// The call of `inactive -lifecycle lc1` sending `reactivation` and a range.
std::string Suspend(long long reactivation, const std::string& range = "TIME_RANGE_NONE, 0") {
  return R"(Dssvc.SuspendImageCopyProcessing("", "lc1", "", )" + std::to_string(reactivation) +
         ", " + range + ")";
}

TEST_F(ImageCopyProcessingTest, InactiveSendsTheReactivationTime) {
  const e2e::Result ok{"", "", 0};
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1"}), ok);
  // The time locale is C (mm/dd/yyyy); the runs' time zone UTC.
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-reactivation_time", "01/02/2030 10:00:00"}),
            ok);
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-before", "01/02/2020"}), ok);
  EXPECT_EQ(Calls(),
            (std::vector<std::string>{Suspend(2147483647), Suspend(1893578400),
                                      Suspend(2147483647, "TIME_RANGE_BEFORE, 1577923200")}));
  // A duration counts from the run: one call, sent at one of its seconds.
  for (const long long hours : {0, 24}) {
    Answer("{}");
    const long long before = time(nullptr);
    EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-duration", hours ? " 24h" : "0"}), ok);
    std::vector<std::string> possible;
    for (long long t = before; t <= time(nullptr); ++t)
      possible.push_back(Suspend(t + hours * 3600));
    EXPECT_THAT(Calls(), ::testing::ElementsAre(::testing::AnyOfArray(possible)));
  }
}

TEST_F(ImageCopyProcessingTest, UnreadableDurationOrDateSendsNothing) {
  const e2e::Result duration{"", "unable to convert duration to time\n", 20};
  const e2e::Result date{"", "unable to convert date to time\n", 20};
  const e2e::Result after{"", "Invalid value supplied for -after option\n", 1};
  const struct {
    std::vector<std::string> args;
    e2e::Result result;
  } cases[] = {
      {{"inactive", "-lifecycle", "lc1", "-duration", "x"}, duration},
      {{"inactive", "-lifecycle", "lc1", "-duration", "99999999999999999999"}, duration},
      // The largest number of hours that still fits is too many from now on.
      {{"inactive", "-lifecycle", "lc1", "-duration", "5124095576030431"}, duration},
      {{"inactive", "-lifecycle", "lc1", "-reactivation_time", "13/45/2030 10:00:00"}, date},
      // A moment needs its time of day.
      {{"inactive", "-lifecycle", "lc1", "-reactivation_time", "01/02/2030"}, date},
      // A range time before 1970 cannot be sent (unsigned on the wire).
      {{"inactive", "-lifecycle", "lc1", "-after", "01/01/1969 00:00:00"}, after},
      {{"cancel", "-lifecycle", "lc1", "-before", "12/31/1969 23:59:59"},
       {"", "Invalid value supplied for -before option\n", 1}},
      {{"active", "-destination", "d1", "-after", "12/31/1969"}, after},
  };
  for (const auto& c : cases) EXPECT_EQ(Run(c.args), c.result) << c.args[0] << " " << c.args[4];
  EXPECT_EQ(Calls(), std::vector<std::string>());
  // The first second of 1970 is the earliest range time sent.
  EXPECT_EQ(Run({"active", "-lifecycle", "lc1", "-after", "01/01/1970 00:00:00"}),
            (e2e::Result{"", "", 0}));
  EXPECT_EQ(Calls(), std::vector<std::string>{R"(Dssvc.ResumeImageCopyProcessing("", "lc1", "", )"
                                              R"(TIME_RANGE_AFTER, 0))"});
}

TEST_F(ImageCopyProcessingTest, EveryKindOfStatusIsReported) {
  const struct {
    int status;
    e2e::Result result;
  } cases[] = {
      {-5, {"", "Operation successful: 5 images or lifecycles processed\n", 0}},
      {0, {"", "", 0}},
      {134, {"", "Session in progress.  Try again later.\n", 134}},
      {227, {"", "No images or lifecycles matching criteria found.\n", 227}},
      {133, {"", "Operation not successful: status = 133 (the request is not valid)\n", 133}},
  };
  for (const auto& c : cases) {
    const std::string status = std::to_string(c.status);
    Answer(R"({"Dssvc.ResumeImageCopyProcessing": {"status": )" + status +
           R"(}, "Dssvc.StartImageDupSession": {"status": )" + status + "}}");
    EXPECT_EQ(Run({"active", "-backupid", "c1_100"}), c.result) << status;
    EXPECT_EQ(Run({"ns"}), c.result) << status;
    EXPECT_EQ(Calls(),
              (std::vector<std::string>{
                  R"(Dssvc.ResumeImageCopyProcessing("", "", "c1_100", TIME_RANGE_NONE, 0))",
                  "Dssvc.StartImageDupSession()"}));
  }
  EXPECT_EQ(Run({"new_session"}), cases[4].result);
  EXPECT_TRUE(Logged("<2> cyclectl: Received status = 0, images or lifecycles processed = 5"));
  EXPECT_TRUE(Logged("<2> cyclectl: Received status = 133, images or lifecycles processed = 0"));
}

TEST_F(ImageCopyProcessingTest, CancelStopsAfterAListingThatFindsNothingOrFails) {
  const struct {
    const char* listing;
    e2e::Result result;
  } cases[] = {
      {R"({"status": 0, "cancellableImages": []})", {"", "", 0}},
      {R"({"status": 227})", {"", "No images or lifecycles matching criteria found.\n", 227}},
      {R"({"status": 5, "cancellableImages": [{"backupid": "c1_100"}]})",
       {"",
        "failed to list cancellable images, error = 5\n"
        "Operation not successful: status = 5 (unknown status code 5)\n",
        5}},
  };
  for (const auto& c : cases) {
    Answer(std::string(R"({"Dssvc.CancelImageCopyProcessing": )") + c.listing + "}");
    EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1", "-version", "3"}), c.result) << c.listing;
    EXPECT_EQ(Calls(), std::vector<std::string>{R"(Dssvc.CancelImageCopyProcessing("", "lc1", )"
                                                R"("", 3, TIME_RANGE_NONE, 0, false))"});
  }
  EXPECT_TRUE(Logged("<16> cyclectl: failed to list cancellable images, error = 5"));
}

TEST_F(ImageCopyProcessingTest, CancelListsWhatWouldExpireAndAsksTwice) {
  const long long now = time(nullptr);
  Answer(
      e2e::GoldenFilled("cancel/expiring.json", {{"IN_90_MINUTES", std::to_string(now + 5400)},
                                                 {"90_MINUTES_AGO", std::to_string(now - 5400)}}));
  const std::string expired =
      "Canceling these images will cause some or all of the images to be expired. Do you want to ";
  const std::string see = expired + "see the list of images that will be expired? (y/n):";
  const std::string proceed = expired + "proceed with the cancellation? (y/n):";
  const std::string listing = e2e::Golden("cancel/expiring.txt");
  const std::string call =
      R"(Dssvc.CancelImageCopyProcessing("", "lc1", "", -1, TIME_RANGE_NONE, 0, )";

  // Shown and confirmed, after an answer that is neither yes nor no. The
  // cancellation's negative status counts the copies processed.
  EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1"}, "Yes maybe YES\n"),
            (e2e::Result{see + proceed + "'maybe' is not a valid answer.\n" + proceed,
                         listing + "Operation successful: 4 images or lifecycles processed\n", 0}));
  EXPECT_EQ(Calls(), (std::vector<std::string>{call + "false)", call + "true)"}));

  // Not shown, then declined, in either case and either length; and the end
  // of input declines both.
  for (const char* answers : {"n\nN\n", "NO no\n", ""}) {
    Answer(R"({"Dssvc.CancelImageCopyProcessing": {"status": 0,
                 "cancellableImages": [{"backupid": "c1_100", "expireTime": 0}]}})");
    EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1"}, answers),
              (e2e::Result{see + proceed + "No SLP operations canceled\n", "", 0}))
        << answers;
    EXPECT_EQ(Calls(), std::vector<std::string>{call + "false)"});
  }
}

TEST_F(ImageCopyProcessingTest, ForcedCancelCallsOnceAndLogsEachCancelledCopy) {
  Answer(e2e::Golden("cancel/forced.json"));
  EXPECT_EQ(Run({"cancel", "-destination", "dst1", "-force"}, "y\n"),
            (e2e::Result{e2e::kDestinationPrompt,
                         "3 image copies have been canceled successfully\n", 0}));
  EXPECT_EQ(Calls(), std::vector<std::string>{R"(Dssvc.CancelImageCopyProcessing("dst1", "", )"
                                              R"("", -1, TIME_RANGE_NONE, 0, true))"});
  std::string copies;
  for (const std::string& line : root_.DebugLogMessages())
    if (line.find(", cn = ") != std::string::npos) copies += line + "\n";
  EXPECT_EQ(copies, e2e::Golden("cancel/forced.log"));
}

}  // namespace
