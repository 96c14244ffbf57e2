// A fixture for the operations that act through the remote services: an
// installation root whose master and EMM server are the loopback address,
// with the test service running on it. A test sets the service's answers,
// runs cyclectl and compares the calls the service received:
//   Answer(R"({"Dssvc.SubSystemSuspend": {"status": 5}})");
//   EXPECT_EQ(Calls(), (std::vector<std::string>{"Dssvc.SubSystemSuspend(SUBSYSTEM_ID_NULL)"}));
#ifndef TESTS_E2E_REMOTE_FIXTURE_H_
#define TESTS_E2E_REMOTE_FIXTURE_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/harness.h"
#include "tools/cyclesvc-test/test_service.h"

namespace e2e {

inline RootOptions LoopbackRoot() {
  RootOptions options;
  options.master = options.emmServer = "127.0.0.1";
  return options;
}

class RemoteTest : public ::testing::Test {
 protected:
  void SetUp() override { Restart(); }

  // Starts a new test service in place of the running one.
  void Restart(const std::string& scenario = "{}",
               const cyclesvc_test::ServiceOptions& options = cyclesvc_test::ServiceOptions()) {
    service_ = std::make_unique<cyclesvc_test::TestService>(root_.path(), scenario, options);
    ASSERT_TRUE(service_->ok()) << service_->error();
  }

  // Replaces the scenario and forgets the calls recorded so far.
  void Answer(const std::string& scenario) {
    service_->SetScenario(scenario);
    service_->ClearCalls();
  }
  std::vector<std::string> Calls() const { return service_->Calls(); }
  // True when the debug log holds `line` (as DebugLogMessages gives it).
  bool Logged(const std::string& line) const {
    const std::vector<std::string> log = root_.DebugLogMessages();
    return std::find(log.begin(), log.end(), line) != log.end();
  }
  Result Run(const std::vector<std::string>& args, const std::string& stdinText = "",
             const RunOptions& options = RunOptions()) const {
    return root_.Run(args, stdinText, options);
  }

  Root root_{LoopbackRoot()};
  std::unique_ptr<cyclesvc_test::TestService> service_;
};

}  // namespace e2e

#endif  // TESTS_E2E_REMOTE_FIXTURE_H_
