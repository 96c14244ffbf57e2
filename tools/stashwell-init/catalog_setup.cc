// Creation of an empty catalog database for stashwell-init: the schema, this
// master server as a machine of the media manager with the names it answers
// to, and the catalog-wide settings.
#include "tools/stashwell-init/catalog_setup.h"

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/emmlib/catalog_schema.h"
#include "tools/stashwell-init/catalog_db.h"

sqldb::Location CatalogFile(const std::string& path) {
  sqldb::Location where;
  where.path = path;
  where.display = path;
  where.busyTimeoutMs = 30000;
  return where;
}

sqldb::Location CatalogOnServer(const std::string& uri) {
  sqldb::Location where = sqldb::CatalogAt(uri);
  where.busyTimeoutMs = 30000;
  return where;
}

namespace {

// The one number a query yields; -1 when it fails.
int64_t Number(sqldb::Database* db, const char* sql) {
  const std::unique_ptr<sqldb::Statement> stmt = db->Prepare(sql);
  return stmt && stmt->Step() == sqldb::Code::kRow ? stmt->CurrentRow().Int64(0) : -1;
}

// The DDL that gives a PostgreSQL database an empty catalog schema: all of
// it, none when an empty catalog is there (an administrator may have made
// it), or all after dropping a catalog in use when `replace`. False with
// *error when the database holds a catalog or part of one to keep.
bool PostgresSchema(CatalogDb& db, const std::string& display, bool replace, std::string* ddl,
                    std::string* error) {
  const int64_t schemas = Number(db.get(),
                                 "SELECT count(*) FROM pg_namespace"
                                 " WHERE nspname IN ('emm_main', 'dbm_main', 'slp_main')");
  const int64_t machines =
      schemas == 3 ? Number(db.get(), "SELECT count(*) FROM emm_main.emm_machine") : -1;
  if (schemas < 0) {
    *error = db.Failure();
    return false;
  }
  if (schemas == 0) {
    *ddl = kCatalogSchemaPostgresSql;
  } else if (machines == 0 && !replace) {
    ddl->clear();
  } else if (replace) {
    *ddl = std::string(
               "SET LOCAL client_min_messages = warning;"
               "DROP SCHEMA IF EXISTS EMM_Main, DBM_Main, SLP_MAIN CASCADE;") +
           kCatalogSchemaPostgresSql;
  } else {
    *error = "the database " + display + " already holds a catalog" +
             (machines > 0 ? "" : " schema that is not complete") + "; use --force to replace it";
    return false;
  }
  return true;
}

}  // namespace

bool CreateCatalogDatabase(const sqldb::Location& where, const std::string& master, bool replace,
                           std::string* error) {
  CatalogDb db;
  if (!db.Open(where, /*create=*/true, error)) return false;
  std::string ddl = kCatalogSchemaSql;
  if (db.get()->engine() == sqldb::Engine::kPostgres &&
      !PostgresSchema(db, where.display, replace, &ddl, error))
    return false;
  // The master is its own parent; it answers to its configured name and,
  // when that is a qualified host name, to the short name as well. The
  // database gives it its key (1 in a new catalog).
  const std::string name = CatalogDb::Quote(master);
  std::string machines =
      "INSERT INTO EMM_Machine (ParentKey, MachinePrimaryName, MachineSwuType)"
      " VALUES (0, " +
      name +
      ", 3);"
      "UPDATE EMM_Machine SET ParentKey = MachineKey WHERE MachinePrimaryName = " +
      name + ";";
  std::vector<std::string> aliases = {master};
  const std::string::size_type dot = master.find('.');
  if (dot != std::string::npos && dot > 0) aliases.push_back(master.substr(0, dot));
  for (const std::string& alias : aliases) {
    machines +=
        "INSERT INTO EMM_MachineAlias (MachineKey, MachineAliasName, MachineSwuType)"
        " SELECT MachineKey, " +
        CatalogDb::Quote(alias) +
        ", 3 FROM EMM_Machine"
        " WHERE MachinePrimaryName = " +
        name + ";";
  }
  return db.Exec("BEGIN;" + ddl + machines +
                     "INSERT INTO EMM_Parameter (Name, Value) VALUES ('PolicyCategory', 0);"
                     "COMMIT;",
                 error);
}
