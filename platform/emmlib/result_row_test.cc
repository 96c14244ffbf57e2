// Tests of ResultRow: every row's own values through the values it keeps,
// also after the statement starts again; texts cut to their field; blobs
// cut or padded with zeros; NULLs.
#include "platform/emmlib/result_row.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/emmlib/sqlite_stmt.h"

namespace {

TEST(ResultRow, ReadsEachRowsValues) {
  sqlite3* db = nullptr;
  ASSERT_EQ(SQLITE_OK, sqlite3_open(":memory:", &db));
  std::unique_ptr<sqlite3, int (*)(sqlite3*)> closer(db, sqlite3_close);
  emm::Statement stmt;
  ASSERT_EQ(SQLITE_OK,
            stmt.Prepare(db, "SELECT 1, 'short', X'0102', NULL UNION ALL "
                             "SELECT 5000000000, 'longer text', X'0102030405', 7 UNION ALL "
                             "SELECT -3, NULL, NULL, 'x'"));
  emm::ResultRow row;
  row.Attach(stmt.get());
  struct Seen {
    int64_t number;
    std::string text;
    std::vector<int> blob;
    bool lastIsNull;
  };
  for (int pass = 0; pass < 2; ++pass) {
    std::vector<Seen> seen;
    while (sqlite3_step(stmt.get()) == SQLITE_ROW) {
      row.Next();
      char text[8];
      unsigned char blob[4];
      const size_t length = row.Text(1, text, sizeof text);
      EXPECT_EQ(strlen(text), length);
      row.Blob(2, blob, sizeof blob);
      seen.push_back({row.Int64(0), text, std::vector<int>(blob, blob + sizeof blob),
                      row.IsNull(3)});
    }
    ASSERT_EQ(3u, seen.size()) << "pass " << pass;
    EXPECT_EQ(1, seen[0].number);
    EXPECT_EQ("short", seen[0].text);
    EXPECT_EQ((std::vector<int>{1, 2, 0, 0}), seen[0].blob);
    EXPECT_TRUE(seen[0].lastIsNull);
    EXPECT_EQ(5000000000, seen[1].number);
    EXPECT_EQ("longer ", seen[1].text);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), seen[1].blob);
    EXPECT_FALSE(seen[1].lastIsNull);
    EXPECT_EQ(-3, seen[2].number);
    EXPECT_EQ("", seen[2].text);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0}), seen[2].blob);
    sqlite3_reset(stmt.get());
  }
}

}  // namespace
