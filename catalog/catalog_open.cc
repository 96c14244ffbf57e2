// Start-up catalog connection. (Placeholder until the catalog library lands.)
#include "catalog/catalog_open.h"

void OpenCatalogLibrary() {}
