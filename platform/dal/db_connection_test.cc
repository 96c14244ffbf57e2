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
    catalog_.Exec(
        "CREATE TABLE v (x);"
        "CREATE TABLE n (k INTEGER PRIMARY KEY, name TEXT);"
        "WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM c WHERE k < 65)"
        " INSERT INTO n SELECT k, 'row' || k FROM c");
    Connect();
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

  int ULong(const char* sql, const DalBinding* bindings, uint32_t* value) {
    return connection_->ULongReturningQuery(view_, sql, bindings, value, LOG_AT_VERBOSITY_3,
                                            "ULongReturningQuery", "ULong");
  }
};

// A number bound from the caller's variable of its type's width is stored
// as it is (unsigned 64-bit by its bit pattern) and fetched back into
// exactly the field's bytes.
TEST_F(DbConnectionTest, NumbersRoundTripThroughEveryValueType) {
  static const struct {
    uint16_t valueType;
    int width;
    int64_t value;
  } cases[] = {
      {DAL_VT_USHORT, 2, 65535},      {DAL_VT_SHORT, 2, -32768},        {DAL_VT_SSHORT, 2, 32767},
      {DAL_VT_ULONG, 4, 4294967295},  {DAL_VT_SLONG, 4, -2147483648LL}, {DAL_VT_UBIGINT, 8, -1},
      {DAL_VT_SBIGINT, 8, INT64_MIN},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.valueType);
    unsigned char in[8];
    memcpy(in, &c.value, c.width);  // little-endian: the low bytes
    const DalBinding params[] = {
        DalInputParameter(c.valueType, DAL_PT_BIGINT, c.width, in, c.width), DalTerminator()};
    ASSERT_EQ(Execute("INSERT INTO v VALUES (?)", params), DAL_SUCCESS);
    unsigned char row[40];
    ASSERT_EQ(FetchOne("SELECT x FROM v WHERE rowid = last_insert_rowid()", DAL_VT_SBIGINT, 8, row),
              DAL_SUCCESS);
    EXPECT_EQ(memcmp(row + 8, &c.value, 8), 0);
    ASSERT_EQ(
        FetchOne("SELECT x FROM v WHERE rowid = last_insert_rowid()", c.valueType, c.width, row),
        DAL_SUCCESS);
    EXPECT_EQ(memcmp(row + 8, &c.value, c.width), 0);
    EXPECT_EQ(row[7], 0xAB);
    EXPECT_EQ(row[8 + c.width], 0xAB);
  }
}

