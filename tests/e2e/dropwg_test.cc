// End-to-end tests of `cyclectl dropwg` against the test service: the
// message for each status the service returns, the statuses when the SLP
// manager cannot be reached or narrowed, and a raised exception.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/e2e/harness.h"
#include "tests/e2e/prompts.h"
#include "tests/e2e/remote_fixture.h"
#include "tools/cyclesvc-test/test_service.h"

namespace {

const char kDropCall[] = "Dssvc.DropAllWorkGroupAllocations()";

std::string Status(int status) {
  return R"({"Dssvc.DropAllWorkGroupAllocations": {"status": )" + std::to_string(status) + "}}";
}

TEST(DropWgTest, ConfirmedThenEachStatusOrFailureGivesItsMessage) {
  e2e::Root root(e2e::LoopbackRoot());
  {
    cyclesvc_test::TestService service(root.path(), Status(0));
    ASSERT_TRUE(service.ok()) << service.error();
    const std::string prompt = e2e::kWorkGroupPrompt;
    // The confirmation comes before the call.
    EXPECT_EQ(root.Run({"dropwg"}, "\nn\n"), (e2e::Result{prompt + "No entries removed\n", "", 0}));
    EXPECT_EQ(service.Calls(), std::vector<std::string>{});
    EXPECT_EQ(root.Run({"dropwg"}, "  yes\n"), (e2e::Result{prompt, "", 0}));
    EXPECT_EQ(service.Calls(), std::vector<std::string>{kDropCall});

    const struct {
      std::string scenario;
      const char* err;
      int status;
    } cases[] = {
        {Status(0), "", 0},
        {Status(133),
         "Work groups cannot be removed.  There are still in-process SLP managed images\n", 0},
        {Status(13), "Cannot query work group information from the database\n", 0},
        {Status(14), "Cannot update work group information in the database\n", 0},
        {Status(-1), "error -1 (unknown status code -1) returned by 'dropwg' operation\n", 0},
        {R"({"Dssvc.DropAllWorkGroupAllocations": {"raise": {"system": "TRANSIENT"}}})",
         "cannot connect to cyclesvc\n", 255},
    };
    for (const auto& c : cases) {
      service.SetScenario(c.scenario);
      EXPECT_EQ(root.Run({"dropwg", "-nowarn"}), (e2e::Result{"", c.err, c.status})) << c.scenario;
    }
  }
  // The service has gone; its port stays in the configuration.
  EXPECT_EQ(root.Run({"dropwg", "-nowarn"}),
            (e2e::Result{"", "cannot connect to cyclesvc\n", 255}));
  cyclesvc_test::ServiceOptions mismatched;
  mismatched.mismatchedObjects = true;
  cyclesvc_test::TestService service(root.path(), "{}", mismatched);
  ASSERT_TRUE(service.ok()) << service.error();
  EXPECT_EQ(root.Run({"dropwg", "-nowarn"}),
            (e2e::Result{"", "cannot narrow SLP manager object\n", 25}));
}

}  // namespace
