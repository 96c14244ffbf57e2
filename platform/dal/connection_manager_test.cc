// Opening the catalog through the connection manager: leases and their
// limits, and a catalog that is missing, damaged or locked by another
// process.
#include "platform/dal/connection_manager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "platform/dal/dal_test_support.h"
#include "platform/sqldb/lock_wait.h"

namespace Corvela {
namespace Dal {
namespace {

// Leases one connection from a fresh manager on `where`; the status.
int LeaseStatus(const CatalogLocation& where, bool readOnly = false) {
  DbConnectionManager manager(2, 32, 1, 1, 30, 15, 40, USERID_DBM_ADMIN, readOnly, &where);
  MSRDbConnection* connection = nullptr;
  MSRGuard guard(&manager, connection);
  EXPECT_EQ(connection == nullptr, guard.status() != DAL_SUCCESS);
  return guard.status();
}

TEST(ConnectionManagerTest, UsableOnlyForKnownAccountsAndLimits) {
  TempCatalog catalog;
  catalog.Exec("CREATE TABLE t (x)");
  const CatalogLocation where = catalog.location();
  EXPECT_TRUE(
      DbConnectionManager(2, 32, 1, 1, 30, 15, 40, USERID_SLP_ADMIN, false, &where).isUsable());
  EXPECT_FALSE(
      DbConnectionManager(2, 32, 1, 1, 30, 15, 40, USERID_TYPES(7), false, &where).isUsable());
  EXPECT_FALSE(
      DbConnectionManager(4, 2, 1, 1, 30, 15, 40, USERID_DBM_ADMIN, false, &where).isUsable());

  DbConnectionManager unusable(2, 32, 1, 1, 30, 15, 40, USERID_TYPES(0), false, &where);
  MSRDbConnection* connection = nullptr;
  EXPECT_EQ(MSRGuard(&unusable, connection).status(), DAL_MANAGER_UNUSABLE);
  EXPECT_EQ(MSRGuard(nullptr, connection).status(), DAL_MANAGER_UNUSABLE);
}

TEST(ConnectionManagerTest, LeasesAreLimitedAndGivenBack) {
  TempCatalog catalog;
  catalog.Exec("CREATE TABLE t (x)");
  const CatalogLocation where = catalog.location();
  DbConnectionManager manager(1, 1, 1, 1, 30, 15, 40, USERID_SLP_ADMIN, false, &where);
  MSRDbConnection* first = nullptr;
  {
    MSRGuard guard(&manager, first);
    ASSERT_EQ(guard.status(), DAL_SUCCESS);
    MSRDbConnection* second = nullptr;
    EXPECT_EQ(MSRGuard(&manager, second).status(), DAL_POOL_EXHAUSTED);
    EXPECT_EQ(second, nullptr);
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

TEST(ConnectionManagerTest, MissingOrDamagedCatalogsGiveStatuses) {
  TempCatalog catalog;
  // Missing: refused, and never created.
  EXPECT_EQ(LeaseStatus(catalog.location()), DAL_CATALOG_MISSING);
  EXPECT_FALSE(std::ifstream(catalog.path()).good());
  CatalogLocation inMissingDir = catalog.location();
  inMissingDir.path = catalog.dir() + "/no/such/dir/catalog.db";
  EXPECT_EQ(LeaseStatus(inMissingDir), DAL_CATALOG_MISSING);
  CatalogLocation directory = catalog.location();
  directory.path = catalog.dir();
  EXPECT_EQ(LeaseStatus(directory), DAL_CATALOG_UNREADABLE);

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
  {
    std::fstream f(catalog.path(), std::ios::in | std::ios::out | std::ios::binary);
    f.seekp(4096 * 3);
    f << std::string(4096 * 4, '\x5a');
  }
  const CatalogLocation where = catalog.location();
  DbConnectionManager manager(2, 32, 1, 1, 30, 15, 40, USERID_DBM_ADMIN, false, &where);
  MSRDbConnection* connection = nullptr;
  MSRGuard guard(&manager, connection);
  ASSERT_EQ(guard.status(), DAL_SUCCESS);
  int status = -1;
  DalOdbcView* view = connection->GetOdbcView(&status);
  uint32_t count = 0;
  EXPECT_EQ(connection->ULongReturningQuery(view, "SELECT count(*) FROM t WHERE length(x) = 100",
                                            nullptr, &count, LOG_AT_VERBOSITY_3, "q", "ULong"),
            DAL_CATALOG_CORRUPT);
  connection->ReturnOdbcView(view);
}

class ReadOnlyManagerTest : public DalConnectionTest {};

TEST_F(ReadOnlyManagerTest, CannotWrite) {
  catalog_.Exec("CREATE TABLE t (x)");
  Connect(true);
  EXPECT_EQ(Execute("INSERT INTO t VALUES (1)"), DAL_READ_ONLY);
}

// Another process's write lock: the layer waits for it up to the busy
// timeout (giving up after it is what the end-to-end tests show).
class LockedCatalogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    catalog_.Exec("CREATE TABLE t (x); INSERT INTO t VALUES (1)");
    writer_ = catalog_.Open();
    ASSERT_EQ(writer_->Exec("BEGIN EXCLUSIVE"), sqldb::Code::kOk);
    sqldb::ResetLockWait();
  }

  // Runs a count on the locked catalog; the status and how long it took.
  int Count(int busyTimeoutMs, std::chrono::milliseconds* took) {
    const auto start = std::chrono::steady_clock::now();
    const CatalogLocation where = catalog_.location(busyTimeoutMs);
    DbConnectionManager manager(2, 32, 1, 1, 30, 15, 40, USERID_DBM_ADMIN, false, &where);
    MSRDbConnection* connection = nullptr;
    MSRGuard guard(&manager, connection);
    int status = guard.status();
    if (status == DAL_SUCCESS) {
      DalOdbcView* view = connection->GetOdbcView(&status);
      uint32_t count = 0;
      status = connection->ULongReturningQuery(view, "SELECT count(*) FROM t", nullptr, &count,
                                               LOG_AT_VERBOSITY_3, "q", "ULong");
    }
    *took = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                  start);
    return status;
  }

  TempCatalog catalog_;
  std::unique_ptr<sqldb::Database> writer_;
};

TEST_F(LockedCatalogTest, WaitsForTheWriterToFinish) {
  std::thread writer([this] {
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    writer_->Exec("INSERT INTO t VALUES (2); COMMIT");
  });
  std::chrono::milliseconds took;
  EXPECT_EQ(Count(5000, &took), DAL_SUCCESS);
  writer.join();
  EXPECT_GE(took.count(), 250);
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
