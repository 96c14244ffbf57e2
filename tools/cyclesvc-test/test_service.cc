// Starting, scripting and stopping the test service for a test.
#include "tools/cyclesvc-test/test_service.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

namespace cyclesvc_test {

namespace {

constexpr int kStartAttempts = 5;
constexpr int kReadyTimeoutMs = 20000;
constexpr int kStopGraceMs = 5000;

long long NowMs() {
  timespec ts;
  clock_gettime(CLOCK_MONOTONIC, &ts);
  return static_cast<long long>(ts.tv_sec) * 1000 + ts.tv_nsec / 1000000;
}

bool WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  out.close();
  return !out.fail();
}

// Reads `fd` until a line "ready" arrives (true), or the end of input, an
// error or the time limit (false).
bool WaitForReady(int fd, int timeoutMs) {
  std::string seen;
  long long deadline = NowMs() + timeoutMs;
  for (;;) {
    long long left = deadline - NowMs();
    if (left <= 0) return false;
    pollfd p = {fd, POLLIN, 0};
    int r = poll(&p, 1, static_cast<int>(left));
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) return false;
    char buffer[256];
    ssize_t n = read(fd, buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    seen.append(buffer, static_cast<size_t>(n));
    if (seen.find("ready\n") != std::string::npos) return true;
  }
}

}  // namespace

int FreeLoopbackPort() {
  int s = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (s < 0) return 0;
  sockaddr_in address;
  memset(&address, 0, sizeof address);
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = 0;
  socklen_t length = sizeof address;
  int port = 0;
  if (bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
      getsockname(s, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
    port = ntohs(address.sin_port);
  }
  close(s);
  return port;
}

bool SetConfigValue(const std::string& confPath, const std::string& key, const std::string& value) {
  std::ifstream in(confPath);
  if (!in) return false;
  std::string text;
  std::string line;
  while (std::getline(in, line)) {
    std::string::size_type b = line.find_first_not_of(" \t");
    std::string::size_type eq = line.find('=');
    if (b != std::string::npos && eq != std::string::npos) {
      std::string name = line.substr(b, eq - b);
      name.erase(name.find_last_not_of(" \t") + 1);
      if (name == key) continue;
    }
    text += line + "\n";
  }
  text += key + " = " + value + "\n";
  return WriteFile(confPath, text);
}

TestService::TestService(const std::string& root, const std::string& scenario,
                         const ServiceOptions& options)
    : root_(root) {
  char dir[] = "/tmp/cyclesvc-test.XXXXXX";
  if (mkdtemp(dir) == nullptr) {
    error_ = std::string("mkdtemp: ") + strerror(errno);
    return;
  }
  dir_ = dir;
  scenarioPath_ = dir_ + "/scenario.json";
  callsPath_ = dir_ + "/calls.txt";
  SetScenario(scenario);
  ClearCalls();
  for (int attempt = 0; attempt < kStartAttempts && !ok(); ++attempt) start(options);
}

TestService::~TestService() {
  stop();
  if (!dir_.empty()) {
    unlink(scenarioPath_.c_str());
    unlink(callsPath_.c_str());
    rmdir(dir_.c_str());
  }
}

bool TestService::start(const ServiceOptions& options) {
  cyclesvcPort_ = FreeLoopbackPort();
  dsmPort_ = FreeLoopbackPort();
  if (cyclesvcPort_ == 0 || dsmPort_ == 0 || cyclesvcPort_ == dsmPort_) {
    error_ = "no free loopback ports";
    return false;
  }
  std::string conf = root_ + "/etc/stashwell.conf";
  if (!SetConfigValue(conf, "DAEMON_PORT.cyclesvc", std::to_string(cyclesvcPort_)) ||
      !SetConfigValue(conf, "DAEMON_PORT.SWDSMFSM", std::to_string(dsmPort_))) {
    error_ = "cannot update " + conf;
    return false;
  }

  int fds[2];
  if (pipe2(fds, O_CLOEXEC) != 0) {
    error_ = std::string("pipe: ") + strerror(errno);
    return false;
  }
  std::string lifetime = std::to_string(options.lifetimeSeconds);
  const char* objects = options.mismatchedObjects ? "mismatched" : "normal";
  pid_t parent = getpid();
  pid_t pid = fork();
  if (pid < 0) {
    error_ = std::string("fork: ") + strerror(errno);
    close(fds[0]);
    close(fds[1]);
    return false;
  }
  if (pid == 0) {
    // The service ends with the test process, whatever becomes of the test.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(1);
    dup2(fds[1], STDOUT_FILENO);
    execl(CYCLESVC_TEST_PROGRAM, "cyclesvc-test", "--root", root_.c_str(), "--scenario",
          scenarioPath_.c_str(), "--calls", callsPath_.c_str(), "--lifetime", lifetime.c_str(),
          "--objects", objects, static_cast<char*>(nullptr));
    _exit(127);
  }
  close(fds[1]);
  bool ready = WaitForReady(fds[0], kReadyTimeoutMs);
  close(fds[0]);
  if (!ready) {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    error_ = "the test service did not report ready (see its messages above)";
    return false;
  }
  pid_ = pid;
  error_.clear();
  return true;
}

void TestService::stop() {
  if (pid_ <= 0) return;
  kill(pid_, SIGTERM);
  long long deadline = NowMs() + kStopGraceMs;
  while (waitpid(pid_, nullptr, WNOHANG) == 0) {
    if (NowMs() >= deadline) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
      break;
    }
    usleep(10000);
  }
  pid_ = -1;
}

void TestService::SetScenario(const std::string& scenario) {
  // Replaced in one step, so that the service never reads half a file.
  std::string temporary = scenarioPath_ + ".new";
  if (WriteFile(temporary, scenario)) rename(temporary.c_str(), scenarioPath_.c_str());
}

std::vector<std::string> TestService::Calls() const {
  std::vector<std::string> calls;
  std::ifstream in(callsPath_);
  std::string line;
  while (std::getline(in, line)) calls.push_back(line);
  return calls;
}

void TestService::ClearCalls() { WriteFile(callsPath_, ""); }

}  // namespace cyclesvc_test
