// PostgreSQL's client library, loaded when a PostgreSQL catalog is first
// used instead of bound at start-up: binding libpq and what it pulls in
// (TLS, Kerberos, LDAP) made every run six times dearer to start, help and
// SQLite listings included. The engine calls libpq's functions as declared
// in libpq-fe.h; this piece defines them as forwarders to the loaded ones.
#ifndef PLATFORM_SQLDB_LIBPQ_LOADER_H_
#define PLATFORM_SQLDB_LIBPQ_LOADER_H_

#include <string>

namespace sqldb {

// The file loaded, and the Debian package that installs it.
extern const char kLibpqFile[];
extern const char kLibpqPackage[];

// Loads libpq on the first call and looks up every function the engine
// calls. True when all are there; else false with *why naming the library
// or function that is missing and the package to install. Every later call
// gives the first call's answer. The library stays loaded for the rest of
// the process: connections and libpq's own state (OpenSSL's exit handlers)
// may outlive any owner that could unload it safely.
bool LoadLibpq(std::string* why);

// The same check for the library `file` (a name as dlopen looks it up),
// which is loaded and unloaded again without touching what LoadLibpq
// loaded; for tests of the failure path.
bool CheckLibpqAt(const char* file, std::string* why);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_LIBPQ_LOADER_H_
