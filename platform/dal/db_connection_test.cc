// Statements through a connection: every value type in both directions,
// batch fetches, end of data, parameter lists, row counts and the failures
// a caller can provoke.
#include "platform/dal/db_connection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/dal/dal_test_support.h"

namespace Corvela {
namespace Dal {
namespace {

using namespace std::string_literals;

std::string Status(int status) { return "status " + std::to_string(status); }

class DbConnectionTest : public DalConnectionTest {
 protected:
  void SetUp() override {
    catalog_.Exec(
        "CREATE TABLE n (k INTEGER PRIMARY KEY, name TEXT);"
        "WITH RECURSIVE c(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM c WHERE k < 65)"
        " INSERT INTO n SELECT k, 'row' || k FROM c");
    Connect();
  }

  enum { kKeepNulls = 1, kFailOnTruncation = 2 };

  // Runs `sql` and fetches its column 1 into a 40-byte row of 0xAB bytes,
  // bound at offset 8 with `valueType` and `size`: the field with the byte
  // on either side of it, bytes left alone shown as '~'; or "status N".
  // `sql` "?N" selects the number N bound from a variable of the field's
  // type and width (little-endian: the low bytes of an int64_t).
  std::string Fetched(const std::string& sql, uint16_t valueType, int64_t size, int flags = 0) {
    const bool bound = sql[0] == '?';
    const int64_t value = bound ? std::stoll(sql.substr(1)) : 0;
    const DalBinding params[] = {DalInputParameter(valueType, DAL_PT_BIGINT, size, &value, size),
                                 DalTerminator()};
    char row[40];
    memset(row, 0xAB, sizeof row);
    int status = bound ? Execute("SELECT ?", params) : Execute(sql);
    if (status == DAL_SUCCESS) {
      const DalBinding b = DalResultColumn(1, "v.x", valueType, 8, size);
      unsigned int rows = 1;
      status = connection_->Fetch(view_, row, sizeof row, &b, 1, &rows, !(flags & kKeepNulls),
                                  flags & kFailOnTruncation);
    }
    if (status != DAL_SUCCESS) return Status(status);
    std::string field(row + 7, size + 2);
    std::replace(field.begin(), field.end(), '\xab', '~');
    return field;
  }

