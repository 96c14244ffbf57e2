// End-to-end tests of the expiration manager operations against the test
// service: arguments sent at the limits, output, status texts and faults.
#include <string>
#include <vector>

#include "tests/e2e/remote_fixture.h"

namespace {

class ExpirationControlTest : public e2e::RemoteTest {};

const char kVolume[] = R"("ms1", "ss1", "vol1", "@aaaab", )";

TEST_F(ExpirationControlTest, DiskfullQueryAndDeletionDonePrintWhatTheManagerAnswers) {
  Answer(R"({"ExpMgr.DiskfullExpiration": [
                {"args": ["EXP_TYPE_NORMAL", "ms1"], "status": 0, "expirationId": 2147483647,
                 "expiredSpace": 9223372036854775807},
                {"status": 227, "expirationId": -1, "expiredSpace": -9223372036854775808}],
             "ExpMgr.QueryExpiration": {"status": 1, "opStatus": 134, "expiredSpace": 4096},
             "ExpMgr.DeletionDone": [{"status": 0}, {"status": 9}]})");
  EXPECT_EQ(Run({"diskfull", "-mediaserver", "ms1", "-storageserver", "ss1", "-volumeid", "vol1",
                 "-mediaid", "@aaaab", "-dt", "6", "-totalcap", "9223372036854775807", "-usedspace",
                 "9223372036854775807"}),
            (e2e::Result{"DiskfullExpiration return value = 0(the requested operation was "
                         "successfully completed)\n"
                         "                   expiration id = 2147483647\n"
                         "                   expired space = 9223372036854775807\n",
                         "", 0}));
  // The out values are printed whatever the status.
  EXPECT_EQ(Run({"diskfull", "-totalcap", "1", "-usedspace", "0"}),
            (e2e::Result{"DiskfullExpiration return value = 227(no matching entity was found)\n"
                         "                   expiration id = -1\n"
                         "                   expired space = -9223372036854775808\n",
                         "", 0}));
  EXPECT_EQ(Run({"query_exp", "-expid", "-2147483649"}).status, 1);  // read as an option
  // Numbers past their field are refused, never wrapped.
  EXPECT_EQ(Run({"query_exp", "-expid", "2147483648"}),
            (e2e::Result{"", "Invalid value supplied for -expid option\n", 1}));
  EXPECT_EQ(Run({"diskfull", "-usedspace", "9223372036854775808"}),
            (e2e::Result{"", "Invalid value supplied for -usedspace option\n", 1}));
  EXPECT_EQ(Run({"query_exp", "-expid", "2147483647"}),
            (e2e::Result{"QueryExpiration return value = 1(the requested operation was "
                         "partially successful)\n"
                         "                op status = 134(the service is busy with another "
                         "session)\n"
                         "                expired space = 4096\n",
                         "", 0}));
  EXPECT_EQ(Run({"query_exp"}).status, 0);
  EXPECT_EQ(Run({"query_exp", "-expid", "abc"}).status, 0);
  EXPECT_EQ(Run({"deletedone", "-expid", "2147483647"}),
            (e2e::Result{"DeletionDone return value = 0(the requested operation was successfully "
                         "completed)\n",
                         "", 0}));
  EXPECT_EQ(Run({"deletedone", "-expid", "1"}),
            (e2e::Result{"DeletionDone return value = 9(unknown status code 9)\n", "", 0}));
  EXPECT_EQ(Calls(), (std::vector<std::string>{
                         std::string("ExpMgr.DiskfullExpiration(EXP_TYPE_NORMAL, ") + kVolume +
                             "6, 9223372036854775807, 9223372036854775807)",
                         R"(ExpMgr.DiskfullExpiration(EXP_TYPE_NORMAL, "", "", "", "", 0, 1, 0))",
                         "ExpMgr.QueryExpiration(2147483647)",
                         "ExpMgr.QueryExpiration(0)",
                         "ExpMgr.QueryExpiration(0)",
                         "ExpMgr.DeletionDone(2147483647)",
                         "ExpMgr.DeletionDone(1)",
                     }));
}

