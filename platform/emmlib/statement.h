// Helpers of the catalog library over the catalog engine (sqldb.h): the
// parameters collected while a statement's text is built, and the copying
// of column values into the records' fixed arrays.
#ifndef PLATFORM_EMMLIB_STATEMENT_H_
#define PLATFORM_EMMLIB_STATEMENT_H_

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "platform/sqldb/sqldb.h"

namespace emm {

// Parameters of a statement in the order of their '?' marks: numbers or
// texts. Texts are kept by the list so that the statement may outlive the
// caller's buffers.
class Params {
 public:
  // Appends `text`, which holds one '?', to *sql and records the value for
  // that mark.
  void AddNumber(std::string* sql, const char* text, int64_t value) {
    sql->append(text);
    values_.push_back({false, value, std::string()});
  }
  void AddText(std::string* sql, const char* text, const char* value) {
    sql->append(text);
    values_.push_back({true, 0, value});
  }

  // Binds every parameter; returns the first failure's code. The engine
  // keeps its own copy of each text: a query's statement outlives the
  // Params it was started with.
  sqldb::Code BindAll(sqldb::Statement* stmt) const {
    int index = 1;
    for (const Value& v : values_) {
      const sqldb::Code code =
          v.isText ? stmt->BindText(index, v.text) : stmt->BindInt64(index, v.number);
      if (code != sqldb::Code::kOk) return code;
      ++index;
    }
    return sqldb::Code::kOk;
  }

 private:
  struct Value {
    bool isText;
    int64_t number;
    std::string text;
  };
  std::vector<Value> values_;
};

// Copies `len` bytes of `src` and a NUL into `dst` of capacity `size`, cut
// to size - 1 bytes; returns the length copied.
inline size_t CopyText(char* dst, size_t size, const char* src, size_t len) {
  if (len >= size) len = size - 1;
  memcpy(dst, src, len);
  dst[len] = '\0';
  return len;
}

// Copies column `col` of `row` as text into `dst` (capacity `size`, at least
// 1), cut to size - 1 bytes and NUL-terminated; NULL gives the empty text, a
// number its decimal digits. Returns the length copied. Only the text's own
// bytes are written.
inline size_t CopyCellText(const sqldb::Row& row, int col, char* dst, size_t size) {
  const std::string_view bytes = row.Bytes(col);
  if (!bytes.empty()) return CopyText(dst, size, bytes.data(), bytes.size());
  // Empty texts are common and take no copy; only a number has no bytes.
  if (row.type(col) != sqldb::Type::kInteger) {
    dst[0] = '\0';
    return 0;
  }
  char digits[24];
  const int n = snprintf(digits, sizeof digits, "%lld", static_cast<long long>(row.Int64(col)));
  return CopyText(dst, size, digits, static_cast<size_t>(n));
}

}  // namespace emm

#endif  // PLATFORM_EMMLIB_STATEMENT_H_
