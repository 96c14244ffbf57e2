// The remote pieces of a run against the test service that no operation
// shows end to end (remote_faults_test.cc, diskspaceinfo_test.cc and the
// operations' tests under tests/e2e show the rest): ladder rows the
// operations cannot meet, the disk service's connect and narrow messages and
// the legacy disk-volume lookup, each through cyclesvc-probe on loopback.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"
#include "tools/cyclesvc-test/test_service.h"

namespace {

using cyclesvc_test::TestService;

// Each ladder row's line on standard error, nothing on standard output,
// status 255; the legacy lookups, once per volume into the server type cache.
TEST(ServiceProbeTest, ConnectFailuresLadderRowsAndLegacyLookups) {
  e2e::RootOptions loopback;
  loopback.master = loopback.emmServer = "127.0.0.1";
  loopback.adminLog = false;
  e2e::Root root(loopback);
  e2e::RunOptions options;
  options.program = options.argv0 = "cyclesvc-probe";
  auto probe = [&](const std::vector<std::string>& args) { return root.Run(args, "", options); };
  root.SetConfig("DAEMON_PORT.SWDSMFSM", std::to_string(cyclesvc_test::FreeLoopbackPort()));
  EXPECT_EQ(probe({"stype", "M1"}), (e2e::Result{"", "cannot connect to dsm\n", 255}));
  root.RemoveConfig("DAEMON_PORT.SWDSMFSM");
  EXPECT_EQ(probe({"ping"}), (e2e::Result{"", "cannot connect to Disk Service Manager\n", 255}));
  {
    cyclesvc_test::ServiceOptions mismatched;
    mismatched.mismatchedObjects = true;
    TestService service(root.path(), "{}", mismatched);
    ASSERT_TRUE(service.ok()) << service.error();
    EXPECT_EQ(probe({"ping"}),
              (e2e::Result{"", "cannot narrow Disk Service Manager object\n", 255}));
    EXPECT_EQ(service.Calls(), std::vector<std::string>());
  }

  const struct {
    const char* scenario;  // replaces the test service's scenario when not null
    std::vector<std::string> args;
    std::string err;
  } cases[] = {
      // A system exception: its description ends with its own line end.
      {R"({"ExpMgr.DeletionDone": {"raise": {"system": "NO_PERMISSION", "minor": 7,
                                             "completed": "YES"}}})",
       {"deletedone", "3"},
       "Caught CORBA SystemException from cyclesvc: "
       "IDL:omg.org/CORBA/NO_PERMISSION:1.0 (minor code 0x7, completed YES)\n"},
      // A connection-class system exception (COMM_FAILURE is shown end to end).
      {R"({"DiskServiceMgr.ping": {"raise": {"system": "TIMEOUT"}}})",
       {"ping"},
       "cannot connect to dsm\n"},
      // IllegalArgumentException with empty details and no time stamp ...
      {R"({"DiskServiceMgr.ping": {"raise": {"user": "IllegalArgumentException",
           "details": {"argumentName": "x", "timeStamp": 0}}}})",
       {"ping"},
       "IllegalArgumentException from dsm: IllegalArgumentException: in method  of class  "
       "in service  on host ; argumentName=\"x\"\n"},
      // ... with a time stamp, whose text carries its own line end ...
      {R"({"DiskServiceMgr.ping": {"raise": {"user": "IllegalArgumentException",
           "details": {"originatingMethod": "ping", "originatingClass": "DiskServiceMgrImpl",
                       "originatingService": "DiskService", "originatingHost": "emm1",
                       "timeStamp": 86400, "argumentName": "volume"}}}})",
       {"ping"},
       "IllegalArgumentException from dsm: IllegalArgumentException: in method ping of class "
       "DiskServiceMgrImpl in service DiskService on host emm1 at Fri Jan  2 00:00:00 1970\n"
       "; argumentName=\"volume\"\n"},
      // ... and without details.
      {R"({"DiskServiceMgr.ping": {"raise": {"user": "IllegalArgumentException"}}})",
       {"ping"},
       "IllegalArgumentException from dsm: IllegalArgumentException\n"},
      {nullptr, {"runtime-error"}, "Runtime error from cyclesvc: probe failure\n"},
  };
  TestService service(root.path());
  ASSERT_TRUE(service.ok()) << service.error();
  for (const auto& c : cases) {
    if (c.scenario != nullptr) service.SetScenario(c.scenario);
    EXPECT_EQ(probe(c.args), (e2e::Result{"", c.err, 255}))
        << (c.scenario != nullptr ? c.scenario : c.args[0]);
  }

  // MID1 to MID3 found (several, a null and no disk media id property), any other not.
  service.SetScenario(e2e::Golden("cyclesvc-probe/legacy-lookups.json"));
  service.ClearCalls();
  EXPECT_EQ(probe({"legacy", "2",    "MID1", "ms1", "ss1",  // found
                   "1",      "MID1", "ms1",  "ss1",         // the same volume: no call
                   "2",      "MID1", "ms1",  "ss2",         // another storage server
                   "4",      "MID2", "ms1",  "ss1",         // unknown sub-type
                   "6",      "MID3", "ms1",  "ss1",         // no disk media id property
                   "6",      "MID4", "ms1",  "ss1"}),       // not found
            (e2e::Result{"MID1 -> D1 (NearStore)\nMID1 -> D1 (NearStore)\n"
                         "MID1 -> D1 (NearStore)\nMID2 -> D2 (ExtDisk)\nMID3 -> \n"
                         "MID4 -> \n",
                         "unrecognized disk subtype encountered\n", 0}));
  const std::string lookup = "DiskServiceMgr.getDiskVolumeInfoByLegacyInfo(\"127.0.0.1\", ";
  EXPECT_EQ(service.Calls(), (std::vector<std::string>{
                                 lookup + R"("ss1", "NearStore", "MID1"))",
                                 lookup + R"("ss2", "NearStore", "MID1"))",
                                 lookup + R"("ss1", "", "MID2"))",
                                 lookup + R"("ss1", "DiskPool", "MID3"))",
                                 lookup + R"("ss1", "DiskPool", "MID4"))",
                             }));
}

}  // namespace
