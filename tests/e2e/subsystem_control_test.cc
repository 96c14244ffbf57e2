// End-to-end tests of suspend, resume, one_session and dump against the test
// service: the subsystem and session arguments sent, the messages of a
// non-zero status and the dump lines.
#include <string>
#include <vector>

#include "tests/e2e/remote_fixture.h"

namespace {

class SubsystemControlTest : public e2e::RemoteTest {};

TEST_F(SubsystemControlTest, SuspendResumeAndOneSessionSendTheSubsystemAndArguments) {
  Answer(e2e::Golden("suspend/scenario.json"));  // suspend, resume and one_session
  // All subsystems: the message does not name one.
  EXPECT_EQ(Run({"suspend"}),
            (e2e::Result{"", "unable to suspend, resume, or operate on all subsystems\n", 0}));
  // An abbreviation and the number name the same subsystem.
  const e2e::Result resumed{
      "", "unable to suspend, resume, or operate on subsystem ID 15, status= 7\n", 0};
  EXPECT_EQ(Run({"resume", "-subsys", "expm"}), resumed);
  EXPECT_EQ(Run({"resume", "-subsys", "15"}), resumed);
  const e2e::Result ok{"", "", 0};
  EXPECT_EQ(Run({"resume", "-subsys", "rm"}), ok);
  EXPECT_EQ(Run({"one_session", "-subsys", "im", "-policy", "P"}), ok);
  EXPECT_EQ(Run({"one_session", "-subsys", "null", "-arg1", "A", "-policy", "P", "-arg2", "B",
                 "-schedule", "S", "-arg3", "0", "-schedtype", "4"}),
            ok);
  EXPECT_EQ(Run({"one_session", "-subsys", "alm", "-schedule", "S", "-arg3", "9"}), ok);
  EXPECT_EQ(Calls(), (std::vector<std::string>{
                         "Dssvc.SubSystemSuspend(SUBSYSTEM_ID_NULL)",
                         "Dssvc.SubSystemResume(SUBSYSTEM_ID_EXPIRATION_MGR)",
                         "Dssvc.SubSystemResume(SUBSYSTEM_ID_EXPIRATION_MGR)",
                         "Dssvc.SubSystemResume(SUBSYSTEM_ID_REPORT_MGR)",
                         R"(Dssvc.SubSystemOneSession(SUBSYSTEM_ID_IMAGE_MGR, "P", "", -1))",
                         R"(Dssvc.SubSystemOneSession(SUBSYSTEM_ID_NULL, "A", "B", 4))",
                         R"(Dssvc.SubSystemOneSession(SUBSYSTEM_ID_APPL_LOG_MGR, "", "S", 9))"}));
  EXPECT_TRUE(Logged("<2> cyclectl: SubSystemSuspend executed with subsys ID 0, status= 5"));
  EXPECT_TRUE(Logged("<2> cyclectl: SubSystemResume executed with subsys ID 15, status= 7"));
  EXPECT_TRUE(Logged("<2> cyclectl: SubSystemOneSession executed with subsys ID 1, status= 0"));
}

TEST_F(SubsystemControlTest, DumpPrintsTheLinesOrOnlyTheStatus) {
  Answer(e2e::Golden("dump/scenario.json"));
  EXPECT_EQ(Run({"dump", "-subsys", "im", "-df", "J", "-dopts", "verbose=2 x"}),
            (e2e::Result{"{\n  \"a\": 1\n}\n", "", 0}));
  EXPECT_EQ(
      Run({"dump", "-subsys", "em", "-df", "l"}),
      (e2e::Result{"", "error 133 (the request is not valid) returned by 'dump' operation\n", 0}));
  EXPECT_EQ(Run({"dump"}), (e2e::Result{"", "", 0}));
  EXPECT_EQ(Calls(), (std::vector<std::string>{
                         "Dssvc.SubSystemDump(SUBSYSTEM_ID_IMAGE_MGR, DUMPFORM_JSON, "
                         R"("verbose=2 x"))",
                         R"(Dssvc.SubSystemDump(SUBSYSTEM_ID_ERROR_MGR, DUMPFORM_LOGFILE, ""))",
                         R"(Dssvc.SubSystemDump(SUBSYSTEM_ID_NULL, DUMPFORM_READABLE, ""))"}));
}

TEST_F(SubsystemControlTest, ADumpReplyOfTwentyMegabytes) {
  // Ten times the ORB's default largest message.
  const std::string line(1 << 20, 'x');
  std::string lines, expected;
  for (int i = 0; i < 20; ++i) {
    lines += (i ? ", \"" : "\"") + line + "\"";
    expected += line + "\n";
  }
  Answer(R"({"Dssvc.SubSystemDump": {"status": 0, "dumpLines": [)" + lines + "]}}");
  const e2e::Result r = Run({"dump"});  // compared, not printed: 20 MB
  EXPECT_TRUE(r == (e2e::Result{expected, "", 0})) << r.out.size() << " bytes out, " << r.err;
}

}  // namespace
