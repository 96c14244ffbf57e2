// Tests of the SQLite engine: a row's cells as the readers of millions of
// rows see them (also when the statement runs again), numbers held as text,
// the refusal of anything but one statement, bulk rows, and the one lock
// wait a run is allowed. What is not a catalog is tested through the
// data-access layer (connection_manager_test.cc).
#include "platform/sqldb/sqlite_engine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>

#include "platform/sqldb/lock_wait.h"

namespace sqldb {
namespace {

std::unique_ptr<Database> OpenAt(const std::string& path, OpenMode mode, int timeoutMs = 0,
                                 Code expected = Code::kOk) {
  std::unique_ptr<Database> db;
  std::string why;
  EXPECT_EQ(expected, Open(Location{Engine::kSqlite, path, "", "", timeoutMs}, mode, &db, &why))
      << why;
  return db;
}

// A file name of its own in the temporary folder, with no file there yet.
std::string TempPath(const char* name) {
  const std::string path = testing::TempDir() + name + "-" + std::to_string(getpid()) + ".db";
  unlink(path.c_str());
  return path;
}

// The rows left in `st`, a line each, every cell as its type's letter, its
// value as a number and its bytes.
std::string Cells(Statement* st) {
  std::string out;
  while (st->Step() == Code::kRow) {
    const Row& row = st->CurrentRow();
    for (size_t c = 0; c < row.size(); ++c) {
      out += std::string(c == 0 ? "" : " ") + "-iftb"[static_cast<int>(row.type(c))] +
             std::to_string(row.Int64(c)) + "'" + std::string(row.Bytes(c)) + "'";
    }
    out += '\n';
  }
  return out;
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
  for (int pass = 0; pass < 2; ++pass) {
    EXPECT_EQ(
        "i1'' t0'short' b0'\x01\x02' -0''\n"
        "i5000000000'' t0'longer text' b0'' f2'2.75'\n"
        "i-3'' t42'  42abc' -0'' f9223372036854775807'1.0e+30'\n"
        "i0'' t-9223372036854775808'-9223372036854775809' -0'' f-9223372036854775808'-1.0e+30'\n",
        Cells(st.get()))
        << "pass " << pass;
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

TEST(SqliteEngine, BulkRowsAndTheirChanges) {
  const std::string path = TempPath("sqldb-bulk");
  const std::unique_ptr<Database> db = OpenAt(path, OpenMode::kCreate);
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
  EXPECT_EQ(Code::kReadOnly, OpenAt(path, OpenMode::kReadOnly)->Exec("DELETE FROM t"));
  unlink(path.c_str());
}

// A catalog that another process keeps locked delays a run by the busy
// timeout once, however many connections meet the lock.
TEST(SqliteEngine, ARunWaitsForALockOnce) {
  const std::string path = TempPath("sqldb-lock");
  const std::unique_ptr<Database> holder = OpenAt(path, OpenMode::kCreate);
  ASSERT_EQ(Code::kOk, holder->Exec("CREATE TABLE t (x); BEGIN EXCLUSIVE"));
  ResetLockWait();
  const auto start = std::chrono::steady_clock::now();
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_FALSE(OpenAt(path, OpenMode::kReadOnly, 400, Code::kBusy)) << attempt;
  }
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, std::chrono::milliseconds(300));
  EXPECT_LT(took, std::chrono::milliseconds(640));
  unlink(path.c_str());
}

}  // namespace
}  // namespace sqldb
