// Orb: the backup system's ORB wrapper, one per process. It owns the
// omniORB ORB, and resolves a service object from a host, the service
// daemon's name and the object's name: the daemon's IIOP port comes from the
// installation's configuration (DAEMON_PORT.<daemon>), the object key is the
// object's name, so the reference is the address
// "corbaloc::<host>:<port>/<object name>". docs/remote.md describes every
// argument.
#ifndef PLATFORM_ORB_ORB_H_
#define PLATFORM_ORB_ORB_H_

#include <omniORB4/CORBA.h>

#include <string>

#include "platform/time_value.h"

class Orb {
 public:
  // The largest GIOP message init() lets the ORB send or accept: 64 MiB
  // (omniORB's own default is 2 MB).
  static const unsigned long kMaxMessageBytes = 64UL << 20;

  // Records the settings; nothing is started before init().
  //   orbId      identifier handed to the ORB's initialization; empty: the
  //              ORB's default.
  //   endPoints  addresses on which the process serves requests, omniORB
  //              endPoint URIs separated by blanks (for example
  //              "giop:tcp:127.0.0.1:13724"); empty: none, a pure client.
  //   options    further ORB settings as "name=value" pairs separated by
  //              ';' (omniORB configuration names); empty: none.
  //   server     true: init() also activates the ORB's INS adapter
  //              (omniINSPOA), whose objects are reached by their plain
  //              names; false: the process only makes calls.
  //   maxConnectionsPerServer  the most connections opened to one server.
  Orb(const std::string& orbId, const std::string& endPoints, const std::string& options,
      bool server, int maxConnectionsPerServer);
  Orb(const Orb&) = delete;
  Orb& operator=(const Orb&) = delete;
  // Destroys the ORB when init() created it.
  ~Orb();

  // Creates the ORB. Throws CORBA::SystemException when the ORB refuses the
  // settings. omniORB schedules its own housekeeping in threads of its own,
  // so a timer queue, when one is given, is left untouched.
  void init(ACE_Timer_Queue* timerQueue = nullptr);

  // The object `objectName` of daemon `daemonName` on `host`, or nil when the
  // daemon has no configured port, the host is empty or no address can be
  // formed. The caller owns the result (release it or hold it in a _var).
  //   connectTimeout  limit for opening a connection to the service
  //   callTimeout     limit for each call on the reference and on every
  //                   reference narrowed from it
  //   applyTimeouts   true: the two limits above replace the ORB's defaults
  //                   (no limits); false: they are ignored
  //   verify          true: the object is contacted before it is returned,
  //                   and an object that cannot be reached or does not
  //                   exist gives nil; false: the first call tells
  // Throws CORBA::SystemException only from the verification's own failures
  // other than unreachability (none are expected).
  CORBA::Object_ptr resolve(const char* host, const char* daemonName, const char* objectName,
                            const ACE_Time_Value& connectTimeout, const ACE_Time_Value& callTimeout,
                            bool& applyTimeouts, bool& verify);

  // The underlying ORB, owned by this wrapper; nil before init().
  CORBA::ORB_ptr orb() const { return orb_.in(); }
  // The INS adapter of a server-mode wrapper; nil otherwise. Owned here.
  PortableServer::POA_ptr insPoa() const { return insPoa_.in(); }

 private:
  std::string orbId_;
  std::string endPoints_;
  std::string options_;
  bool server_;
  int maxConnectionsPerServer_;
  CORBA::ORB_var orb_;
  PortableServer::POA_var insPoa_;
};

// The corbaloc address of an object: "corbaloc::<host>:<port>/<key>", an
// IPv6 host in brackets, characters of the key outside the URI's unreserved
// set escaped as %XX. Empty when the host is empty or the port is not 1-65535.
std::string CorbalocAddress(const std::string& host, int port, const std::string& objectKey);

#endif  // PLATFORM_ORB_ORB_H_
