// End-to-end tests of cancel, inactive, active and new_session against the
// test service: the arguments sent (the reactivation time above all), the
// report of each kind of status, the two-phase cancel with its prompts and
// expiry listing, and what reaches the debug log.
#include <time.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/e2e/remote_fixture.h"

namespace {

class ImageCopyProcessingTest : public e2e::RemoteTest {
 protected:
  // The reactivation time of a recorded SuspendImageCopyProcessing call.
  static long long ReactivationSent(const std::string& call) {
    // Dssvc.SuspendImageCopyProcessing("", "lc1", "", <time>, TIME_RANGE_..., <range time>)
    size_t start = call.find("\"\", ", call.find("\"lc1\"")) + 4;
    return std::atoll(call.c_str() + start);
  }
};

TEST_F(ImageCopyProcessingTest, InactiveSendsTheReactivationTime) {
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1"}), (e2e::Result{"", "", 0}));
  // The time locale is C (mm/dd/yyyy); the runs' time zone UTC.
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-reactivation_time", "01/02/2030 10:00:00"}),
            (e2e::Result{"", "", 0}));
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-before", "01/02/2020"}),
            (e2e::Result{"", "", 0}));
  long long before = time(nullptr);
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-duration", "0"}), (e2e::Result{"", "", 0}));
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1", "-duration", " 24h"}), (e2e::Result{"", "", 0}));
  long long after = time(nullptr);

  std::vector<std::string> calls = Calls();
  ASSERT_EQ(calls.size(), 5u);
  EXPECT_EQ(calls[0],
            R"(Dssvc.SuspendImageCopyProcessing("", "lc1", "", 2147483647, TIME_RANGE_NONE, 0))");
  EXPECT_EQ(calls[1],
            R"(Dssvc.SuspendImageCopyProcessing("", "lc1", "", 1893578400, TIME_RANGE_NONE, 0))");
  EXPECT_EQ(calls[2], R"(Dssvc.SuspendImageCopyProcessing("", "lc1", "", 2147483647, )"
                      R"(TIME_RANGE_BEFORE, 1577923200))");
  EXPECT_GE(ReactivationSent(calls[3]), before);
  EXPECT_LE(ReactivationSent(calls[3]), after);
  EXPECT_GE(ReactivationSent(calls[4]), before + 86400);
  EXPECT_LE(ReactivationSent(calls[4]), after + 86400);
}

TEST_F(ImageCopyProcessingTest, UnreadableDurationOrDateSendsNothing) {
  const std::string duration = "unable to convert duration to time\n";
  const std::string date = "unable to convert date to time\n";
  const struct {
    std::vector<std::string> args;
    std::string err;
    int status;
  } cases[] = {
      {{"inactive", "-lifecycle", "lc1", "-duration", "x"}, duration, 20},
      {{"inactive", "-lifecycle", "lc1", "-duration", "99999999999999999999"}, duration, 20},
      // The largest number of hours that still fits is too many from now on.
      {{"inactive", "-lifecycle", "lc1", "-duration", "5124095576030431"}, duration, 20},
      {{"inactive", "-lifecycle", "lc1", "-reactivation_time", "13/45/2030 10:00:00"}, date, 20},
      // A moment needs its time of day.
      {{"inactive", "-lifecycle", "lc1", "-reactivation_time", "01/02/2030"}, date, 20},
      // A range time before 1970 cannot be sent (unsigned on the wire).
      {{"inactive", "-lifecycle", "lc1", "-after", "01/01/1969 00:00:00"},
       "Invalid value supplied for -after option\n",
       1},
      {{"cancel", "-lifecycle", "lc1", "-before", "12/31/1969 23:59:59"},
       "Invalid value supplied for -before option\n",
       1},
      {{"active", "-destination", "d1", "-after", "12/31/1969"},
       "Invalid value supplied for -after option\n",
       1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Run(c.args), (e2e::Result{"", c.err, c.status})) << c.args[0] << " " << c.args[3];
  }
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
    std::string err;
    int exit;
  } cases[] = {
      {-5, "Operation successful: 5 images or lifecycles processed\n", 0},
      {0, "", 0},
      {134, "Session in progress.  Try again later.\n", 134},
      {227, "No images or lifecycles matching criteria found.\n", 227},
      {133, "Operation not successful: status = 133 (the request is not valid)\n", 133},
  };
  for (const auto& c : cases) {
    std::string status = std::to_string(c.status);
    Answer(R"({"Dssvc.ResumeImageCopyProcessing": {"status": )" + status +
           R"(}, "Dssvc.StartImageDupSession": {"status": )" + status + "}}");
    EXPECT_EQ(Run({"active", "-backupid", "c1_100"}), (e2e::Result{"", c.err, c.exit})) << status;
    EXPECT_EQ(Run({"ns"}), (e2e::Result{"", c.err, c.exit})) << status;
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Dssvc.ResumeImageCopyProcessing("
                                                 R"("", "", "c1_100", )"
                                                 "TIME_RANGE_NONE, 0)",
                                                 "Dssvc.StartImageDupSession()"}));
  }
  EXPECT_EQ(Run({"new_session"}).status, 133);
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
  long long now = time(nullptr);
  Answer(R"({"Dssvc.CancelImageCopyProcessing": [
      {"args": [null, null, null, null, null, null, false], "status": 1626,
       "cancellableImages": [
         {"backupid": "c1_100", "copyNumber": 1, "slpName": "gold", "slpVersion": 2,
          "expireTime": 0},
         {"backupid": "c1_200", "copyNumber": 2, "slpName": "gold", "slpVersion": 2,
          "expireTime": )" +
         std::to_string(now + 86400) + R"(, "expirationType": 2},
         {"backupid": "c2_300", "copyNumber": 1, "slpName": "silver", "slpVersion": 0,
          "expireTime": )" +
         std::to_string(now + 5400) + R"(},
         {"backupid": "c2_400", "copyNumber": 3, "slpName": "silver", "slpVersion": 0,
          "expireTime": )" +
         std::to_string(now - 5400) + R"(}]},
      {"status": -4, "cancellableImages": []}]})");
  const std::string see =
      "Canceling these images will cause some or all of the images to be expired. Do you want "
      "to see the list of images that will be expired? (y/n):";
  const std::string proceed =
      "Canceling these images will cause some or all of the images to be expired. Do you want "
      "to proceed with the cancellation? (y/n):";
  const std::string listing = e2e::Golden("cancel/expiring.txt");
  const std::string listCall =
      R"(Dssvc.CancelImageCopyProcessing("", "lc1", "", -1, TIME_RANGE_NONE, 0, false))";
  const std::string cancelCall =
      R"(Dssvc.CancelImageCopyProcessing("", "lc1", "", -1, TIME_RANGE_NONE, 0, true))";

  // Shown and confirmed, after an answer that is neither yes nor no. The
  // cancellation's negative status counts the copies processed.
  EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1"}, "Yes maybe YES\n"),
            (e2e::Result{see + proceed + "'maybe' is not a valid answer.\n" + proceed,
                         listing + "Operation successful: 4 images or lifecycles processed\n", 0}));
  EXPECT_EQ(Calls(), (std::vector<std::string>{listCall, cancelCall}));

  // Not shown, then declined, in either case and either length; and the end
  // of input declines both.
  for (const char* answers : {"n\nN\n", "NO no\n", ""}) {
    Answer(R"({"Dssvc.CancelImageCopyProcessing": {"status": 0,
                 "cancellableImages": [{"backupid": "c1_100", "expireTime": 0}]}})");
    EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1"}, answers),
              (e2e::Result{see + proceed + "No SLP operations canceled\n", "", 0}))
        << answers;
    EXPECT_EQ(Calls(), std::vector<std::string>{listCall});
  }
}