TEST_F(ExpirationControlTest, StatusTextsFollowTheMessageLocale) {
  Answer(R"({"ExpMgr.DeletionDone": {"status": 227}})");
  e2e::RunOptions german;
  german.env = {"LC_ALL", "LANG=de_DE.UTF-8"};
  EXPECT_EQ(
      Run({"deletedone", "-expid", "3"}, "", german),
      (e2e::Result{"DeletionDone return value = 227(kein passendes Objekt gefunden)\n", "", 0}));
}

TEST_F(ExpirationControlTest, InitiateHwmAndPfsSpeakOnlyOfANonZeroStatus) {
  Answer(R"({"ExpMgr.InitiateExpiration": [{"status": 0}, {"status": -3}],
             "ExpMgr.HwmUpdate": [{"status": 0}, {"status": 5}],
             "ExpMgr.UpdatePotentialFreeSpace": [{"status": 0}, {"status": 2147483647}]})");
  const std::vector<std::string> volume = {"-mediaserver", "ms1",  "-storageserver", "ss1",
                                           "-volumeid",    "vol1", "-mediaid",       "@aaaab"};
  auto with = [&](std::vector<std::string> args, std::vector<std::string> more) {
    args.insert(args.end(), more.begin(), more.end());
    return args;
  };
  const std::vector<std::string> initiate =
      with(with({"initiate_exp"}, volume), {"-dp", "pool1", "-dt", "7"});
  const std::vector<std::string> hwm = {"update_hwm",
                                        "-mediaserver",
                                        "ms1",
                                        "-storageserver",
                                        "ss1",
                                        "-mediaid",
                                        "@aaaab",
                                        "-stssubtype",
                                        "PlainDisk",
                                        "-totalcap",
                                        "9223372036854775807",
                                        "-usedcap",
                                        "1"};
  const std::vector<std::string> pfs = with(with({"update_pfs"}, volume), {"-dt", "2147483647"});
  for (const auto* args : {&initiate, &hwm, &pfs}) EXPECT_EQ(Run(*args), (e2e::Result{"", "", 0}));
  EXPECT_EQ(Run(initiate), (e2e::Result{"", "Initiate Expiration return value = -3\n", 0}));
  EXPECT_EQ(Run(hwm), (e2e::Result{"", "high watermark update return value = 5\n", 0}));
  EXPECT_EQ(Run(pfs),
            (e2e::Result{"", "update potential free space return value = 2147483647\n", 0}));
  const std::string initiateCall =
      std::string("ExpMgr.InitiateExpiration(") + kVolume + "\"pool1\", 7)";
  const std::string hwmCall =
      R"(ExpMgr.HwmUpdate("ms1", "ss1", "@aaaab", "PlainDisk", 9223372036854775807, 1))";
  const std::string pfsCall =
      std::string("ExpMgr.UpdatePotentialFreeSpace(") + kVolume + "2147483647)";
  EXPECT_EQ(Calls(), (std::vector<std::string>{initiateCall, hwmCall, pfsCall, initiateCall,
                                               hwmCall, pfsCall}));
}

TEST_F(ExpirationControlTest, UnreachableOrWrongManagerPrintsItsMessageOnly) {
  root_.RemoveConfig("DAEMON_PORT.cyclesvc");
  for (const char* op : {"diskfull", "initiate_exp", "update_pfs", "query_exp", "deletedone"}) {
    EXPECT_EQ(Run({op}), (e2e::Result{"", "cannot connect to expiration manager\n", 0})) << op;
  }
  cyclesvc_test::ServiceOptions mismatched;
  mismatched.mismatchedObjects = true;
  ASSERT_NO_FATAL_FAILURE(Restart("{}", mismatched));
  EXPECT_EQ(Run({"query_exp", "-expid", "1"}),
            (e2e::Result{"", "cannot narrow expiration manager object\n", 0}));
  EXPECT_EQ(Calls(), std::vector<std::string>());
}

}  // namespace
