// Small RAII helpers over the SQLite C API for the catalog library: an owned
// prepared statement, a list of parameters collected while a statement's text
// is built, and the copying of column values into the records' fixed arrays.
#ifndef PLATFORM_EMMLIB_SQLITE_STMT_H_
#define PLATFORM_EMMLIB_SQLITE_STMT_H_

#include <sqlite3.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace emm {

// Owns one prepared statement; finalizes it when destroyed.
class Statement {
 public:
  Statement() = default;
  ~Statement() { sqlite3_finalize(stmt_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // Prepares `sql` on `db`, dropping any earlier statement. Returns the
  // SQLite result code.
  int Prepare(sqlite3* db, const std::string& sql) {
    sqlite3_finalize(stmt_);
    stmt_ = nullptr;
    return sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &stmt_, nullptr);
  }

  sqlite3_stmt* get() const { return stmt_; }
  explicit operator bool() const { return stmt_ != nullptr; }

 private:
  sqlite3_stmt* stmt_ = nullptr;
};

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

  // Binds every parameter; returns the first non-OK SQLite result code.
  // SQLite keeps its own copy of each text: a query's statement outlives the
  // Params it was started with.
  int BindAll(sqlite3_stmt* stmt) const {
    int index = 1;
    for (const Value& v : values_) {
      int rc = v.isText ? sqlite3_bind_text(stmt, index, v.text.c_str(),
                                            static_cast<int>(v.text.size()), SQLITE_TRANSIENT)
                        : sqlite3_bind_int64(stmt, index, v.number);
      if (rc != SQLITE_OK) return rc;
      ++index;
    }
    return SQLITE_OK;
  }

 private:
  struct Value {
    bool isText;
    int64_t number;
    std::string text;
  };
  std::vector<Value> values_;
};

// Copies a text value into `dst` (capacity `size`, at least 1), cut to
// size - 1 bytes and NUL-terminated; NULL gives the empty text. Returns the
// length copied. Only the text's own bytes are written. The bytes are taken
// as a blob: SQLite then hands out the record's bytes as they are, where
// asking for text would first give them a terminating NUL.
inline size_t CopyValueText(sqlite3_value* value, char* dst, size_t size) {
  const void* text = sqlite3_value_blob(value);
  size_t n = text != nullptr ? static_cast<size_t>(sqlite3_value_bytes(value)) : 0;
  if (n >= size) n = size - 1;
  if (n > 0) memcpy(dst, text, n);
  dst[n] = '\0';
  return n;
}

// The same for column `col` of the statement's current row.
inline size_t CopyColumnText(sqlite3_stmt* stmt, int col, char* dst, size_t size) {
  return CopyValueText(sqlite3_column_value(stmt, col), dst, size);
}

// Copies `len` bytes of `src` and a NUL into `dst` of capacity `size`, cut
// to size - 1 bytes; returns the length copied.
inline size_t CopyText(char* dst, size_t size, const char* src, size_t len) {
  if (len >= size) len = size - 1;
  memcpy(dst, src, len);
  dst[len] = '\0';
  return len;
}

// Copies a NUL-terminated text, cut to fit.
inline void CopyCString(char* dst, size_t size, const char* src) {
  CopyText(dst, size, src, src ? strlen(src) : 0);
}

}  // namespace emm

#endif  // PLATFORM_EMMLIB_SQLITE_STMT_H_
