// The catalog server a PostgreSQL connection URI names, for the lines of the
// configuration that name it apart from EMM_CATALOG (EMM_SERVER, EMM_PORT).
#ifndef TOOLS_STASHWELL_INIT_CATALOG_URI_H_
#define TOOLS_STASHWELL_INIT_CATALOG_URI_H_

#include <string>

struct CatalogServer {
  std::string host;  // "localhost" when the URI names none (a local socket)
  int port = 5432;
};

// Reads host and port of `uri`, a postgresql:// or postgres:// URI
// ([user[:password]@][host][:port][,host2...][/database][?settings]); the
// first host counts. False when it is no such URI or its port is not a
// number from 1 to 65535.
bool ParseCatalogUri(const std::string& uri, CatalogServer* server);

#endif  // TOOLS_STASHWELL_INIT_CATALOG_URI_H_