  int ULong(const char* sql, const DalBinding* bindings, uint32_t* value) {
    return connection_->ULongReturningQuery(view_, sql, bindings, value, LOG_AT_VERBOSITY_3,
                                            "ULongReturningQuery", "ULong");
  }
};

// One value fetched into a field: numbers bound and read back at the ends of
// their types, conversions, ranges, texts cut to their field, NULLs and
// bindings the layer refuses (16-byte values: NotificationStoreTest).
TEST_F(DbConnectionTest, OneValueIntoItsField) {
  const std::string range = Status(DAL_VALUE_OUT_OF_RANGE), bad = Status(DAL_CONVERSION_ERROR),
                    refused = Status(DAL_INVALID_ARGUMENT);
  const struct {
    const char* select;
    uint16_t valueType;
    int64_t size;
    int flags;
    std::string field;
  } cases[] = {
      // Stored as they are (unsigned 64-bit by its bit pattern), read into the field's bytes.
      {"?65535", DAL_VT_USHORT, 2, 0, "~\xff\xff~"},
      {"?-32768", DAL_VT_SHORT, 2, 0, "~\0\x80~"s},
      {"?32767", DAL_VT_SSHORT, 2, 0, "~\xff\x7f~"},
      {"?4294967295", DAL_VT_ULONG, 4, 0, "~\xff\xff\xff\xff~"},
      {"?-2147483648", DAL_VT_SLONG, 4, 0, "~\0\0\0\x80~"s},
      {"?-1", DAL_VT_UBIGINT, 8, 0, "~" + std::string(8, '\xff') + "~"},
      {"?-9223372036854775808", DAL_VT_SBIGINT, 8, 0, "~\0\0\0\0\0\0\0\x80~"s},
      {"SELECT 65536", DAL_VT_USHORT, 2, 0, range},
      {"SELECT -1", DAL_VT_USHORT, 2, 0, range},
      {"SELECT 40000", DAL_VT_SHORT, 2, 0, range},
      {"SELECT -1", DAL_VT_ULONG, 4, 0, range},
      {"SELECT 2147483648", DAL_VT_SLONG, 4, 0, range},
      // A 4-byte type bound to a 2-byte field is written in 2 bytes.
      {"SELECT 1234", DAL_VT_SLONG, 2, 0, "~\xd2\x04~"},
      {"SELECT 40000", DAL_VT_SLONG, 2, 0, range},
      {"SELECT ' 123 '", DAL_VT_SLONG, 4, 0, "~{\0\0\0~"s},
      {"SELECT '18446744073709551615'", DAL_VT_UBIGINT, 8, 0, "~" + std::string(8, '\xff') + "~"},
      {"SELECT 7.9", DAL_VT_SLONG, 4, 0, "~\7\0\0\0~"s},
      {"SELECT 'abc'", DAL_VT_SLONG, 4, 0, bad},
      {"SELECT x'00'", DAL_VT_SLONG, 4, 0, bad},
      {"SELECT 1e30", DAL_VT_SBIGINT, 8, 0, range},
      {"SELECT 'hello'", DAL_VT_CHAR, 8, 0, "~hello\0~~~"s},
      {"SELECT 'hello'", DAL_VT_CHAR, 4, 0, "~hel\0~"s},
      {"SELECT 'hello'", DAL_VT_CHAR, 4, kFailOnTruncation, Status(DAL_DATA_TRUNCATED)},
      {"SELECT 42", DAL_VT_CHAR, 4, 0, "~42\0~~"s},
      {"SELECT x'0102'", DAL_VT_GUID, 16, 0, bad},
      {"SELECT NULL", DAL_VT_SLONG, 4, 0, "~\0\0\0\0~"s},
      {"SELECT NULL", DAL_VT_CHAR, 8, kKeepNulls, "~~~~~~~~~~"},
      // Past the end of the row, of an unknown type, of no width.
      {"SELECT 'x'", DAL_VT_CHAR, 33, 0, refused},
      {"SELECT 1", 4711, 4, 0, refused},
      {"SELECT 1", DAL_VT_CHAR, 0, 0, refused},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Fetched(c.select, c.valueType, c.size, c.flags), c.field) << c.select;
  }
  const DalBinding second = DalResultColumn(2, "n.k", DAL_VT_SLONG, 0, 4);
  char row[40];
  auto fetchSecond = [&] {
    unsigned int rows = 1;
    return connection_->Fetch(view_, row, sizeof row, &second, 1, &rows, true, false);
  };
  EXPECT_EQ(fetchSecond(), DAL_INVALID_ARGUMENT);  // a column the statement does not have
  connection_->ReturnOdbcView(view_);
  view_ = connection_->GetOdbcView(nullptr);
  EXPECT_EQ(fetchSecond(), DAL_NO_RESULT_SET);  // nothing executed on the view
}

// What fetches, Execute, the single-value calls and parameter lists give
// (rows of several columns and a batch boundary inside the rows, row counts
// of writes, a statement that cannot be prepared, too few parameters:
// notification_store_test.cc; a value found or not:
// database_connection_test.cc).
TEST_F(DbConnectionTest, RowsStatusesAndParameterLists) {
  // 65 keys fetched `capacity` at a time: each batch's keys (a batch ends in
  // '|'), end of data with no row, also when asked again, and the rows read.
  const DalBinding key = DalResultColumn(1, "n.k", DAL_VT_SLONG, 0, 4);
  for (unsigned int capacity : {1u, 65u, 100u}) {
    ASSERT_EQ(Execute("SELECT k FROM n ORDER BY k"), DAL_SUCCESS);
    std::vector<int32_t> keys(capacity);
    std::string fetched, expected;
    for (unsigned int k = 1; k <= 65; ++k)
      expected += std::to_string(k) + (k % capacity && k < 65 ? " " : "|");
    for (int ends = 0; ends < 2;) {
      unsigned int count = capacity;
      const int status = connection_->Fetch(view_, keys.data(), 4, &key, 1, &count, true, false);
      for (unsigned int i = 0; i < count; ++i)
        fetched += std::to_string(keys[i]) + (i + 1 < count ? " " : "|");
      if (status != DAL_SUCCESS) fetched += Status(status) + (++ends < 2 ? " " : "");
    }
    int64_t read = 0;
    EXPECT_EQ(view_->RowCount(&read), DAL_SUCCESS);
    EXPECT_EQ(fetched + " " + std::to_string(read),
              expected + Status(DAL_NO_DATA) + " " + Status(DAL_NO_DATA) + " 65")
        << capacity;
  }

  const struct {
    const char* sql;
    bool allowNoData;
    std::string result;
  } cases[] = {
      // No row touched: end of data, unless the caller accepts it.
      {"UPDATE n SET name = '' WHERE k > 100", false, Status(DAL_NO_DATA)},
      {"DELETE FROM n WHERE k > 100", true, "rows 0"},
      {"DELETE FROM n; DROP TABLE n", false, Status(DAL_SQL_ERROR)},
      {"   ", false, Status(DAL_SQL_ERROR)},
      {"INSERT INTO n VALUES (1, 'dup')", false, Status(DAL_CONSTRAINT_VIOLATION)},
  };
  for (const auto& c : cases) {
    int status = connection_->Execute(view_, c.sql, nullptr, LOG_AT_VERBOSITY_5, "test",
                                      c.allowNoData, false);
    int64_t count = -1;
    if (status == DAL_SUCCESS) status = view_->RowCount(&count);
    EXPECT_EQ(status == DAL_SUCCESS ? "rows " + std::to_string(count) : Status(status), c.result)
        << c.sql;
  }
  EXPECT_EQ(view_->RowCount(nullptr), DAL_INVALID_ARGUMENT);
  EXPECT_EQ(
      connection_->Execute(nullptr, "SELECT 1", nullptr, LOG_AT_VERBOSITY_5, "t", false, false),
      DAL_INVALID_ARGUMENT);

  uint32_t value = 99;
  EXPECT_EQ(ULong("SELECT -5", nullptr, &value), DAL_VALUE_OUT_OF_RANGE);
  EXPECT_EQ(ULong("DELETE FROM n WHERE k = 99", nullptr, &value), DAL_NO_RESULT_SET);
  EXPECT_EQ(value, 99u);  // left alone by both
  EXPECT_EQ(ULong("SELECT NULL", nullptr, &value), DAL_SUCCESS);
  EXPECT_EQ(value, 0u);

  // Texts cut to a 4-byte buffer, then end of data.
  ASSERT_EQ(Execute("SELECT name FROM n WHERE k IN (4, 5) ORDER BY k DESC"), DAL_SUCCESS);
  char name[4];
  std::string names;
  int status;
  while ((status = connection_->StringReturningFetch(view_, name, sizeof name, LOG_AT_VERBOSITY_5,
                                                     "StringReturningFetch", "String")) == 0) {
    names += std::string(name) + " ";
  }
  EXPECT_EQ(names + Status(status), "row row " + Status(DAL_NO_DATA));

  // A parameter list ends in one terminator however often it is asked for,
  // also after more parameters; a text bound without a copy is read when the
  // statement runs; appending copies owned texts, so the source may go first.
  ParameterBinder binder;
  char text[] = "row1";
  binder.bindInputString(text, DAL_NTS, false);
  binder.getBindings();
  binder.getBindings();
  binder.bindInputString("row2", DAL_NTS, true);
  EXPECT_EQ(binder.bindInputString("x", 0, true), DAL_INVALID_ARGUMENT);  // and not appended
  text[3] = '3';
  EXPECT_EQ(ULong("SELECT sum(k) FROM n WHERE name IN (?, ?)", binder.getBindings(), &value),
            DAL_SUCCESS);
  EXPECT_EQ(value, 5u);  // row3 and row2

  ParameterBinder combined;
  {
    ParameterBinder source;
    source.bindInputString("row1", 3, true);  // "row"
    combined.appendParameters(source);
  }
  combined.bindInputString("row1", DAL_NTS, true);
  EXPECT_EQ(ULong("SELECT count(*) FROM n WHERE ? || '1' = ?", combined.getBindings(), &value),
            DAL_SUCCESS);
  EXPECT_EQ(value, 65u);
  // The list must match the statement's marks.
  EXPECT_EQ(Execute("SELECT k FROM n WHERE name = ?", combined.getBindings()),
            DAL_PARAMETER_MISMATCH);
}

}  // namespace
}  // namespace Dal
}  // namespace Corvela
