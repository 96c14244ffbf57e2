// TestService: starts the cyclesvc-test service for one installation root,
// for the duration of a test. It picks two free loopback ports, writes them
// into <root>/etc/stashwell.conf as DAEMON_PORT.cyclesvc and
// DAEMON_PORT.SWDSMFSM, starts the service with a scenario and waits until
// it serves; the destructor stops it. A run of cyclectl in that root whose
// master server and EMM server are "127.0.0.1" then talks to it.
//
//   cyclesvc_test::TestService service(root.path(),
//       R"({"Dssvc.SubSystemSuspend": {"status": 5}})");
//   ASSERT_TRUE(service.ok()) << service.error();
//   ... run cyclectl suspend ...
//   EXPECT_EQ(service.Calls(), std::vector<std::string>{
//       "Dssvc.SubSystemSuspend(SUBSYSTEM_ID_NULL)"});
//
// docs/remote.md describes the scenario and the recorded calls.
#ifndef TOOLS_CYCLESVC_TEST_TEST_SERVICE_H_
#define TOOLS_CYCLESVC_TEST_TEST_SERVICE_H_

#include <sys/types.h>

#include <string>
#include <vector>

namespace cyclesvc_test {

struct ServiceOptions {
  // The service stops by itself after this time even if the TestService is
  // never destroyed (or the test process dies).
  int lifetimeSeconds = 120;
  // Serve each object name with an object of another interface, so that the
  // tool's narrowing fails.
  bool mismatchedObjects = false;
};

class TestService {
 public:
  // Starts the service for root `root` with the JSON `scenario`.
  explicit TestService(const std::string& root, const std::string& scenario = "{}",
                       const ServiceOptions& options = ServiceOptions());
  // Stops the service: SIGTERM, and SIGKILL when it has not ended 5 s later.
  ~TestService();
  TestService(const TestService&) = delete;
  TestService& operator=(const TestService&) = delete;

  // Whether the service serves; error() says why not.
  bool ok() const { return pid_ > 0; }
  const std::string& error() const { return error_; }

  // Replaces the scenario; the next call uses it, with call counts from 0.
  void SetScenario(const std::string& scenario);
  // The calls received so far, one "Interface.operation(arguments)" each.
  std::vector<std::string> Calls() const;
  // Forgets the calls received so far.
  void ClearCalls();

  int cyclesvcPort() const { return cyclesvcPort_; }
  int dsmPort() const { return dsmPort_; }

 private:
  bool start(const ServiceOptions& options);
  void stop();

  std::string root_;
  std::string dir_;  // temporary folder of the scenario and calls files
  std::string scenarioPath_;
  std::string callsPath_;
  std::string error_;
  int cyclesvcPort_ = 0;
  int dsmPort_ = 0;
  pid_t pid_ = -1;
};

// Sets KEY = VALUE in the configuration file `confPath`, replacing the key's
// lines or appending one. False when the file cannot be read or written.
bool SetConfigValue(const std::string& confPath, const std::string& key, const std::string& value);

// A TCP port on 127.0.0.1 that nothing listens on at the moment, or 0.
int FreeLoopbackPort();

}  // namespace cyclesvc_test

#endif  // TOOLS_CYCLESVC_TEST_TEST_SERVICE_H_
