// Conversions between the engine's values and the caller's fields, driven
// by the table of value types.
#include "platform/dal/value_codec.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

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

// A number held as text (leading and trailing blanks allowed): whole, or
// with a fraction or exponent, cut to a whole number. Returns 0 or a status.
int ParseNumber(std::string_view text, bool unsignedWide, int64_t* value) {
  const size_t first = text.find_first_not_of(" \t");
  const size_t last = text.find_last_not_of(" \t");
  const std::string s(first == std::string_view::npos ? std::string_view()
                                                      : text.substr(first, last - first + 1));
  if (ParseWholeNumber(s, unsignedWide, value)) return DAL_SUCCESS;
  char* end = nullptr;
  const double d = strtod(s.c_str(), &end);
  if (s.empty() || *end != '\0') return DAL_CONVERSION_ERROR;
  return DoubleToInteger(d, value) ? DAL_SUCCESS : DAL_VALUE_OUT_OF_RANGE;
}

// The column as a 64-bit integer; unsigned 64-bit fields take texts above
// the signed range too. Returns 0 or a status.
int ColumnInteger(const sqldb::Row& row, int col, bool unsignedWide, int64_t* value) {
  switch (row.type(col)) {
    case sqldb::Type::kInteger:
      *value = row.Int64(col);
      return DAL_SUCCESS;
    case sqldb::Type::kFloat:
    case sqldb::Type::kText:
      return ParseNumber(row.Bytes(col), unsignedWide, value);
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

int StoreText(const sqldb::Row& row, int col, char* field, size_t width, bool failOnTruncation) {
  // A number in a text field reads as its decimal digits.
  const std::string number =
      row.type(col) == sqldb::Type::kInteger ? std::to_string(row.Int64(col)) : std::string();
  const std::string_view data = number.empty() ? row.Bytes(col) : std::string_view(number);
  const size_t n = data.size() < width - 1 ? data.size() : width - 1;
  if (n > 0) memcpy(field, data.data(), n);
  field[n] = '\0';
  return (n < data.size() && failOnTruncation) ? DAL_DATA_TRUNCATED : DAL_SUCCESS;
}

int StoreGuid(const sqldb::Row& row, int col, char* field) {
  const sqldb::Type type = row.type(col);
  if (type != sqldb::Type::kBlob && type != sqldb::Type::kText) return DAL_CONVERSION_ERROR;
  const std::string_view data = row.Bytes(col);
  if (data.size() != kGuidBytes) return DAL_CONVERSION_ERROR;
  memcpy(field, data.data(), kGuidBytes);
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

int StoreColumn(const sqldb::Row& current, const DalBinding& b, char* row, bool nullsAsZero,
                bool failOnTruncation) {
  const ValueTypeInfo* t = FindValueType(b.valueType);
  if (t == nullptr) return DAL_INVALID_ARGUMENT;
  const int col = b.columnNumber - 1;
  char* field = row + b.target;
  if (current.IsNull(col)) {
    if (nullsAsZero) memset(field, 0, FieldBytes(*t, b));
    return DAL_SUCCESS;
  }
  switch (t->kind) {
    case ValueKind::kText:
      return StoreText(current, col, field, static_cast<size_t>(b.size), failOnTruncation);
    case ValueKind::kGuid:
      return StoreGuid(current, col, field);
    default: {
      const int width = NumericWidth(*t, b.size);
      int64_t v = 0;
      const int status =
          ColumnInteger(current, col, t->kind == ValueKind::kUnsigned && width == 8, &v);
      if (status != DAL_SUCCESS) return status;
      if (!FitsWidth(v, t->kind, width)) return DAL_VALUE_OUT_OF_RANGE;
      WriteInteger(field, v, width);
      return DAL_SUCCESS;
    }
  }
}

int BindParameter(sqldb::Statement* stmt, int index, const DalBinding& b) {
  const ValueTypeInfo* t = FindValueType(b.valueType);
  if (t == nullptr || b.direction != DAL_INPUT_PARAMETER) return DAL_INVALID_ARGUMENT;
  const void* value = reinterpret_cast<const void*>(b.target);
  sqldb::Code code;
  if (value == nullptr || (t->kind == ValueKind::kText && b.parameterLength == -1)) {
    code = stmt->BindNull(index);
  } else if (t->kind == ValueKind::kText) {
    const char* text = static_cast<const char*>(value);
    const size_t n =
        b.parameterLength == DAL_NTS
            ? strlen(text)
            : strnlen(text, static_cast<size_t>(b.parameterLength < 0 ? 0 : b.parameterLength));
    code = stmt->BindText(index, std::string_view(text, n));
  } else if (t->kind == ValueKind::kGuid) {
    code = stmt->BindBlob(index, value, kGuidBytes);
  } else {
    code = stmt->BindInt64(index, ReadInteger(value, t->kind, t->width));
  }
  return code == sqldb::Code::kOk ? DAL_SUCCESS : DalStatusFromCode(code);
}

}  // namespace Dal
}  // namespace Corvela
