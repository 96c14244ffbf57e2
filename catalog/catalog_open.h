// Start-up connection to the catalog library for operations that carry the
// catalog flag.
#ifndef CATALOG_CATALOG_OPEN_H_
#define CATALOG_CATALOG_OPEN_H_

// Opens the catalog library into EmmCid with the configured catalog server,
// port and catalog text. On failure prints "<cmd>: error connecting to EMM
// database, status=<n>" on standard error and ends the run with CmdExit(1).
void OpenCatalogLibrary();

#endif  // CATALOG_CATALOG_OPEN_H_
