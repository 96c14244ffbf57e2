// Statements through a connection: every value type in both directions,
// batch fetches, end of data, parameter lists, row counts and the failures
// a caller can provoke.
#include "platform/dal/db_connection.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform/dal/dal_test_support.h"

namespace Corvela {
namespace Dal {
namespace {

class DbConnectionTest : public DalConnectionTest {
 protected:
  void SetUp() override {
    catalog_.Exec("CREATE TABLE v (x); CREATE TABLE n (k INTEGER PRIMARY KEY, name TEXT)");
    Connect();
  }

  // Inserts `count` rows 1..count into n, names "row<k>".
  void FillNumbers(int count) {
    catalog_.Exec("WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM c WHERE k < " +
                  std::to_string(count) + ") INSERT INTO n SELECT k, 'row' || k FROM c");
  }

  // Fetches column 1 of `sql` into a 40-byte row filled with 0xAB, bound
  // at offset 8 with `valueType` and `size`.
  int FetchOne(const std::string& sql, uint16_t valueType, int64_t size, unsigned char* row,
               bool nullsAsZero = true, bool failOnTruncation = false) {
    memset(row, 0xAB, 40);
    if (Execute(sql) != DAL_SUCCESS) return -1;
    const DalBinding b = DalResultColumn(1, "v.x", valueType, 8, size);
    unsigned int rows = 1;
    return connection_->Fetch(view_, row, 40, &b, 1, &rows, nullsAsZero, failOnTruncation);
  }
};

struct NumberCase {
  uint16_t valueType;
  int width;
  int64_t value;  // as SQLite stores it (bit pattern for unsigned 64-bit)
};

const NumberCase kNumbers[] = {
    {DAL_VT_USHORT, 2, 65535},         // 991
    {DAL_VT_SHORT, 2, -32768},         // 994
    {DAL_VT_SSHORT, 2, 32767},         // 1007
    {DAL_VT_ULONG, 4, 4294967295},     // 992
    {DAL_VT_SLONG, 4, -2147483648LL},  // 995
    {DAL_VT_UBIGINT, 8, -1},           // 996: 18446744073709551615
    {DAL_VT_SBIGINT, 8, INT64_MIN},    // 997
};

TEST_F(DbConnectionTest, NumbersRoundTripThroughEveryValueType) {
  for (const NumberCase& c : kNumbers) {
    SCOPED_TRACE(c.valueType);
    // In: the caller's variable of the type's width.
    unsigned char in[8];
    memcpy(in, &c.value, c.width);  // little-endian: the low bytes
    const DalBinding params[] = {
        DalInputParameter(c.valueType, DAL_PT_BIGINT, c.width, in, c.width), DalTerminator()};
    ASSERT_EQ(connection_->Execute(view_, "DELETE FROM v", nullptr, LOG_AT_VERBOSITY_5, "test",
                                   true, false),
              DAL_SUCCESS);
    ASSERT_EQ(Execute("INSERT INTO v VALUES (?)", params), DAL_SUCCESS);
    unsigned char row[40];
    ASSERT_EQ(FetchOne("SELECT x FROM v", DAL_VT_SBIGINT, 8, row), DAL_SUCCESS);
    int64_t stored;
    memcpy(&stored, row + 8, 8);
    EXPECT_EQ(stored, c.value);
    // Out: exactly the field's bytes are written.
    ASSERT_EQ(FetchOne("SELECT x FROM v", c.valueType, c.width, row), DAL_SUCCESS);
    EXPECT_EQ(memcmp(row + 8, &c.value, c.width), 0);
    EXPECT_EQ(row[7], 0xAB);
    EXPECT_EQ(row[8 + c.width], 0xAB);
  }
}

TEST_F(DbConnectionTest, NumberConversionsAndRanges) {
  struct Case {
    const char* select;
    uint16_t valueType;
    int64_t size;
    int status;
    int64_t value;  // expected in the field when status is 0
  };
  const Case cases[] = {
      {"SELECT 65536", DAL_VT_USHORT, 2, DAL_VALUE_OUT_OF_RANGE, 0},
      {"SELECT -1", DAL_VT_USHORT, 2, DAL_VALUE_OUT_OF_RANGE, 0},
      {"SELECT 40000", DAL_VT_SHORT, 2, DAL_VALUE_OUT_OF_RANGE, 0},
      {"SELECT -1", DAL_VT_ULONG, 4, DAL_VALUE_OUT_OF_RANGE, 0},
      {"SELECT 2147483648", DAL_VT_SLONG, 4, DAL_VALUE_OUT_OF_RANGE, 0},
      // A 4-byte type bound to a 2-byte field is written in 2 bytes.
      {"SELECT 1234", DAL_VT_SLONG, 2, DAL_SUCCESS, 1234},
      {"SELECT 40000", DAL_VT_SLONG, 2, DAL_VALUE_OUT_OF_RANGE, 0},
      {"SELECT ' 123 '", DAL_VT_SLONG, 4, DAL_SUCCESS, 123},
      {"SELECT '18446744073709551615'", DAL_VT_UBIGINT, 8, DAL_SUCCESS, -1},
      {"SELECT 7.9", DAL_VT_SLONG, 4, DAL_SUCCESS, 7},
      {"SELECT 'abc'", DAL_VT_SLONG, 4, DAL_CONVERSION_ERROR, 0},
      {"SELECT x'00'", DAL_VT_SLONG, 4, DAL_CONVERSION_ERROR, 0},
      {"SELECT 1e30", DAL_VT_SBIGINT, 8, DAL_VALUE_OUT_OF_RANGE, 0},
  };
  for (const Case& c : cases) {
    unsigned char row[40];
    EXPECT_EQ(FetchOne(c.select, c.valueType, c.size, row), c.status) << c.select;
    if (c.status != DAL_SUCCESS) continue;
    int64_t field = 0;
    memcpy(&field, row + 8, c.size);
    if (c.size < 8 && (field >> (c.size * 8 - 1)) & 1) field -= int64_t{1} << (c.size * 8);
    EXPECT_EQ(field, c.value) << c.select;
    EXPECT_EQ(row[8 + c.size], 0xAB) << c.select;
  }
}

TEST_F(DbConnectionTest, TextsGuidsAndNulls) {
  const char text[] = "hello";
  const unsigned char guid[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  const DalBinding params[] = {
      DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, DAL_NTS, text, DAL_NTS),
      DalInputParameter(DAL_VT_GUID, DAL_PT_GUID, 16, guid, 16),
      DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, 3, text, 3),
      DalInputParameter(DAL_VT_CHAR, DAL_PT_VARCHAR, DAL_NTS, nullptr, DAL_NTS), DalTerminator()};
  ASSERT_EQ(Execute("INSERT INTO v VALUES (?), (?), (?), (?)", params), DAL_SUCCESS);

