// Conversions between SQLite values and the caller's fields, driven by the
// table of value types.
#include "platform/dal/value_codec.h"

#include <sqlite3.h>

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/dal/dal_status.h"

namespace Corvela {
namespace Dal {

namespace {

enum class ValueKind { kSigned, kUnsigned, kText, kGuid };

struct ValueTypeInfo {
  uint16_t code;
  ValueKind kind;
  int width;  // bytes of a numeric or 16-byte value; 0 for texts
};

const ValueTypeInfo kValueTypes[] = {
    {DAL_VT_USHORT, ValueKind::kUnsigned, 2}, {DAL_VT_SHORT, ValueKind::kSigned, 2},
    {DAL_VT_SSHORT, ValueKind::kSigned, 2},   {DAL_VT_ULONG, ValueKind::kUnsigned, 4},
    {DAL_VT_SLONG, ValueKind::kSigned, 4},    {DAL_VT_UBIGINT, ValueKind::kUnsigned, 8},
    {DAL_VT_SBIGINT, ValueKind::kSigned, 8},  {DAL_VT_CHAR, ValueKind::kText, 0},
    {DAL_VT_GUID, ValueKind::kGuid, 16},
};

const ValueTypeInfo* FindValueType(uint16_t code) {
  for (const ValueTypeInfo& t : kValueTypes) {
    if (t.code == code) return &t;
  }
  return nullptr;
}

constexpr size_t kGuidBytes = 16;

// Bytes a numeric field takes: its declared size when that is a narrower
// integer width, else the value type's width; 0 when the size is unusable.
int NumericWidth(const ValueTypeInfo& t, int64_t size) {
  if (size <= 0 || size >= t.width) return t.width;
  return (size == 1 || size == 2 || size == 4) ? static_cast<int>(size) : 0;
}

// Bytes the field of `b` occupies in the row record; 0 when invalid.
size_t FieldBytes(const ValueTypeInfo& t, const DalBinding& b) {
  switch (t.kind) {
    case ValueKind::kText:
      return b.size >= 1 ? static_cast<size_t>(b.size) : 0;
    case ValueKind::kGuid:
      return kGuidBytes;
    default:
      return static_cast<size_t>(NumericWidth(t, b.size));
  }
}

bool ParseWholeNumber(const std::string& s, bool unsignedWide, int64_t* value) {
  const char* begin = s.c_str();
  char* end = nullptr;
  errno = 0;
  const long long v = strtoll(begin, &end, 10);
  if (end != begin && *end == '\0' && errno == 0) {
    *value = v;
    return true;
  }
  if (unsignedWide && s.find('-') == std::string::npos) {
    errno = 0;
    const unsigned long long u = strtoull(begin, &end, 10);
    if (end != begin && *end == '\0' && errno == 0) {
      *value = static_cast<int64_t>(u);
      return true;
    }
  }
  return false;
}

bool DoubleToInteger(double d, int64_t* value) {
  if (std::isnan(d) || d < -9223372036854775808.0 || d >= 9223372036854775808.0) return false;
  *value = static_cast<int64_t>(d);
  return true;
}

// The column as a 64-bit integer; unsigned 64-bit fields take texts above
// the signed range too. Returns 0 or a status.
int ColumnInteger(sqlite3_stmt* stmt, int col, bool unsignedWide, int64_t* value) {
  switch (sqlite3_column_type(stmt, col)) {
    case SQLITE_INTEGER:
      *value = sqlite3_column_int64(stmt, col);
      return DAL_SUCCESS;
    case SQLITE_FLOAT:
      return DoubleToInteger(sqlite3_column_double(stmt, col), value) ? DAL_SUCCESS
                                                                      : DAL_VALUE_OUT_OF_RANGE;
    case SQLITE_TEXT: {
      std::string s(reinterpret_cast<const char*>(sqlite3_column_text(stmt, col)),
                    sqlite3_column_bytes(stmt, col));
      const size_t first = s.find_first_not_of(" \t");
      const size_t last = s.find_last_not_of(" \t");
      s = first == std::string::npos ? "" : s.substr(first, last - first + 1);
      if (ParseWholeNumber(s, unsignedWide, value)) return DAL_SUCCESS;
      char* end = nullptr;
      const double d = strtod(s.c_str(), &end);
      if (s.empty() || *end != '\0') return DAL_CONVERSION_ERROR;
      return DoubleToInteger(d, value) ? DAL_SUCCESS : DAL_VALUE_OUT_OF_RANGE;
    }
    default:
      return DAL_CONVERSION_ERROR;
  }
}

bool FitsWidth(int64_t v, ValueKind kind, int width) {
  if (width == 8) return true;
  const int bits = width * 8;
  if (kind == ValueKind::kUnsigned) return v >= 0 && v <= (int64_t{1} << bits) - 1;
  return v >= -(int64_t{1} << (bits - 1)) && v <= (int64_t{1} << (bits - 1)) - 1;
}

void WriteInteger(char* field, int64_t v, int width) {
  switch (width) {
    case 1: {
      const int8_t x = static_cast<int8_t>(v);
      memcpy(field, &x, 1);
      break;
    }
    case 2: {
      const int16_t x = static_cast<int16_t>(v);
      memcpy(field, &x, 2);
      break;
    }
    case 4: {
      const int32_t x = static_cast<int32_t>(v);
      memcpy(field, &x, 4);
      break;
    }
    default:
      memcpy(field, &v, 8);
      break;
  }
}

int64_t ReadInteger(const void* p, ValueKind kind, int width) {
  switch (width) {
    case 2: {
      uint16_t u;
      memcpy(&u, p, 2);
      return kind == ValueKind::kSigned ? int64_t{static_cast<int16_t>(u)} : int64_t{u};
    }
    case 4: {
      uint32_t u;
      memcpy(&u, p, 4);
      return kind == ValueKind::kSigned ? int64_t{static_cast<int32_t>(u)} : int64_t{u};
    }
    default: {
      int64_t v;
      memcpy(&v, p, 8);
      return v;
    }
  }
}

int StoreText(sqlite3_stmt* stmt, int col, char* field, size_t width, bool failOnTruncation) {
  const bool isBlob = sqlite3_column_type(stmt, col) == SQLITE_BLOB;
  const void* data = isBlob ? sqlite3_column_blob(stmt, col) : sqlite3_column_text(stmt, col);
  const size_t bytes = static_cast<size_t>(sqlite3_column_bytes(stmt, col));
  const size_t n = bytes < width - 1 ? bytes : width - 1;
  if (n > 0) memcpy(field, data, n);
  field[n] = '\0';
  return (n < bytes && failOnTruncation) ? DAL_DATA_TRUNCATED : DAL_SUCCESS;
}

int StoreGuid(sqlite3_stmt* stmt, int col, char* field) {
  const int type = sqlite3_column_type(stmt, col);
  if (type != SQLITE_BLOB && type != SQLITE_TEXT) return DAL_CONVERSION_ERROR;
  const void* data = type == SQLITE_BLOB ? sqlite3_column_blob(stmt, col)
                                         : static_cast<const void*>(sqlite3_column_text(stmt, col));
  if (static_cast<size_t>(sqlite3_column_bytes(stmt, col)) != kGuidBytes) {
    return DAL_CONVERSION_ERROR;
  }
  memcpy(field, data, kGuidBytes);
  return DAL_SUCCESS;
}

}  // namespace

int CheckResultBinding(const DalBinding& b, size_t rowSize, int columnCount) {
  const ValueTypeInfo* t = FindValueType(b.valueType);
  if (t == nullptr || b.direction != DAL_RESULT_COLUMN) return DAL_INVALID_ARGUMENT;
  if (b.columnNumber < 1 || b.columnNumber > columnCount) return DAL_INVALID_ARGUMENT;
  const size_t bytes = FieldBytes(*t, b);
  if (bytes == 0 || b.target > rowSize || bytes > rowSize - b.target) return DAL_INVALID_ARGUMENT;
  return DAL_SUCCESS;
}

int StoreColumn(sqlite3_stmt* stmt, const DalBinding& b, char* row, bool nullsAsZero,
                bool failOnTruncation) {
  const ValueTypeInfo* t = FindValueType(b.valueType);
  if (t == nullptr) return DAL_INVALID_ARGUMENT;
  const int col = b.columnNumber - 1;
  char* field = row + b.target;
  if (sqlite3_column_type(stmt, col) == SQLITE_NULL) {
    if (nullsAsZero) memset(field, 0, FieldBytes(*t, b));
    return DAL_SUCCESS;
  }
  switch (t->kind) {
    case ValueKind::kText:
      return StoreText(stmt, col, field, static_cast<size_t>(b.size), failOnTruncation);
    case ValueKind::kGuid:
      return StoreGuid(stmt, col, field);
    default: {
      const int width = NumericWidth(*t, b.size);
      int64_t v = 0;
      const int status =
          ColumnInteger(stmt, col, t->kind == ValueKind::kUnsigned && width == 8, &v);
      if (status != DAL_SUCCESS) return status;
      if (!FitsWidth(v, t->kind, width)) return DAL_VALUE_OUT_OF_RANGE;
      WriteInteger(field, v, width);
      return DAL_SUCCESS;
    }
  }
}

int BindParameter(sqlite3_stmt* stmt, int index, const DalBinding& b) {
  const ValueTypeInfo* t = FindValueType(b.valueType);
  if (t == nullptr || b.direction != DAL_INPUT_PARAMETER) return DAL_INVALID_ARGUMENT;
  const void* value = reinterpret_cast<const void*>(b.target);
  int rc;
  if (value == nullptr || (t->kind == ValueKind::kText && b.parameterLength == -1)) {
    rc = sqlite3_bind_null(stmt, index);
  } else if (t->kind == ValueKind::kText) {
    const char* text = static_cast<const char*>(value);
    const size_t n =
        b.parameterLength == DAL_NTS
            ? strlen(text)
            : strnlen(text, static_cast<size_t>(b.parameterLength < 0 ? 0 : b.parameterLength));
    rc = sqlite3_bind_text(stmt, index, text, static_cast<int>(n), SQLITE_TRANSIENT);
  } else if (t->kind == ValueKind::kGuid) {
    rc = sqlite3_bind_blob(stmt, index, value, static_cast<int>(kGuidBytes), SQLITE_TRANSIENT);
  } else {
    rc = sqlite3_bind_int64(stmt, index, ReadInteger(value, t->kind, t->width));
  }
  return rc == SQLITE_OK ? DAL_SUCCESS : DalStatusFromSqlite(rc);
}

}  // namespace Dal
}  // namespace Corvela
