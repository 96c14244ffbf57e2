// Opening the catalog through the connection manager: leases and their
// limits, and a catalog that is missing, damaged or locked by another
// process.
#include "platform/dal/connection_manager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "platform/dal/dal_test_support.h"
#include "platform/sqldb/lock_wait.h"

namespace Corvela {
namespace Dal {
namespace {

// Leases one connection from a fresh manager on `where`: the status, or
// with `sql` the status of running it there.
int LeaseStatus(const CatalogLocation& where, const char* sql = nullptr, bool readOnly = false,
                USERID_TYPES account = USERID_DBM_ADMIN) {
  DbConnectionManager manager(2, 32, 1, 1, 30, 15, 40, account, readOnly, &where);
  MSRDbConnection* connection = nullptr;
  MSRGuard guard(&manager, connection);
  EXPECT_EQ(connection == nullptr, guard.status() != DAL_SUCCESS);
  if (guard.status() != DAL_SUCCESS || sql == nullptr) return guard.status();
  int status = -1;
  DalOdbcView* view = connection->GetOdbcView(&status);
  status = connection->Execute(view, sql, nullptr, LOG_AT_VERBOSITY_5, "t", false, false);
  connection->ReturnOdbcView(view);
  return status;
}

TEST(ConnectionManagerTest, AccountsLimitsAndLeases) {
  TempCatalog catalog;
  catalog.Exec("CREATE TABLE t (x)");
  const CatalogLocation where = catalog.location();
  EXPECT_FALSE(
      DbConnectionManager(2, 32, 1, 1, 30, 15, 40, USERID_TYPES(7), false, &where).isUsable());
  EXPECT_FALSE(
      DbConnectionManager(4, 2, 1, 1, 30, 15, 40, USERID_DBM_ADMIN, false, &where).isUsable());
  EXPECT_EQ(LeaseStatus(where, nullptr, false, USERID_TYPES(0)), DAL_MANAGER_UNUSABLE);
  MSRDbConnection* connection = nullptr;
  EXPECT_EQ(MSRGuard(nullptr, connection).status(), DAL_MANAGER_UNUSABLE);
  EXPECT_EQ(LeaseStatus(where, "INSERT INTO t VALUES (1)", true), DAL_READ_ONLY);

  DbConnectionManager manager(1, 1, 1, 1, 30, 15, 40, USERID_SLP_ADMIN, false, &where);
  MSRDbConnection* first = nullptr;
  {
    MSRGuard guard(&manager, first);
    ASSERT_EQ(guard.status(), DAL_SUCCESS);
    EXPECT_EQ(MSRGuard(&manager, connection).status(), DAL_POOL_EXHAUSTED);
  }
  // The connection outlives its lease and is handed out again.
  int status = -1;
  DalOdbcView* view = first->GetOdbcView(&status);
  EXPECT_EQ(first->Execute(view, "INSERT INTO t VALUES (1)", nullptr, LOG_AT_VERBOSITY_5, "t",
                           false, false),
            DAL_SUCCESS);
  first->ReturnOdbcView(view);
  MSRDbConnection* again = nullptr;
  MSRGuard guard(&manager, again);
  EXPECT_EQ(again, first);
}

TEST(ConnectionManagerTest, MissingDamagedOrLockedCatalogs) {
  // A missing catalog file, refused and not created: CompletionReportTest.Failures.
  TempCatalog catalog;
  CatalogLocation where = catalog.location();
  where.path = catalog.dir() + "/no/such/dir/catalog.db";
  EXPECT_EQ(LeaseStatus(where), DAL_CATALOG_MISSING);
  where.path = catalog.dir();
  EXPECT_EQ(LeaseStatus(where), DAL_CATALOG_UNREADABLE);

  std::ofstream(catalog.path()).close();
  EXPECT_EQ(LeaseStatus(catalog.location()), DAL_CATALOG_CORRUPT);  // empty file
  std::ofstream(catalog.path()) << std::string(8192, 'x');
  EXPECT_EQ(LeaseStatus(catalog.location()), DAL_CATALOG_CORRUPT);  // not a database
  std::remove(catalog.path().c_str());
  catalog.Exec("PRAGMA user_version = 1");
  EXPECT_EQ(LeaseStatus(catalog.location()), DAL_CATALOG_CORRUPT);  // no tables

  // A damaged page shows when a statement reads it.
  std::remove(catalog.path().c_str());
  catalog.Exec(
      "CREATE TABLE t (x); WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 "
      "FROM c WHERE k < 2000) INSERT INTO t SELECT randomblob(100) FROM c");
  std::fstream f(catalog.path(), std::ios::in | std::ios::out | std::ios::binary);
  f.seekp(4096 * 3);
  f << std::string(4096 * 4, '\x5a') << std::flush;
  EXPECT_EQ(LeaseStatus(catalog.location(), "SELECT count(*) FROM t WHERE length(x) = 100"),
            DAL_CATALOG_CORRUPT);

  // Another process's write lock: the layer waits for it up to the busy
  // timeout (giving up after it is what the end-to-end tests show).
  TempCatalog locked;
  locked.Exec("CREATE TABLE t (x); INSERT INTO t VALUES (1)");
  const std::unique_ptr<sqldb::Database> writer = locked.Open();
  ASSERT_EQ(writer->Exec("BEGIN EXCLUSIVE"), sqldb::Code::kOk);
  sqldb::ResetLockWait();
  std::thread finish([&writer] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    writer->Exec("INSERT INTO t VALUES (2); COMMIT");
  });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(LeaseStatus(locked.location(5000), "SELECT count(*) FROM t"), DAL_SUCCESS);
  finish.join();
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(250));
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
