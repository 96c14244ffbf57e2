// How the remote operations end when the service fails them: nothing
// listening, a port that accepts and never answers, an answer that is not
// GIOP, a service that dies in the middle of a call, system and user
// exceptions. Each gives its line of the exception ladder and status -1
// (255), within the configured time-outs, for an SLP-manager and an
// expiration-manager operation alike.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
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
    fd_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (fd_ < 0 || bind(fd_, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
        listen(fd_, 8) != 0 ||
        getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
      return;
    }
    port_ = ntohs(address.sin_port);
    // Without a garbage reply nothing accepts: the kernel completes the
    // connections and the requests wait unanswered.
    if (garbage) thread_ = std::thread([this] { AnswerGarbage(); });
  }
  ~FakeService() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    if (fd_ >= 0) close(fd_);
  }
  int port() const { return port_; }

 private:
  void AnswerGarbage() {
    while (!stop_) {
      pollfd p = {fd_, POLLIN, 0};
      if (poll(&p, 1, 50) <= 0) continue;
      int client = accept(fd_, nullptr, nullptr);
      if (client < 0) continue;
      char request[4096];
      pollfd c = {client, POLLIN, 0};
      if (poll(&c, 1, 2000) > 0 && read(client, request, sizeof request) > 0) {
        static const char kReply[] = "HTTP/1.0 400 Bad Request\r\n\r\nnot what you expected\n";
        ssize_t written = write(client, kReply, sizeof kReply - 1);
        (void)written;  // a client that went away needs no answer
      }
      close(client);
    }
  }

  int fd_ = -1;
  int port_ = 0;
  std::atomic<bool> stop_{false};
  std::thread thread_;
};

class RemoteFaultsTest : public e2e::RemoteTest {
 protected:
  // One operation of each manager, with the calls the test service records.
  const std::vector<std::string> suspend_ = {"suspend", "-subsys", "im"};
  const std::vector<std::string> queryExp_ = {"query_exp", "-expid", "4"};

  // Runs `args` and returns the result and the seconds it took.
  e2e::Result TimedRun(const std::vector<std::string>& args, double* seconds) const {
    auto start = std::chrono::steady_clock::now();
    e2e::Result r = Run(args);
    *seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return r;
  }
};

TEST_F(RemoteFaultsTest, NothingListeningOrNoAnswerEndsWithinTheTimeOuts) {
  root_.SetConfig("SERVICE_CONNECT_TIMEOUT", "500");
  root_.SetConfig("SERVICE_CALL_TIMEOUT", "700");
  const e2e::Result cannotConnect{"", "cannot connect to cyclesvc\n", 255};
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
      double seconds;
      EXPECT_EQ(TimedRun(*args, &seconds), cannotConnect) << (*args)[0] << " " << c.reason;
      EXPECT_GE(seconds, c.minSeconds) << (*args)[0] << " " << c.reason;
      EXPECT_LT(seconds, 5.0) << (*args)[0] << " " << c.reason;
      const std::vector<std::string> log = root_.DebugLogMessages();
      ASSERT_GE(log.size(), 2u);
      const std::string& line = log[log.size() - 2];  // the last is the exit
      const std::string object =
          args == &suspend_ ? "StorageService.StorageServiceMgr" : "StorageService.ExpirationMgr";
      EXPECT_EQ(
          line.rfind("<16> cyclectl: cannot connect to cyclesvc (object " + object + ") on host '" +
                         c.host + "' port " + std::to_string(c.port) + ": " + c.reason,
                     0),
          0u)
          << line;
    }
  }
}

TEST_F(RemoteFaultsTest, ServiceDyingInTheMiddleOfACallOrAnswerThatIsNotGiop) {
  const e2e::Result cannotConnect{"", "cannot connect to cyclesvc\n", 255};
  Answer(R"({"Dssvc.SubSystemSuspend": {"die": true}})");
  EXPECT_EQ(Run(suspend_), cannotConnect);
  EXPECT_EQ(Calls(), std::vector<std::string>{"Dssvc.SubSystemSuspend(SUBSYSTEM_ID_IMAGE_MGR)"});
  ASSERT_NO_FATAL_FAILURE(Restart(R"({"ExpMgr.QueryExpiration": {"die": true}})"));
  EXPECT_EQ(Run(queryExp_), cannotConnect);
  EXPECT_EQ(Calls(), std::vector<std::string>{"ExpMgr.QueryExpiration(4)"});

  FakeService garbage(true);
  ASSERT_NE(garbage.port(), 0);
  root_.SetConfig("DAEMON_PORT.cyclesvc", std::to_string(garbage.port()));
  for (const auto* args : {&suspend_, &queryExp_})
    EXPECT_EQ(Run(*args), cannotConnect) << (*args)[0];
}

TEST_F(RemoteFaultsTest, SystemAndUserExceptionsGiveTheirLadderLine) {
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
      {R"({"user": "ServiceException", "details": {"originatingService": "SlpService"}})",
       "Caught CORBA SystemException from cyclesvc: IDL:omg.org/CORBA/UNKNOWN:1.0 "},
      {R"({"user": "IllegalArgumentException"})",
       "Caught CORBA SystemException from cyclesvc: IDL:omg.org/CORBA/UNKNOWN:1.0 "},
  };
  for (const auto& c : cases) {
    Answer(std::string(R"({"Dssvc.SubSystemSuspend": {"raise": )") + c.raise +
           R"(}, "ExpMgr.QueryExpiration": {"raise": )" + c.raise + "}}");
    for (const auto* args : {&suspend_, &queryExp_}) {
      e2e::Result r = Run(*args);
      EXPECT_EQ(r.out, "") << c.raise;
      EXPECT_EQ(r.err.substr(0, c.err.size()), c.err) << c.raise;
      EXPECT_EQ(r.status, 255) << c.raise;
    }
  }
}

}  // namespace
