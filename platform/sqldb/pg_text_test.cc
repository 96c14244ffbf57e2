#include "platform/sqldb/pg_text.h"

#include <gtest/gtest.h>

namespace sqldb {
namespace {

TEST(PgTextTest, MarksOutsideLiteralsNamesAndCommentsAreNumbered) {
  static const struct {
    const char* sql;
    const char* numbered;
    int count;
  } cases[] = {
      {"", "", 0},
      {"SELECT ?", "SELECT $1", 1},
      {"a = ? AND b IN (?, ?)", "a = $1 AND b IN ($2, $3)", 3},
      {"'?' ? \"?\" ?", "'?' $1 \"?\" $2", 2},
      {"'it''s ?' ? \"a\"\"?\"", "'it''s ?' $1 \"a\"\"?\"", 1},
      {"-- ?\n? /* ? */ ?", "-- ?\n$1 /* ? */ $2", 2},
      {"? /* ?", "$1 /* ?", 1},  // an open comment runs to the end
      {"? '?", "$1 '?", 1},      // so does an open literal
  };
  for (const auto& c : cases) {
    int count = -1;
    EXPECT_EQ(c.numbered, NumberMarks(c.sql, &count)) << c.sql;
    EXPECT_EQ(c.count, count) << c.sql;
  }
}

// Read-only, lock-wait and cancel states come from a real server in pg_engine_test.cc.
TEST(PgTextTest, SqlStatesMapOntoCodes) {
  static const struct {
    const char* state;
    bool isQuery;
    Code code;
  } cases[] = {
      {"53100", false, Code::kFull},  // first of the table
      {"53300", false, Code::kFull},  // its class
      {"53200", false, Code::kNoMemory},   {"42501", true, Code::kNoAccess},
      {"57P01", true, Code::kUnreachable}, {"08006", true, Code::kUnreachable},
      {"3D000", true, Code::kMissing},     {"3F000", true, Code::kMissing},
      {"28P01", true, Code::kNoAccess},    {"23505", false, Code::kConstraint},
      {"25P02", false, Code::kMisuse},  // last of the table
      {"42601", false, Code::kError},   // a syntax error: no entry
      {"0800", false, Code::kError},    // too short to be a state
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.code, CodeForSqlState(c.state, c.isQuery)) << c.state << " " << c.isQuery;
  }
}

// Bytea as the server sends it; what goes out (COPY fields) comes back
// through the server in pg_engine_test.cc.
TEST(PgTextTest, ByteaHexDecodesOrIsRefused) {
  std::string bytes;
  EXPECT_TRUE(DecodeByteaHex("\\x00ffA0", &bytes));
  EXPECT_EQ(std::string("\x00\xff\xa0", 3), bytes);
  EXPECT_TRUE(DecodeByteaHex("\\x", &bytes) && bytes.empty());
  for (const char* bad : {"", "\\x0", "\\xzz", "00ff"}) EXPECT_FALSE(DecodeByteaHex(bad, &bytes));
}

}  // namespace
}  // namespace sqldb
