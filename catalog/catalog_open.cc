// Start-up connection to the catalog library for operations that carry the
// catalog flag: the catalog port and database come from the configuration,
// the catalog server name from start-up (EmmServer).
#include "catalog/catalog_open.h"

#include <cstdio>

#include "platform/config.h"
#include "platform/debuglog.h"
#include "platform/emmlib/emmlib.h"
#include "util/cmd_exit.h"
#include "util/process.h"

void OpenCatalogLibrary() {
  QbConfReader config;
  const std::string& catalog = config.getEmmCatalog();
  const unsigned status =
      emmlib_initialize(&EmmCid, 0, EmmServer.c_str(), config.getEmmPort(),
                        catalog.empty() ? nullptr : catalog.c_str(), logmsg, CmdName.c_str());
  if (status != 0) {
    fprintf(stderr, "%s: error connecting to EMM database, status=%u\n", CmdName.c_str(), status);
    CmdExit(1);
  }
}
