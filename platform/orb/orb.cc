// The ORB wrapper over omniORB: ORB creation from the wrapper's settings and
// resolution of daemon objects through corbaloc addresses.
#include "platform/orb/orb.h"

#include <omniORB4/omniORB.h>

#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "platform/config.h"

namespace {

// Milliseconds of a time value for omniORB's time-out settings: never
// negative, at most what a CORBA::ULong holds; 0 means no limit to omniORB,
// so a positive value below one millisecond counts as one.
CORBA::ULong TimeoutMillis(const ACE_Time_Value& tv) {
  if (tv <= ACE_Time_Value::zero) return 0;
  unsigned long long ms = static_cast<unsigned long long>(tv.sec()) * 1000ULL +
                          static_cast<unsigned long long>(tv.usec()) / 1000ULL;
  if (ms == 0) return 1;
  if (ms > 0xffffffffULL) return 0xffffffffUL;
  return static_cast<CORBA::ULong>(ms);
}

bool IsUnreserved(unsigned char c) {
  static const char kMarks[] = "-_.!~*'();/:?@&=+$,";
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
  for (const char* m = kMarks; *m; ++m) {
    if (c == static_cast<unsigned char>(*m)) return true;
  }
  return false;
}

// Splits `text` at any of `separators`, dropping empty pieces.
std::vector<std::string> Split(const std::string& text, const char* separators) {
  std::vector<std::string> pieces;
  std::string::size_type start = 0;
  while (start <= text.size()) {
    std::string::size_type end = text.find_first_of(separators, start);
    if (end == std::string::npos) end = text.size();
    if (end > start) pieces.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return pieces;
}

std::string Trim(const std::string& s) {
  std::string::size_type b = s.find_first_not_of(" \t");
  if (b == std::string::npos) return "";
  std::string::size_type e = s.find_last_not_of(" \t");
  return s.substr(b, e - b + 1);
}

}  // namespace

std::string CorbalocAddress(const std::string& host, int port, const std::string& objectKey) {
  if (host.empty() || port < 1 || port > 65535) return "";
  std::string address = "corbaloc::";
  bool ipv6 = host.find(':') != std::string::npos && host.front() != '[';
  address += ipv6 ? "[" + host + "]" : host;
  address += ":" + std::to_string(port) + "/";
  for (unsigned char c : objectKey) {
    if (IsUnreserved(c) && c != '%') {
      address += static_cast<char>(c);
    } else {
      char escaped[4];
      snprintf(escaped, sizeof escaped, "%%%02X", c);
      address += escaped;
    }
  }
  return address;
}

Orb::Orb(const std::string& orbId, const std::string& endPoints, const std::string& options,
         bool server, int maxConnectionsPerServer)
    : orbId_(orbId),
      endPoints_(endPoints),
      options_(options),
      server_(server),
      maxConnectionsPerServer_(maxConnectionsPerServer) {}

Orb::~Orb() {
  if (CORBA::is_nil(orb_)) return;
  try {
    insPoa_ = PortableServer::POA::_nil();
    orb_->destroy();
  } catch (const CORBA::Exception&) {
    // The process is letting the ORB go; nothing is left to report to.
  }
}

void Orb::init(ACE_Timer_Queue* /*timerQueue*/) {
  // omniORB copies the option texts during ORB_init, so they only need to
  // outlive the call.
  std::vector<std::pair<std::string, std::string>> settings;
  for (const std::string& endPoint : Split(endPoints_, " \t")) {
    settings.emplace_back("endPoint", endPoint);
  }
  if (maxConnectionsPerServer_ > 0) {
    settings.emplace_back("maxGIOPConnectionPerServer", std::to_string(maxConnectionsPerServer_));
  }
  // A busy service's dump passes omniORB's default of 2 MB; the limit that
  // stays guards against a runaway reply (docs/remote.md).
  settings.emplace_back("giopMaxMsgSize", std::to_string(kMaxMessageBytes));
  for (const std::string& pair : Split(options_, ";")) {
    std::string::size_type eq = pair.find('=');
    if (eq == std::string::npos) throw CORBA::BAD_PARAM(0, CORBA::COMPLETED_NO);
    settings.emplace_back(Trim(pair.substr(0, eq)), Trim(pair.substr(eq + 1)));
  }
  std::unique_ptr<const char*[][2]> table(new const char*[settings.size() + 1][2]);
  for (size_t i = 0; i < settings.size(); ++i) {
    table[i][0] = settings[i].first.c_str();
    table[i][1] = settings[i].second.c_str();
  }
  table[settings.size()][0] = nullptr;
  table[settings.size()][1] = nullptr;

  int argc = 0;
  char* argv[] = {nullptr};
  const char* id = orbId_.empty() ? "omniORB4" : orbId_.c_str();
  orb_ = CORBA::ORB_init(argc, argv, id, table.get());
  if (server_) {
    CORBA::Object_var poaObject = orb_->resolve_initial_references("omniINSPOA");
    insPoa_ = PortableServer::POA::_narrow(poaObject);
    PortableServer::POAManager_var manager = insPoa_->the_POAManager();
    manager->activate();
  }
}

CORBA::Object_ptr Orb::resolve(const char* host, const char* daemonName, const char* objectName,
                               const ACE_Time_Value& connectTimeout,
                               const ACE_Time_Value& callTimeout, bool& applyTimeouts,
                               bool& verify) {
  if (CORBA::is_nil(orb_) || host == nullptr || daemonName == nullptr || objectName == nullptr) {
    return CORBA::Object::_nil();
  }
  std::string address = CorbalocAddress(host, SW_daemon_port(daemonName), objectName);
  if (address.empty()) return CORBA::Object::_nil();

  if (applyTimeouts) {
    // ORB-wide, so that references narrowed from this one keep the limits.
    omniORB::setClientConnectTimeout(TimeoutMillis(connectTimeout));
    omniORB::setClientCallTimeout(TimeoutMillis(callTimeout));
  }
  CORBA::Object_var object;
  try {
    object = orb_->string_to_object(address.c_str());
  } catch (const CORBA::BAD_PARAM&) {
    // A host name that no address can carry.
    return CORBA::Object::_nil();
  }
  if (verify && !CORBA::is_nil(object)) {
    try {
      if (object->_non_existent()) return CORBA::Object::_nil();
    } catch (const CORBA::TRANSIENT&) {
      return CORBA::Object::_nil();
    } catch (const CORBA::COMM_FAILURE&) {
      return CORBA::Object::_nil();
    } catch (const CORBA::TIMEOUT&) {
      return CORBA::Object::_nil();
    } catch (const CORBA::OBJECT_NOT_EXIST&) {
      return CORBA::Object::_nil();
    }
  }
  return object._retn();
}
