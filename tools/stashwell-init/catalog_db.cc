// Catalog databases of stashwell-init.
#include "tools/stashwell-init/catalog_db.h"

bool CatalogDb::Open(const sqldb::Location& where, bool create, std::string* error) {
  display_ = where.display;
  std::string why;
  const sqldb::Code code = sqldb::Open(
      where, create ? sqldb::OpenMode::kCreate : sqldb::OpenMode::kReadWrite, &db_, &why);
  if (code == sqldb::Code::kOk) return true;
  *error = "cannot open the catalog database " + why;
  return false;
}

bool CatalogDb::Exec(const std::string& sql, std::string* error) {
  if (db_->Exec(sql) == sqldb::Code::kOk) return true;
  *error = Failure();
  db_->Rollback();
  return false;
}

std::string CatalogDb::Failure() const {
  return "catalog database " + display_ + ": " + db_->LastError();
}

std::string CatalogDb::Quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) {
    quoted += c;
    if (c == '\'') quoted += '\'';
  }
  return quoted + "'";
}
