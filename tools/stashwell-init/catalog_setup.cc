// Creation of an empty catalog database for stashwell-init: the schema, this
// master server as a machine of the media manager with the names it answers
// to, and the catalog-wide settings.
#include "tools/stashwell-init/catalog_setup.h"

#include "platform/emmlib/catalog_schema.h"
#include "tools/stashwell-init/catalog_db.h"

sqldb::Location CatalogFile(const std::string& path) {
  sqldb::Location where;
  where.path = path;
  where.display = path;
  where.busyTimeoutMs = 30000;
  return where;
}

bool CreateCatalogDatabase(const sqldb::Location& where, const std::string& master,
                           std::string* error) {
  CatalogDb db;
  if (!db.Open(where, /*create=*/true, error)) return false;
  // The master is its own parent; it answers to its configured name and,
  // when that is a qualified host name, to the short name as well.
  std::string machines =
      "INSERT INTO EMM_Machine (MachineKey, ParentKey, MachinePrimaryName, MachineSwuType)"
      " VALUES (1, 1, " + CatalogDb::Quote(master) + ", 3);"
      "INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType)"
      " VALUES (1, " + CatalogDb::Quote(master) + ", 3);";
  const std::string::size_type dot = master.find('.');
  if (dot != std::string::npos && dot > 0) {
    machines += "INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType)"
                " VALUES (1, " + CatalogDb::Quote(master.substr(0, dot)) + ", 3);";
  }
  return db.Exec(std::string("BEGIN;") + kCatalogSchemaSql + machines +
                     "INSERT INTO EMM_Parameter (Name, Value) VALUES ('PolicyCategory', 0);"
                     "COMMIT;",
                 error);
}
