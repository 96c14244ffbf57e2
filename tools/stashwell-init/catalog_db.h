// A catalog database opened by stashwell-init: opening (creating it or
// requiring it), running SQL text with a readable error, ending on every
// path.
#ifndef TOOLS_STASHWELL_INIT_CATALOG_DB_H_
#define TOOLS_STASHWELL_INIT_CATALOG_DB_H_

#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"

class CatalogDb {
 public:
  // Opens the catalog at `where`; with `create` a missing SQLite file is
  // created, otherwise the catalog must exist. False with *error set on
  // failure.
  bool Open(const sqldb::Location& where, bool create, std::string* error);
  // Runs `sql` (any number of statements); on failure rolls back an open
  // transaction and returns false with *error set.
  bool Exec(const std::string& sql, std::string* error);
  // "catalog database <where>: <the engine's last error>".
  std::string Failure() const;

  // The open database, owned by this object.
  sqldb::Database* get() const { return db_.get(); }

  // `text` as an SQL string literal.
  static std::string Quote(const std::string& text);

 private:
  std::unique_ptr<sqldb::Database> db_;
  std::string display_;
};

#endif  // TOOLS_STASHWELL_INIT_CATALOG_DB_H_
