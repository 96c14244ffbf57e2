// ResultRow: the columns of a statement's current row, read into the catalog
// records: numbers, texts copied into fixed arrays (cut to fit, with their
// length returned so that later copies need not scan them) and blobs.
//
// A catalog-wide listing reads some fifty columns of millions of rows: the
// engine hands over a whole row in one call (Statement::CurrentRow) and the
// columns are then read inline from its cells.
#ifndef PLATFORM_EMMLIB_RESULT_ROW_H_
#define PLATFORM_EMMLIB_RESULT_ROW_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/emmlib/statement.h"
#include "platform/sqldb/sqldb.h"

namespace emm {

class ResultRow {
 public:
  ResultRow() = default;

  // Reads the rows of `stmt` from now on; the caller owns and steps it.
  void Attach(sqldb::Statement* stmt) {
    stmt_ = stmt;
    row_ = nullptr;
  }

  // To be called each time the statement stands on a new row, before any
  // column of it is read.
  void Next() { row_ = &stmt_->CurrentRow(); }

  int32_t Int(int col) const { return row_->Int(col); }
  int64_t Int64(int col) const { return row_->Int64(col); }
  bool IsNull(int col) const { return row_->IsNull(col); }

  // Copies a text column into `dst` of capacity `size` (see CopyCellText);
  // returns the length copied.
  size_t Text(int col, char* dst, size_t size) const { return CopyCellText(*row_, col, dst, size); }

  // Copies a blob column into `dst` of `size` bytes, cut to fit, and fills
  // the rest of `dst` with zeros (NULL gives only zeros).
  void Blob(int col, unsigned char* dst, size_t size) const {
    const std::string_view bytes = row_->Bytes(col);
    const size_t n = bytes.size() < size ? bytes.size() : size;
    if (n > 0) memcpy(dst, bytes.data(), n);
    memset(dst + n, 0, size - n);
  }

 private:
  sqldb::Statement* stmt_ = nullptr;
  const sqldb::Row* row_ = nullptr;  // the statement's current row
};

}  // namespace emm

#endif  // PLATFORM_EMMLIB_RESULT_ROW_H_