  unsigned char row[40];
  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 1", DAL_VT_CHAR, 32, row), DAL_SUCCESS);
  EXPECT_STREQ(reinterpret_cast<char*>(row + 8), "hello");
  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 3", DAL_VT_CHAR, 32, row), DAL_SUCCESS);
  EXPECT_STREQ(reinterpret_cast<char*>(row + 8), "hel");
  // Cut to the field, reported only when asked.
  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 1", DAL_VT_CHAR, 4, row), DAL_SUCCESS);
  EXPECT_STREQ(reinterpret_cast<char*>(row + 8), "hel");
  EXPECT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 1", DAL_VT_CHAR, 4, row, true, true),
            DAL_DATA_TRUNCATED);
  ASSERT_EQ(FetchOne("SELECT 42", DAL_VT_CHAR, 32, row), DAL_SUCCESS);
  EXPECT_STREQ(reinterpret_cast<char*>(row + 8), "42");

  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 2", DAL_VT_GUID, 16, row), DAL_SUCCESS);
  EXPECT_EQ(memcmp(row + 8, guid, 16), 0);
  EXPECT_EQ(row[24], 0xAB);
  EXPECT_EQ(FetchOne("SELECT x'0102'", DAL_VT_GUID, 16, row), DAL_CONVERSION_ERROR);

