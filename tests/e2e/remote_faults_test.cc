// How the remote operations end when the service fails them: nothing
// listening, no answer or one that is not GIOP, a service that dies in a
// call, system and user exceptions, no port configured, the wrong objects.
#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "tests/e2e/remote_fixture.h"

namespace {

// A loopback port that accepts connections and either never answers or
// answers every request with text that is not GIOP. Stops with the object.
class FakeService {
 public:
  explicit FakeService(bool garbage) {
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t length = sizeof address;
    sockaddr* name = reinterpret_cast<sockaddr*>(&address);
    if (bind(fd_, name, length) != 0 || listen(fd_, 8) != 0 || getsockname(fd_, name, &length) != 0)
      return;
    port_ = ntohs(address.sin_port);
    // Without a garbage reply nothing accepts: the kernel completes the
    // connections and the requests wait unanswered.
    if (garbage) thread_ = std::thread([this] { AnswerGarbage(); });
  }
  ~FakeService() {
    shutdown(fd_, SHUT_RDWR);  // ends a waiting accept
    if (thread_.joinable()) thread_.join();
    close(fd_);
  }
  int port() const { return port_; }

 private:
  void AnswerGarbage() {
    for (int client; (client = accept(fd_, nullptr, nullptr)) >= 0; close(client)) {
      static const char kReply[] = "HTTP/1.0 400 Bad Request\r\n\r\nnot what you expected\n";
      char request[4096];
      if (read(client, request, sizeof request) > 0)
        send(client, kReply, sizeof kReply - 1, MSG_NOSIGNAL);
    }
  }

