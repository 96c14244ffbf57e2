// Where the run last sought a remote service. The user sees only the short
// "cannot connect" line of the service; the debug log gets the host, the
// port, the daemon and why the connection failed, at severity 16.
#ifndef REMOTE_SERVICE_TARGET_H_
#define REMOTE_SERVICE_TARGET_H_

#include <omniORB4/CORBA.h>

#include <string>

// Records the service about to be resolved: `host` and `daemonName` (whose
// port the configuration gives), the object sought, and the two time-outs the
// reference carries. Starts the clock that tells a refusal from a time-out.
void NoteServiceTarget(const std::string& host, const char* daemonName, const char* objectName,
                       int connectTimeoutMs, int callTimeoutMs);

// Logs why the last noted service cannot be reached. `failure` is the
// exception that said so, or null when no reference could be formed (no host
// or no port).
void LogUnreachableService(const CORBA::Exception* failure);

#endif  // REMOTE_SERVICE_TARGET_H_
