// Tests of the SQLite engine: a row's cells as the readers of millions of
// rows see them (also when the statement runs again), numbers held as text,
// the refusal of anything but one statement, bulk rows, and the one lock
// wait a run is allowed. What is not a catalog is tested through the
// data-access layer (connection_manager_test.cc).
#include "platform/sqldb/sqlite_engine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

#include "platform/sqldb/lock_wait.h"

namespace sqldb {
namespace {

std::unique_ptr<Database> OpenAt(const std::string& path, OpenMode mode, int timeoutMs = 0) {
  Location where;
  where.path = path;
  where.busyTimeoutMs = timeoutMs;
  std::unique_ptr<Database> db;
  std::string why;
  EXPECT_EQ(Code::kOk, Open(where, mode, &db, &why)) << why;
  return db;
}

TEST(SqliteEngine, RowCellsOfEveryType) {
  const std::unique_ptr<Database> db = OpenAt(":memory:", OpenMode::kCreate);
  ASSERT_TRUE(db);
  const std::unique_ptr<Statement> st = db->Prepare(
      "SELECT 1, 'short', X'0102', NULL UNION ALL"
      " SELECT 5000000000, 'longer text', X'', 2.75 UNION ALL"
      " SELECT -3, '  42abc', NULL, 1e30 UNION ALL"
      " SELECT 0, '-9223372036854775809', NULL, -1e30;");
  ASSERT_TRUE(st) << db->LastError();
  static const struct {
    int64_t number;
    Type textType;
    int64_t textAsNumber;
    std::string blob;
    Type lastType;
    int64_t lastAsNumber;
    std::string lastText;
  } rows[] = {
      {1, Type::kText, 0, "\x01\x02", Type::kNull, 0, ""},
      {5000000000, Type::kText, 0, "", Type::kFloat, 2, "2.75"},
      {-3, Type::kText, 42, "", Type::kFloat, INT64_MAX, "1.0e+30"},
      {0, Type::kText, INT64_MIN, "", Type::kFloat, INT64_MIN, "-1.0e+30"},
  };
  for (int pass = 0; pass < 2; ++pass) {
    for (const auto& r : rows) {
      ASSERT_EQ(Code::kRow, st->Step());
      const Row& row = st->CurrentRow();
      ASSERT_EQ(4u, row.size());
      EXPECT_EQ(r.number, row.Int64(0));
      EXPECT_EQ(r.textType, row.type(1));
      EXPECT_EQ(r.textAsNumber, row.Int64(1)) << row.Bytes(1);
      EXPECT_EQ(r.blob, row.Bytes(2));
      EXPECT_EQ(r.lastType, row.type(3));
      EXPECT_EQ(r.lastAsNumber, row.Int64(3));
      EXPECT_EQ(r.lastText, row.Bytes(3));
    }
    EXPECT_EQ(Code::kDone, st->Step()) << "pass " << pass;
    st->Reset();
  }
}

TEST(SqliteEngine, OneStatementPerPrepare) {
  const std::unique_ptr<Database> db = OpenAt(":memory:", OpenMode::kCreate);
  static const struct {
    const char* sql;
    Code code;
  } cases[] = {
      {"SELECT 1;; ", Code::kOk},    {"SELECT 1; SELECT 2", Code::kError},    {" ; ", Code::kError},
      {"SELECT FROM", Code::kError}, {"SELECT * FROM missing", Code::kError},
  };
  for (const auto& c : cases) {
    Code code = Code::kMisuse;
    const std::unique_ptr<Statement> st = db->Prepare(c.sql, &code);
    EXPECT_EQ(c.code, code) << c.sql;
    EXPECT_EQ(c.code == Code::kOk, st != nullptr) << c.sql;
  }
}

class SqliteFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char dir[] = "/tmp/sqldb-test-XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(dir));
    dir_ = dir;
    path_ = dir_ + "/catalog.db";
    ResetLockWait();
  }
  void TearDown() override {
    unlink(path_.c_str());
    rmdir(dir_.c_str());
  }

  std::string dir_;
  std::string path_;
};

TEST_F(SqliteFileTest, BulkRowsAndTheirChanges) {
  const std::unique_ptr<Database> db = OpenAt(path_, OpenMode::kCreate);
  ASSERT_EQ(Code::kOk, db->Exec("CREATE TABLE t (k INTEGER PRIMARY KEY, n, s TEXT, b BLOB)"));
  ASSERT_EQ(Code::kOk, db->Begin());
  const std::unique_ptr<BulkWriter> rows = db->Bulk("t", "k, n, s, b");
  rows->Int64(7);
  rows->Int64(1);
  rows->Text("one");
  rows->Blob("\0\1", 2);
  rows->EndRow();
  rows->Int64(7);  // the same key again: refused, and kept as the failure
  rows->Null();
  rows->Null();
  rows->Null();
  rows->EndRow();
  EXPECT_EQ(Code::kConstraint, rows->Finish());
  ASSERT_EQ(Code::kOk, db->Commit());

  const std::unique_ptr<Statement> update = db->Prepare("UPDATE t SET n = n + 1 WHERE k > ?");
  ASSERT_TRUE(update);
  for (int64_t above : {0, 7}) {
    update->Reset();
    ASSERT_EQ(Code::kOk, update->BindInt64(1, above));
    EXPECT_EQ(Code::kDone, update->Step());
    EXPECT_EQ(above == 0 ? 1 : 0, update->Changes()) << above;
  }
  EXPECT_EQ("UPDATE t SET n = n + 1 WHERE k > 7", update->ExpandedSql());

  // A read-only connection refuses writes.
  const std::unique_ptr<Database> reader = OpenAt(path_, OpenMode::kReadOnly);
  EXPECT_EQ(Code::kReadOnly, reader->Exec("DELETE FROM t"));
}

// A catalog that another process keeps locked delays a run by the busy
// timeout once, however many connections and statements meet the lock.
TEST_F(SqliteFileTest, ARunWaitsForALockOnce) {
  const std::unique_ptr<Database> holder = OpenAt(path_, OpenMode::kCreate);
  ASSERT_EQ(Code::kOk, holder->Exec("CREATE TABLE t (x)"));
  ASSERT_EQ(Code::kOk, holder->Exec("BEGIN EXCLUSIVE"));
  const int timeoutMs = 400;
  const auto start = std::chrono::steady_clock::now();
  for (int attempt = 0; attempt < 3; ++attempt) {
    Location where;
    where.path = path_;
    where.busyTimeoutMs = timeoutMs;
    std::unique_ptr<Database> db;
    std::string why;
    EXPECT_EQ(Code::kBusy, Open(where, OpenMode::kReadOnly, &db, &why)) << attempt;
  }
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  EXPECT_GE(took.count(), timeoutMs * 3 / 4);
  EXPECT_LT(took.count(), timeoutMs * 16 / 10);
}

}  // namespace
}  // namespace sqldb
