// Catalog database files of stashwell-init.
#include "tools/stashwell-init/sqlite_file.h"

bool SqliteFile::Open(const std::string& path, bool create, std::string* error) {
  path_ = path;
  const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
  const int rc = sqlite3_open_v2(path.c_str(), &db_, flags, nullptr);
  if (rc != SQLITE_OK) {
    *error = "cannot open the catalog database " + path + ": " + sqlite3_errstr(rc);
    return false;
  }
  sqlite3_busy_timeout(db_, 30000);
  return true;
}

bool SqliteFile::Exec(const std::string& sql, std::string* error) {
  char* message = nullptr;
  if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) == SQLITE_OK) return true;
  *error = "catalog database " + path_ + ": " + (message != nullptr ? message : "failed");
  sqlite3_free(message);
  sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
  return false;
}

std::string SqliteFile::Quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) {
    quoted += c;
    if (c == '\'') quoted += '\'';
  }
  return quoted + "'";
}
