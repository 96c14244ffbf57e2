// A catalog database file opened by stashwell-init: opening (creating it or
// requiring it), running SQL text with a readable error, closing on every path.
#ifndef TOOLS_STASHWELL_INIT_SQLITE_FILE_H_
#define TOOLS_STASHWELL_INIT_SQLITE_FILE_H_

#include <sqlite3.h>

#include <string>

class SqliteFile {
 public:
  SqliteFile() = default;
  ~SqliteFile() { sqlite3_close_v2(db_); }
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  // Opens `path`; with `create` a missing file is created, otherwise it must
  // exist. False with *error set on failure.
  bool Open(const std::string& path, bool create, std::string* error);
  // Runs `sql` (any number of statements). False with *error set on failure.
  bool Exec(const std::string& sql, std::string* error);

  sqlite3* get() const { return db_; }
  const std::string& path() const { return path_; }

  // `text` as an SQL string literal.
  static std::string Quote(const std::string& text);

 private:
  sqlite3* db_ = nullptr;
  std::string path_;
};

#endif  // TOOLS_STASHWELL_INIT_SQLITE_FILE_H_
