// Tests of ResultRow's copies into fixed fields: texts cut to their field
// with their length returned, numbers in text fields as digits, blobs cut or
// padded with zeros, NULLs as empty texts and zeros.
#include "platform/emmlib/result_row.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

TEST(ResultRow, CopiesIntoFixedFields) {
  sqldb::Location memory;
  memory.path = ":memory:";
  std::unique_ptr<sqldb::Database> db;
  std::string why;
  ASSERT_EQ(sqldb::Code::kOk, sqldb::Open(memory, sqldb::OpenMode::kCreate, &db, &why)) << why;
  const std::unique_ptr<sqldb::Statement> stmt = db->Prepare(
      "SELECT 'short', X'0102' UNION ALL SELECT 'longer text', X'0102030405'"
      " UNION ALL SELECT 1234567890, NULL UNION ALL SELECT NULL, 'ab'");
  ASSERT_TRUE(stmt);
  static const struct {
    const char* text;
    std::vector<int> blob;
  } expected[] = {{"short", {1, 2, 0, 0}},
                  {"longer ", {1, 2, 3, 4}},
                  {"1234567", {0, 0, 0, 0}},
                  {"", {'a', 'b', 0, 0}}};
  emm::ResultRow row;
  row.Attach(stmt.get());
  for (const auto& e : expected) {
    ASSERT_EQ(sqldb::Code::kRow, stmt->Step());
    row.Next();
    char text[8];
    unsigned char blob[4];
    EXPECT_EQ(strlen(e.text), row.Text(0, text, sizeof text));
    EXPECT_STREQ(e.text, text);
    row.Blob(1, blob, sizeof blob);
    EXPECT_EQ(e.blob, std::vector<int>(blob, blob + sizeof blob)) << e.text;
  }
  EXPECT_EQ(sqldb::Code::kDone, stmt->Step());
}

}  // namespace