  // NULL: zeros, or the field left alone.
  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 4", DAL_VT_SLONG, 4, row), DAL_SUCCESS);
  EXPECT_EQ(row[8] | row[9] | row[10] | row[11], 0);
  ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = 4", DAL_VT_CHAR, 8, row, false), DAL_SUCCESS);
  EXPECT_EQ(row[8], 0xAB);
}

TEST_F(DbConnectionTest, BatchFetchesAcrossTheBatchSize) {
  FillNumbers(65);
  struct Row {
    int32_t key;
    char name[12];
  };
  const DalBinding table[] = {DalResultColumn(1, "n.k", DAL_VT_SLONG, offsetof(Row, key), 4),
                              DalResultColumn(2, "n.name", DAL_VT_CHAR, offsetof(Row, name), 12)};
  for (unsigned int capacity : {64u, 1u, 65u, 100u}) {
    SCOPED_TRACE(capacity);
    ASSERT_EQ(Execute("SELECT k, name FROM n ORDER BY k"), DAL_SUCCESS);
    std::vector<Row> rows(capacity);
    std::vector<unsigned int> batches;
    int next = 1, status;
    for (;;) {
      unsigned int count = capacity;
      status = connection_->Fetch(view_, rows.data(), sizeof(Row), table, 2, &count, true, false);
      if (status != DAL_SUCCESS) {
        EXPECT_EQ(count, 0u);
        break;
      }
      batches.push_back(count);
      for (unsigned int i = 0; i < count; ++i, ++next) {
        EXPECT_EQ(rows[i].key, next);
        EXPECT_EQ(std::string(rows[i].name), "row" + std::to_string(next));
      }
    }
    EXPECT_EQ(status, DAL_NO_DATA);
    EXPECT_EQ(next, 66);
    EXPECT_EQ(batches.size(), (65 + capacity - 1) / capacity);
    EXPECT_EQ(batches.back(), 65 % capacity ? 65 % capacity : capacity);
    int64_t count = 0;
    EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
    EXPECT_EQ(count, 65);
    unsigned int again = capacity;
    EXPECT_EQ(connection_->Fetch(view_, rows.data(), sizeof(Row), table, 2, &again, true, false),
              DAL_NO_DATA);
  }
  ASSERT_EQ(Execute("SELECT k FROM n WHERE k > 100"), DAL_SUCCESS);
  Row row;
  unsigned int one = 1;
  EXPECT_EQ(connection_->Fetch(view_, &row, sizeof row, table, 1, &one, true, false), DAL_NO_DATA);
}

TEST_F(DbConnectionTest, RowCountsAndSearchedWrites) {
  FillNumbers(10);
  int64_t count = -1;
  ASSERT_EQ(Execute("DELETE FROM n WHERE k > 7"), DAL_SUCCESS);
  EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
  EXPECT_EQ(count, 3);
  ASSERT_EQ(Execute("UPDATE n SET name = 'x' WHERE k <= 2"), DAL_SUCCESS);
  EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
  EXPECT_EQ(count, 2);
  // No row touched: end of data, unless the caller accepts it.
  EXPECT_EQ(Execute("DELETE FROM n WHERE k > 100"), DAL_NO_DATA);
  EXPECT_EQ(connection_->Execute(view_, "UPDATE n SET name = '' WHERE k > 100", nullptr,
                                 LOG_AT_VERBOSITY_5, "test", true, false),
            DAL_SUCCESS);
  EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(view_->RowCount(nullptr), DAL_INVALID_ARGUMENT);
}

TEST_F(DbConnectionTest, ParameterBinderTerminatorAndCopies) {
  ParameterBinder binder;
  char name[] = "row1";
  binder.bindInputString(name, DAL_NTS, false);
  const DalBinding* list = binder.getBindings();
  EXPECT_EQ(list[1].columnNumber, DAL_TERMINATOR_COLUMN);
  binder.getBindings();  // added once only
  EXPECT_EQ(binder.parameterCount(), 1u);

  // A parameter appended after use replaces the terminator.
  binder.bindInputString("row2", DAL_NTS, true);
  EXPECT_EQ(binder.parameterCount(), 2u);
  list = binder.getBindings();
  EXPECT_EQ(list[1].columnNumber, 0);
  EXPECT_EQ(list[2].columnNumber, DAL_TERMINATOR_COLUMN);
  EXPECT_EQ(binder.bindInputString("x", 0, true), DAL_INVALID_ARGUMENT);
  EXPECT_EQ(binder.parameterCount(), 2u);

  // Without copy the binder reads the caller's text when the statement runs.
  FillNumbers(3);
  name[3] = '3';
  uint32_t key = 0;
  EXPECT_EQ(connection_->ULongReturningQuery(view_, "SELECT count(*) FROM n WHERE name IN (?, ?)",
                                             binder.getBindings(), &key, LOG_AT_VERBOSITY_3,
                                             "ULongReturningQuery", "ULong"),
            DAL_SUCCESS);
  EXPECT_EQ(key, 2u);  // row3 and row2

  // Appending copies owned texts, so the source binder may go first.
  ParameterBinder combined;
  {
    ParameterBinder source;
    std::string text = "row1";
    source.bindInputString(text.c_str(), 3, true);  // "row"
    combined.appendParameters(source);
  }
  combined.bindInputString("row1", DAL_NTS, true);
  EXPECT_EQ(connection_->ULongReturningQuery(view_, "SELECT count(*) FROM n WHERE ? || '1' = ?",
                                             combined.getBindings(), &key, LOG_AT_VERBOSITY_3,
                                             "ULongReturningQuery", "ULong"),
            DAL_SUCCESS);
  EXPECT_EQ(key, 3u);

  // The list must match the statement's marks.
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ?", combined.getBindings()),
            DAL_PARAMETER_MISMATCH);
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ? AND k = ? AND k = ?", combined.getBindings()),
            DAL_PARAMETER_MISMATCH);
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ?"), DAL_PARAMETER_MISMATCH);
}