// One value fetched into a field: conversions, ranges, texts cut to their
// field, 16-byte values and NULLs. `field` is the field's bytes afterwards
// (0xAB: left alone).
TEST_F(DbConnectionTest, OneValueIntoItsField) {
  const std::string guid("\0\1\2\3\4\5\6\7\10\11\12\13\14\15\16\17", 16);
  static const struct {
    const char* select;
    uint16_t valueType;
    int64_t size;
    bool nullsAsZero;
    bool failOnTruncation;
    int status;
    std::string field;
  } cases[] = {
      {"SELECT 65536", DAL_VT_USHORT, 2, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT -1", DAL_VT_USHORT, 2, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT 40000", DAL_VT_SHORT, 2, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT -1", DAL_VT_ULONG, 4, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT 2147483648", DAL_VT_SLONG, 4, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      // A 4-byte type bound to a 2-byte field is written in 2 bytes.
      {"SELECT 1234", DAL_VT_SLONG, 2, true, false, DAL_SUCCESS, std::string("\xd2\x04\xab", 3)},
      {"SELECT 40000", DAL_VT_SLONG, 2, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT ' 123 '", DAL_VT_SLONG, 4, true, false, DAL_SUCCESS, std::string("{\0\0\0", 4)},
      {"SELECT '18446744073709551615'", DAL_VT_UBIGINT, 8, true, false, DAL_SUCCESS,
       std::string(8, '\xff')},
      {"SELECT 7.9", DAL_VT_SLONG, 4, true, false, DAL_SUCCESS, std::string("\7\0\0\0", 4)},
      {"SELECT 'abc'", DAL_VT_SLONG, 4, true, false, DAL_CONVERSION_ERROR, ""},
      {"SELECT x'00'", DAL_VT_SLONG, 4, true, false, DAL_CONVERSION_ERROR, ""},
      {"SELECT 1e30", DAL_VT_SBIGINT, 8, true, false, DAL_VALUE_OUT_OF_RANGE, ""},
      {"SELECT 'hello'", DAL_VT_CHAR, 8, true, false, DAL_SUCCESS, std::string("hello\0\xab", 7)},
      {"SELECT 'hello'", DAL_VT_CHAR, 4, true, false, DAL_SUCCESS, std::string("hel\0\xab", 5)},
      {"SELECT 'hello'", DAL_VT_CHAR, 4, true, true, DAL_DATA_TRUNCATED, ""},
      {"SELECT 42", DAL_VT_CHAR, 4, true, false, DAL_SUCCESS, std::string("42\0", 3)},
      {"SELECT x'000102030405060708090a0b0c0d0e0f'", DAL_VT_GUID, 16, true, false, DAL_SUCCESS,
       guid + "\xab"},
      {"SELECT x'0102'", DAL_VT_GUID, 16, true, false, DAL_CONVERSION_ERROR, ""},
      {"SELECT NULL", DAL_VT_SLONG, 4, true, false, DAL_SUCCESS, std::string("\0\0\0\0\xab", 5)},
      {"SELECT NULL", DAL_VT_CHAR, 8, false, false, DAL_SUCCESS, "\xab"},
  };
  for (const auto& c : cases) {
    unsigned char row[40];
    EXPECT_EQ(FetchOne(c.select, c.valueType, c.size, row, c.nullsAsZero, c.failOnTruncation),
              c.status)
        << c.select;
    if (c.status == DAL_SUCCESS) {
      EXPECT_EQ(std::string(reinterpret_cast<char*>(row + 8), c.field.size()), c.field) << c.select;
    }
  }
}

TEST_F(DbConnectionTest, BatchFetchesAcrossTheBatchSize) {
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
    int64_t count = 0;
    EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
    EXPECT_EQ(count, 65);
    unsigned int again = capacity;
    EXPECT_EQ(connection_->Fetch(view_, rows.data(), sizeof(Row), table, 2, &again, true, false),
              DAL_NO_DATA);
  }
}

// What Execute and the single-value calls return, and the rows a write
// touched (-1: not checked).
TEST_F(DbConnectionTest, StatementsAndTheirStatuses) {
  static const struct {
    const char* sql;
    bool allowNoData;
    int status;
    int64_t rowCount;
  } cases[] = {
      {"DELETE FROM n WHERE k > 62", false, DAL_SUCCESS, 3},
      {"UPDATE n SET name = name WHERE k <= 2", false, DAL_SUCCESS, 2},
      // No row touched: end of data, unless the caller accepts it.
      {"DELETE FROM n WHERE k > 100", false, DAL_NO_DATA, -1},
      {"UPDATE n SET name = '' WHERE k > 100", true, DAL_SUCCESS, 0},
      {"SELEC k FROM n", false, DAL_SQL_ERROR, -1},
      {"SELECT k FROM missing_table", false, DAL_SQL_ERROR, -1},
      {"DELETE FROM n; DROP TABLE n", false, DAL_SQL_ERROR, -1},
      {"   ", false, DAL_SQL_ERROR, -1},
      {"INSERT INTO n VALUES (1, 'dup')", false, DAL_CONSTRAINT_VIOLATION, -1},
      {"SELECT k FROM n WHERE name = ?", false, DAL_PARAMETER_MISMATCH, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(connection_->Execute(view_, c.sql, nullptr, LOG_AT_VERBOSITY_5, "test", c.allowNoData,
                                   false),
              c.status)
        << c.sql;
    int64_t count = -1;
    if (c.rowCount >= 0) {
      EXPECT_EQ(view_->RowCount(&count), DAL_SUCCESS);
      EXPECT_EQ(count, c.rowCount) << c.sql;
    }
  }
  EXPECT_EQ(view_->RowCount(nullptr), DAL_INVALID_ARGUMENT);
  EXPECT_EQ(
      connection_->Execute(nullptr, "SELECT 1", nullptr, LOG_AT_VERBOSITY_5, "t", false, false),
      DAL_INVALID_ARGUMENT);

  static const struct {
    const char* sql;
    int status;
    uint32_t value;
  } values[] = {
      {"SELECT k FROM n WHERE k = 2", DAL_SUCCESS, 2},
      {"SELECT k FROM n WHERE k = 99", DAL_NO_DATA, 99},
      {"SELECT NULL", DAL_SUCCESS, 0},
      {"SELECT -5", DAL_VALUE_OUT_OF_RANGE, 99},
      {"DELETE FROM n WHERE k = 3", DAL_NO_RESULT_SET, 99},
  };
  for (const auto& c : values) {
    uint32_t value = 99;
    EXPECT_EQ(ULong(c.sql, nullptr, &value), c.status) << c.sql;
    EXPECT_EQ(value, c.value) << c.sql;
  }

  ASSERT_EQ(Execute("SELECT name FROM n WHERE k IN (4, 5) ORDER BY k DESC"), DAL_SUCCESS);
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

TEST_F(DbConnectionTest, FetchMisuse) {
  unsigned char row[40];
  unsigned int rows = 1;
  const DalBinding column = DalResultColumn(1, "n.k", DAL_VT_SLONG, 0, 4);
  // Nothing executed yet.
  EXPECT_EQ(connection_->Fetch(view_, row, sizeof row, &column, 1, &rows, true, false),
            DAL_NO_RESULT_SET);
  // Bindings outside the row or the statement, unknown types, no width.
  ASSERT_EQ(Execute("SELECT k FROM n"), DAL_SUCCESS);
  const DalBinding outside[] = {
      DalResultColumn(1, "n.k", DAL_VT_SLONG, 38, 4), DalResultColumn(2, "n.k", DAL_VT_SLONG, 0, 4),
      DalResultColumn(1, "n.k", 4711, 0, 4), DalResultColumn(1, "n.k", DAL_VT_CHAR, 0, 0)};
  for (const DalBinding& b : outside) {
    rows = 1;
    EXPECT_EQ(connection_->Fetch(view_, row, sizeof row, &b, 1, &rows, true, false),
              DAL_INVALID_ARGUMENT);
  }
}

TEST_F(DbConnectionTest, ParameterBinderTerminatorAndCopies) {
  ParameterBinder binder;
  char name[] = "row1";
  binder.bindInputString(name, DAL_NTS, false);
  EXPECT_EQ(binder.getBindings()[1].columnNumber, DAL_TERMINATOR_COLUMN);
  binder.getBindings();  // added once only
  EXPECT_EQ(binder.parameterCount(), 1u);
  // A parameter appended after use replaces the terminator.
  binder.bindInputString("row2", DAL_NTS, true);
  EXPECT_EQ(binder.getBindings()[2].columnNumber, DAL_TERMINATOR_COLUMN);
  EXPECT_EQ(binder.bindInputString("x", 0, true), DAL_INVALID_ARGUMENT);
  EXPECT_EQ(binder.parameterCount(), 2u);

  // Without copy the binder reads the caller's text when the statement runs.
  name[3] = '3';
  uint32_t count = 0;
  EXPECT_EQ(ULong("SELECT count(*) FROM n WHERE name IN (?, ?)", binder.getBindings(), &count),
            DAL_SUCCESS);
  EXPECT_EQ(count, 2u);  // row3 and row2

  // Appending copies owned texts, so the source binder may go first.
  ParameterBinder combined;
  {
    ParameterBinder source;
    std::string text = "row1";
    source.bindInputString(text.c_str(), 3, true);  // "row"
    combined.appendParameters(source);
  }
  combined.bindInputString("row1", DAL_NTS, true);
  EXPECT_EQ(ULong("SELECT count(*) FROM n WHERE ? || '1' = ?", combined.getBindings(), &count),
            DAL_SUCCESS);
  EXPECT_EQ(count, 65u);
  // The list must match the statement's marks.
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ?", combined.getBindings()),
            DAL_PARAMETER_MISMATCH);
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ? AND k = ? AND k = ?", combined.getBindings()),
            DAL_PARAMETER_MISMATCH);
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
