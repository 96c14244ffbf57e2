// Catalog creation for stashwell-init. (Placeholder until the schema lands.)
#include "tools/stashwell-init/catalog_setup.h"

bool CreateCatalogDatabase(const std::string&, const std::string&, std::string*) {
  return true;
}

bool FillDemoCatalog(const std::string&, const std::string&, long, unsigned,
                     std::string* error) {
  *error = "demo data is not available yet";
  return false;
}