TEST_F(DbConnectionTest, SingleValueCalls) {
  FillNumbers(3);
  uint32_t value = 99;
  auto ulong = [&](const char* sql) {
    return connection_->ULongReturningQuery(view_, sql, nullptr, &value, LOG_AT_VERBOSITY_3,
                                            "ULongReturningQuery", "ULong");
  };
  EXPECT_EQ(ulong("SELECT k FROM n WHERE k = 2"), DAL_SUCCESS);
  EXPECT_EQ(value, 2u);
  EXPECT_EQ(ulong("SELECT k FROM n WHERE k = 9"), DAL_NO_DATA);
  EXPECT_EQ(ulong("SELECT NULL"), DAL_SUCCESS);
  EXPECT_EQ(value, 0u);
  EXPECT_EQ(ulong("SELECT -5"), DAL_VALUE_OUT_OF_RANGE);
  EXPECT_EQ(ulong("DELETE FROM n WHERE k = 3"), DAL_NO_RESULT_SET);

  ASSERT_EQ(Execute("SELECT name FROM n ORDER BY k DESC"), DAL_SUCCESS);
  char name[4];
  std::vector<std::string> names;
  int status;
  while ((status = connection_->StringReturningFetch(view_, name, sizeof name, LOG_AT_VERBOSITY_5,
                                                     "StringReturningFetch", "String")) == 0) {
    names.push_back(name);
  }
  EXPECT_EQ(status, DAL_NO_DATA);
  EXPECT_EQ(names, (std::vector<std::string>{"row", "row"}));  // cut to the 4-byte buffer
}

TEST_F(DbConnectionTest, MisuseGivesStatuses) {
  FillNumbers(1);
  unsigned char row[40];
  unsigned int rows = 1;
  const DalBinding column = DalResultColumn(1, "n.k", DAL_VT_SLONG, 0, 4);
  // Nothing executed, or a statement without rows.
  EXPECT_EQ(connection_->Fetch(view_, row, sizeof row, &column, 1, &rows, true, false),
            DAL_NO_RESULT_SET);
  // Bindings outside the row or the statement.
  ASSERT_EQ(Execute("SELECT k FROM n"), DAL_SUCCESS);
  const DalBinding outside[] = {
      DalResultColumn(1, "n.k", DAL_VT_SLONG, 38, 4), DalResultColumn(2, "n.k", DAL_VT_SLONG, 0, 4),
      DalResultColumn(1, "n.k", 4711, 0, 4), DalResultColumn(1, "n.k", DAL_VT_CHAR, 0, 0)};
  for (const DalBinding& b : outside) {
    rows = 1;
    EXPECT_EQ(connection_->Fetch(view_, row, sizeof row, &b, 1, &rows, true, false),
              DAL_INVALID_ARGUMENT);
  }
  EXPECT_EQ(Execute("SELEC k FROM n"), DAL_SQL_ERROR);
  EXPECT_EQ(Execute("SELECT k FROM missing_table"), DAL_SQL_ERROR);
  EXPECT_EQ(Execute("DELETE FROM n; DROP TABLE n"), DAL_SQL_ERROR);
  EXPECT_EQ(Execute("   "), DAL_SQL_ERROR);
  EXPECT_EQ(Execute("INSERT INTO n VALUES (1, 'dup')"), DAL_CONSTRAINT_VIOLATION);
  EXPECT_EQ(
      connection_->Execute(nullptr, "SELECT 1", nullptr, LOG_AT_VERBOSITY_5, "t", false, false),
      DAL_INVALID_ARGUMENT);
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