  int fd_ = socket(AF_INET, SOCK_STREAM, 0);
  int port_ = 0;
  std::thread thread_;
};

class RemoteFaultsTest : public e2e::RemoteTest {
 protected:
  // One operation of each manager, with the calls the test service records.
  const std::vector<std::string> suspend_ = {"suspend", "-subsys", "im"};
  const std::vector<std::string> queryExp_ = {"query_exp", "-expid", "4"};
  const e2e::Result cannotConnect_{"", "cannot connect to cyclesvc\n", 255};
};

TEST_F(RemoteFaultsTest, NothingListeningOrNoAnswerEndsWithinTheTimeOuts) {
  root_.SetConfig("SERVICE_CONNECT_TIMEOUT", "500");
  root_.SetConfig("SERVICE_CALL_TIMEOUT", "700");
  FakeService silent(false);
  ASSERT_NE(silent.port(), 0);
  // The user sees the short line; the debug log says where and why.
  const struct {
    const char* host;
    int port;
    const char* reason;
    double minSeconds;
  } cases[] = {
      {"127.0.0.1", cyclesvc_test::FreeLoopbackPort(), "connection refused", 0},
      {"no-such-host.invalid", 4000, "unresolvable host name: ", 0},
      {"127.0.0.1", silent.port(), "time-out: no reply within 700 ms", 0.7},
  };
  for (const auto& c : cases) {
    root_.SetConfig("MASTER_SERVER", c.host);
    root_.SetConfig("DAEMON_PORT.cyclesvc", std::to_string(c.port));
    for (const auto* args : {&suspend_, &queryExp_}) {
      SCOPED_TRACE((*args)[0] + " " + c.reason);
      const auto start = std::chrono::steady_clock::now();
      EXPECT_EQ(Run(*args), cannotConnect_);
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      EXPECT_GE(took.count(), c.minSeconds);
      EXPECT_LT(took.count(), 5.0);
      EXPECT_THAT(
          root_.DebugLogMessages(),
          ::testing::Contains(::testing::StartsWith(
              std::string("<16> cyclectl: cannot connect to cyclesvc (object StorageService.") +
              (args == &suspend_ ? "StorageServiceMgr" : "ExpirationMgr") + ") on host '" + c.host +
              "' port " + std::to_string(c.port) + ": " + c.reason)));
    }
  }
}

TEST_F(RemoteFaultsTest, ServiceDyingInTheMiddleOfACallOrAnswerThatIsNotGiop) {
  Answer(R"({"Dssvc.SubSystemSuspend": {"die": true}})");
  EXPECT_EQ(Run(suspend_), cannotConnect_);
  EXPECT_EQ(Calls(), std::vector<std::string>{"Dssvc.SubSystemSuspend(SUBSYSTEM_ID_IMAGE_MGR)"});
  ASSERT_NO_FATAL_FAILURE(Restart(R"({"ExpMgr.QueryExpiration": {"die": true}})"));
  EXPECT_EQ(Run(queryExp_), cannotConnect_);
  EXPECT_EQ(Calls(), std::vector<std::string>{"ExpMgr.QueryExpiration(4)"});

  FakeService garbage(true);
  ASSERT_NE(garbage.port(), 0);
  root_.SetConfig("DAEMON_PORT.cyclesvc", std::to_string(garbage.port()));
  for (const auto* args : {&suspend_, &queryExp_})
    EXPECT_EQ(Run(*args), cannotConnect_) << (*args)[0];
}

TEST_F(RemoteFaultsTest, SystemAndUserExceptionsGiveTheirLadderLine) {
  const std::string unknown =
      "Caught CORBA SystemException from cyclesvc: IDL:omg.org/CORBA/UNKNOWN:1.0 (minor code "
      "0x4f4d0001 UNKNOWN_UserException, completed MAYBE)\n";
  const struct {
    const char* raise;
    std::string err;
  } cases[] = {
      {R"({"system": "BAD_PARAM", "minor": 3, "completed": "MAYBE"})",
       "Caught CORBA SystemException from cyclesvc: IDL:omg.org/CORBA/BAD_PARAM:1.0 "
       "(minor code 0x3, completed MAYBE)\n"},
      {R"({"system": "TRANSIENT"})", "cannot connect to cyclesvc\n"},
      {R"({"system": "COMM_FAILURE"})", "cannot connect to cyclesvc\n"},
      // The two managers' operations raise no user exceptions: one that
      // arrives anyway, with or without details, is UNKNOWN to the client.
      {R"({"user": "ServiceException", "details": {"originatingService": "SlpService"}})", unknown},
      {R"({"user": "IllegalArgumentException"})", unknown},
  };
  for (const auto& c : cases) {
    Answer(std::string(R"({"Dssvc.SubSystemSuspend": {"raise": )") + c.raise +
           R"(}, "ExpMgr.QueryExpiration": {"raise": )" + c.raise + "}}");
    for (const auto* args : {&suspend_, &queryExp_})
      EXPECT_EQ(Run(*args), (e2e::Result{"", c.err, 255})) << c.raise;
  }
}

// Without the service's port, or with objects of another interface, each
// manager's operations print its own message with its own status.
TEST_F(RemoteFaultsTest, UnreachableOrWrongManager) {
  root_.RemoveConfig("DAEMON_PORT.cyclesvc");
  for (const char* op : {"suspend", "resume", "one_session", "dump"})
    EXPECT_EQ(Run({op}), (e2e::Result{"", "cannot connect to the SLP manager\n", 0})) << op;
  for (const char* op : {"diskfull", "initiate_exp", "update_pfs", "query_exp", "deletedone"})
    EXPECT_EQ(Run({op}), (e2e::Result{"", "cannot connect to expiration manager\n", 0})) << op;
  EXPECT_EQ(Run({"inactive", "-lifecycle", "lc1"}),
            (e2e::Result{"", "cannot connect to the SLP manager\n", 25}));
  EXPECT_EQ(Calls(), std::vector<std::string>());
  cyclesvc_test::ServiceOptions mismatched;
  mismatched.mismatchedObjects = true;
  ASSERT_NO_FATAL_FAILURE(Restart("{}", mismatched));
  EXPECT_EQ(Run({"cancel", "-lifecycle", "lc1", "-force"}),
            (e2e::Result{"", "cannot narrow SLP manager object\n", 25}));
  EXPECT_EQ(Run({"query_exp", "-expid", "1"}),
            (e2e::Result{"", "cannot narrow expiration manager object\n", 0}));
  EXPECT_EQ(Calls(), std::vector<std::string>());
}

}  // namespace
