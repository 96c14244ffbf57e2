// The last service sought and the debug-log line of a failure to reach it.
#include "remote/service_target.h"

#include <netdb.h>
#include <sys/socket.h>

#include <chrono>
#include <cstdio>

#include "platform/config.h"
#include "platform/debuglog.h"
#include "util/process.h"

namespace {

struct ServiceTarget {
  std::string host;
  std::string daemonName;
  std::string objectName;
  int connectTimeoutMs = 0;
  int callTimeoutMs = 0;
  std::chrono::steady_clock::time_point soughtAt;
};

ServiceTarget lastTarget;

// Empty when the host name resolves, else the resolver's reason.
std::string ResolverFailure(const std::string& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int status = getaddrinfo(host.c_str(), nullptr, &hints, &found);
  if (status == 0) {
    freeaddrinfo(found);
    return "";
  }
  return gai_strerror(status);
}

// Why `failure` ended the attempt. omniORB reports a refused connection, a
// name it cannot resolve and a connection that did not open in time alike
// (TRANSIENT, ConnectFailed): the name is tried here again, and the time the
// attempt took tells a time-out from a refusal.
std::string Reason(const CORBA::Exception* failure) {
  if (failure == nullptr) return "no address: the host name or the daemon's port is not configured";
  const CORBA::SystemException* system = CORBA::SystemException::_downcast(failure);
  const CORBA::ULong minor = system != nullptr ? system->minor() : 0;
  char text[160];
  if (CORBA::TIMEOUT::_downcast(failure) != nullptr ||
      (CORBA::TRANSIENT::_downcast(failure) != nullptr && minor == omni::TRANSIENT_CallTimedout)) {
    snprintf(text, sizeof text, "time-out: no reply within %d ms", lastTarget.callTimeoutMs);
    return text;
  }
  if (CORBA::TRANSIENT::_downcast(failure) != nullptr &&
      minor != omni::TRANSIENT_ConnectionClosed) {
    const std::string unresolved = ResolverFailure(lastTarget.host);
    if (!unresolved.empty()) return "unresolvable host name: " + unresolved;
    const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - lastTarget.soughtAt);
    if (took.count() >= lastTarget.connectTimeoutMs) {
      snprintf(text, sizeof text, "time-out: no connection within %d ms",
               lastTarget.connectTimeoutMs);
      return text;
    }
    return "connection refused";
  }
  snprintf(text, sizeof text, "connection lost (%s, minor code 0x%lx)", failure->_name(),
           static_cast<unsigned long>(minor));
  return text;
}

}  // namespace

void NoteServiceTarget(const std::string& host, const char* daemonName, const char* objectName,
                       int connectTimeoutMs, int callTimeoutMs) {
  lastTarget.host = host;
  lastTarget.daemonName = daemonName;
  lastTarget.objectName = objectName;
  lastTarget.connectTimeoutMs = connectTimeoutMs;
  lastTarget.callTimeoutMs = callTimeoutMs;
  lastTarget.soughtAt = std::chrono::steady_clock::now();
}

void LogUnreachableService(const CORBA::Exception* failure) {
  if (lastTarget.daemonName.empty()) return;  // nothing was sought yet
  const std::string line = "cannot connect to " + lastTarget.daemonName + " (object " +
                           lastTarget.objectName + ") on host '" + lastTarget.host + "' port " +
                           std::to_string(SW_daemon_port(lastTarget.daemonName.c_str())) + ": " +
                           Reason(failure);
  logmsg(16, line.c_str(), progname.c_str());
}