TEST_F(ImageCopyProcessingTest, ForcedCancelCallsOnceAndLogsEachCancelledCopy) {
  Answer(R"({"Dssvc.CancelImageCopyProcessing": {"status": 0, "cancellableImages": [
      {"backupid": "c1_100", "copyNumber": 1, "slpName": "gold", "slpVersion": 2,
       "imageState": 11, "copyState": 6, "expireTime": 86400},
      {"backupid": "c1_200", "copyNumber": 2, "slpName": "gold", "slpVersion": 2,
       "imageState": 0, "copyState": 16, "expireTime": 0},
      {"backupid": "c1_300", "copyNumber": 3, "slpName": "gold", "slpVersion": 2,
       "imageState": 10, "copyState": -1, "expireTime": 0}]}})");
  EXPECT_EQ(Run({"cancel", "-destination", "dst1", "-force"}, "y\n"),
            (e2e::Result{"This operation will also cancel other destinations if they are using "
                         "the specified destination as source. Do you wish to proceed? (y/n): ",
                         "3 image copies have been canceled successfully\n", 0}));
  EXPECT_EQ(Calls(), std::vector<std::string>{R"(Dssvc.CancelImageCopyProcessing("dst1", "", )"
                                              R"("", -1, TIME_RANGE_NONE, 0, true))"});
  std::vector<std::string> log = root_.DebugLogMessages();
  std::vector<std::string> copies;
  for (const std::string& line : log)
    if (line.find(", cn = ") != std::string::npos) copies.push_back(line);
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_EQ(copies[0].substr(0, copies[0].find(", expire time = ")),
            "<2> cyclectl: c1_100, cn = 1, slp = gold, slp version = 2, image state = 11 "
            "(INVALID_IMAGE_LIFECYCLE_STATE), copy state = 6 (CANCELLED) ");
  EXPECT_EQ(copies[2].substr(0, copies[2].find(", expire time = ")),
            "<2> cyclectl: c1_300, cn = 3, slp = gold, slp version = 2, image state = 10 "
            "(IN_PROCESS|INACTIVE) , copy state = -1 (INVALID_IMAGE_COPY_STATE)");
}

TEST_F(ImageCopyProcessingTest, UnreachableOrWrongManagerEndsWithStatus25) {
  root_.RemoveConfig("DAEMON_PORT.cyclesvc");
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1"}),
            (e2e::Result{"", "cannot connect to the SLP manager\n", 25}));
  cyclesvc_test::ServiceOptions mismatched;
  mismatched.mismatchedObjects = true;
  ASSERT_NO_FATAL_FAILURE(Restart("{}", mismatched));
  EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1", "-force"}),
            (e2e::Result{"", "cannot narrow SLP manager object\n", 25}));
}

}  // namespace
