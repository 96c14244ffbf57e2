// A second process's hold on the test catalog: the test process keeps a
// transaction open while cyclectl runs, so that a run meets a catalog being
// written by someone else. `changes` run in it uncommitted; kWrites holds off
// writers, kEverything readers too, kRows only what the changes lock:
//   e2e::CatalogLock lock(root, "DELETE FROM T");
// SQLite takes its database lock (BEGIN IMMEDIATE or EXCLUSIVE); PostgreSQL
// locks every table of the catalog in EXCLUSIVE or ACCESS EXCLUSIVE mode. The
// transaction is rolled back when the lock goes away unless Commit() ended it.
#ifndef TESTS_E2E_CATALOG_LOCK_H_
#define TESTS_E2E_CATALOG_LOCK_H_

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/sqldb/sqldb.h"
#include "tests/e2e/harness.h"

namespace e2e {

class CatalogLock {
 public:
  enum Hold { kWrites, kEverything, kRows };

  explicit CatalogLock(const Root& root, const std::string& changes = "", Hold hold = kWrites)
      : db_(root.OpenCatalog()) {
    if (!db_) return;
    if (db_->engine() == sqldb::Engine::kSqlite) {
      Exec(hold == kEverything ? "BEGIN EXCLUSIVE" : "BEGIN IMMEDIATE");
    } else if (hold == kRows) {
      Exec("BEGIN");
    } else {
      Exec(std::string("BEGIN; DO $$ DECLARE t record; BEGIN FOR t IN SELECT schemaname, tablename"
                       " FROM pg_tables WHERE lower(schemaname) IN ('emm_main', 'dbm_main',"
                       " 'slp_main') LOOP EXECUTE format('LOCK TABLE %I.%I IN ") +
           (hold == kWrites ? "EXCLUSIVE" : "ACCESS EXCLUSIVE") +
           " MODE', t.schemaname, t.tablename); END LOOP; END $$");
    }
    if (!changes.empty()) Exec(changes);
  }
  ~CatalogLock() {
    if (db_) db_->Rollback();
  }
  CatalogLock(const CatalogLock&) = delete;
  CatalogLock& operator=(const CatalogLock&) = delete;

  void Commit() {
    EXPECT_EQ(db_->Commit(), sqldb::Code::kOk) << db_->LastError();
    db_.reset();
  }

 private:
  void Exec(const std::string& sql) {
    EXPECT_EQ(db_->Exec(sql), sqldb::Code::kOk) << sql << ": " << db_->LastError();
  }

  std::unique_ptr<sqldb::Database> db_;  // null once committed
};

}  // namespace e2e

#endif  // TESTS_E2E_CATALOG_LOCK_H_
