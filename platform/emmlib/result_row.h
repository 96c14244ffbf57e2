// ResultRow: the columns of a statement's current row, read into the catalog
// records: numbers, texts copied into fixed arrays (cut to fit, with their
// length returned so that later copies need not scan them) and blobs.
//
// A catalog-wide listing reads some fifty columns of millions of rows, and
// each sqlite3_column_* call costs several times the read itself (statement
// checks and error bookkeeping). SQLite keeps a statement's result row in
// one array of values whose place does not change from row to row, so the
// reader asks for the column values once and reads them through the cheap
// sqlite3_value_* accessors. For every row, Next() confirms by the address
// of the first column's value that the array is still the same one, and
// asks for all of them again when it is not.
#ifndef PLATFORM_EMMLIB_RESULT_ROW_H_
#define PLATFORM_EMMLIB_RESULT_ROW_H_

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/emmlib/sqlite_stmt.h"

namespace emm {

class ResultRow {
 public:
  ResultRow() = default;

  // Reads the rows of `stmt` from now on; the caller owns and steps it.
  void Attach(sqlite3_stmt* stmt) {
    stmt_ = stmt;
    values_.assign(static_cast<size_t>(sqlite3_column_count(stmt)), nullptr);
  }

  // To be called each time the statement stands on a new row, before any
  // column of it is read.
  void Next() {
    if (values_.empty() || sqlite3_column_value(stmt_, 0) == values_[0]) return;
    for (size_t i = 0; i < values_.size(); ++i) {
      values_[i] = sqlite3_column_value(stmt_, static_cast<int>(i));
    }
  }

  int32_t Int(int col) const { return sqlite3_value_int(values_[col]); }
  int64_t Int64(int col) const { return sqlite3_value_int64(values_[col]); }
  bool IsNull(int col) const { return sqlite3_value_type(values_[col]) == SQLITE_NULL; }

  // Copies a text column into `dst` of capacity `size` (see CopyValueText);
  // returns the length copied.
  size_t Text(int col, char* dst, size_t size) const {
    return CopyValueText(values_[col], dst, size);
  }

  // Copies a blob column into `dst` of `size` bytes, cut to fit, and fills
  // the rest of `dst` with zeros (NULL gives only zeros).
  void Blob(int col, unsigned char* dst, size_t size) const {
    sqlite3_value* value = values_[col];
    const void* data = sqlite3_value_blob(value);
    size_t n = data != nullptr ? static_cast<size_t>(sqlite3_value_bytes(value)) : 0;
    if (n > size) n = size;
    if (n > 0) memcpy(dst, data, n);
    memset(dst + n, 0, size - n);
  }

 private:
  sqlite3_stmt* stmt_ = nullptr;
  std::vector<sqlite3_value*> values_;  // of the current row, by column
};

}  // namespace emm

#endif  // PLATFORM_EMMLIB_RESULT_ROW_H_
