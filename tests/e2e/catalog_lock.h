// A second process's hold on the test catalog: the test process opens the
// catalog itself and keeps a transaction open while cyclectl runs, so that
// a run meets a catalog being read or written by someone else.
//
//   e2e::CatalogLock lock(root, "BEGIN IMMEDIATE");  // a writer's lock
//   root.Run({"remove_repl", ...});                   // waits, then fails
//
// The transaction is rolled back when the lock goes away unless Commit()
// ended it first.
#ifndef TESTS_E2E_CATALOG_LOCK_H_
#define TESTS_E2E_CATALOG_LOCK_H_

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "tests/e2e/harness.h"

namespace e2e {

class CatalogLock {
 public:
  // Opens db/catalog.db of `root` and runs `statements`, which begin the
  // transaction ("BEGIN IMMEDIATE" for a writer, "BEGIN; SELECT ..." for a
  // reader, followed by changes that stay uncommitted).
  CatalogLock(const Root& root, const std::string& statements) {
    const std::string file = root.path() + "/db/catalog.db";
    EXPECT_EQ(sqlite3_open(file.c_str(), &db_), SQLITE_OK) << file;
    Exec(statements);
  }
  ~CatalogLock() {
    if (db_ != nullptr && !sqlite3_get_autocommit(db_)) Exec("ROLLBACK");
    sqlite3_close(db_);
  }
  CatalogLock(const CatalogLock&) = delete;
  CatalogLock& operator=(const CatalogLock&) = delete;

  void Commit() { Exec("COMMIT"); }

 private:
  void Exec(const std::string& sql) {
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK)
        << sql << ": " << (error != nullptr ? error : "");
    sqlite3_free(error);
  }

  sqlite3* db_ = nullptr;
};

}  // namespace e2e

#endif  // TESTS_E2E_CATALOG_LOCK_H_
