// Start-up connection to the catalog library for operations that carry the
// catalog flag, with the catalog server, port and database that start-up
// read from the configuration (EmmServer, EmmPort, EmmCatalog).
#include "catalog/catalog_open.h"

#include <cstdio>

#include "platform/debuglog.h"
#include "platform/emmlib/emmlib.h"
#include "util/cmd_exit.h"
#include "util/process.h"

void OpenCatalogLibrary() {
  const unsigned status =
      emmlib_initialize(&EmmCid, 0, EmmServer.c_str(), EmmPort,
                        EmmCatalog.empty() ? nullptr : EmmCatalog.c_str(), logmsg, CmdName.c_str());
  if (status != 0) {
    fprintf(stderr, "%s: error connecting to EMM database, status=%u\n", CmdName.c_str(), status);
    CmdExit(1);
  }
}
