// DATEDIFF, DATEADD and STRING for SQLite, with the UTC calendar arithmetic
// that reading a date-time text needs (days from a civil date, valid for
// years 0 to 9999).
#include "platform/sqldb/sqlite_functions.h"

#include <sqlite3.h>

#include <strings.h>

#include <cctype>
#include <string>

namespace sqldb {

namespace {

struct DatePart {
  const char* name;
  int64_t seconds;
};
const DatePart kDateParts[] = {
    {"SECOND", 1},  {"SS", 1},    {"S", 1},       {"MINUTE", 60}, {"MI", 60},   {"N", 60},
    {"HOUR", 3600}, {"HH", 3600}, {"DAY", 86400}, {"DD", 86400},  {"D", 86400},
};

int64_t DatePartSeconds(sqlite3_value* v) {
  const char* text = reinterpret_cast<const char*>(sqlite3_value_text(v));
  if (text == nullptr) return 0;
  for (const DatePart& p : kDateParts) {
    if (strcasecmp(text, p.name) == 0) return p.seconds;
  }
  return 0;
}

int64_t FloorDiv(int64_t a, int64_t b) {
  int64_t q = a / b;
  if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
  return q;
}

// Days since 1970-01-01 of a proleptic Gregorian date.
int64_t DaysFromCivil(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2;
  const int64_t era = FloorDiv(y, 400);
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

bool IsLeap(int64_t y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

// Reads exactly `n` digits at s[*pos].
bool Digits(std::string_view s, size_t* pos, int n, int64_t* value) {
  *value = 0;
  for (int i = 0; i < n; ++i, ++*pos) {
    if (*pos >= s.size() || !isdigit(static_cast<unsigned char>(s[*pos]))) return false;
    *value = *value * 10 + (s[*pos] - '0');
  }
  return true;
}

bool Expect(std::string_view s, size_t* pos, char c) {
  if (*pos >= s.size() || s[*pos] != c) return false;
  ++*pos;
  return true;
}

// The seconds since 1970 of a date-time argument; false for a value that is
// not one. NULL is reported through *isNull.
bool ValueSeconds(sqlite3_value* v, int64_t* seconds, bool* isNull) {
  *isNull = false;
  switch (sqlite3_value_type(v)) {
    case SQLITE_NULL:
      *isNull = true;
      return true;
    case SQLITE_INTEGER:
      *seconds = sqlite3_value_int64(v);
      return true;
    case SQLITE_FLOAT:
      *seconds = static_cast<int64_t>(sqlite3_value_double(v));
      return true;
    case SQLITE_TEXT: {
      const char* text = reinterpret_cast<const char*>(sqlite3_value_text(v));
      return ParseDateTime(std::string_view(text, sqlite3_value_bytes(v)), seconds);
    }
    default:
      return false;
  }
}

void DateDiff(sqlite3_context* ctx, int, sqlite3_value** argv) {
  const int64_t part = DatePartSeconds(argv[0]);
  if (part == 0) return sqlite3_result_error(ctx, "DATEDIFF: unknown date part", -1);
  int64_t a = 0, b = 0;
  bool aNull = false, bNull = false;
  if (!ValueSeconds(argv[1], &a, &aNull) || !ValueSeconds(argv[2], &b, &bNull)) {
    return sqlite3_result_error(ctx, "DATEDIFF: value is not a date-time", -1);
  }
  if (aNull || bNull) return sqlite3_result_null(ctx);
  int64_t diff = 0;
  if (__builtin_sub_overflow(FloorDiv(b, part), FloorDiv(a, part), &diff)) {
    return sqlite3_result_error(ctx, "DATEDIFF: result out of range", -1);
  }
  sqlite3_result_int64(ctx, diff);
}

void DateAdd(sqlite3_context* ctx, int, sqlite3_value** argv) {
  const int64_t part = DatePartSeconds(argv[0]);
  if (part == 0) return sqlite3_result_error(ctx, "DATEADD: unknown date part", -1);
  if (sqlite3_value_type(argv[1]) == SQLITE_NULL) return sqlite3_result_null(ctx);
  const int64_t amount = sqlite3_value_int64(argv[1]);
  int64_t base = 0;
  bool isNull = false;
  if (!ValueSeconds(argv[2], &base, &isNull)) {
    return sqlite3_result_error(ctx, "DATEADD: value is not a date-time", -1);
  }
  if (isNull) return sqlite3_result_null(ctx);
  int64_t offset = 0, result = 0;
  if (__builtin_mul_overflow(amount, part, &offset) ||
      __builtin_add_overflow(base, offset, &result)) {
    return sqlite3_result_error(ctx, "DATEADD: result out of range", -1);
  }
  sqlite3_result_int64(ctx, result);
}

void StringConcat(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  std::string joined;
  bool any = false;
  for (int i = 0; i < argc; ++i) {
    if (sqlite3_value_type(argv[i]) == SQLITE_NULL) continue;
    const unsigned char* text = sqlite3_value_text(argv[i]);
    joined.append(reinterpret_cast<const char*>(text), sqlite3_value_bytes(argv[i]));
    any = true;
  }
  if (!any) return sqlite3_result_null(ctx);
  sqlite3_result_text(ctx, joined.data(), static_cast<int>(joined.size()), SQLITE_TRANSIENT);
}

struct FunctionEntry {
  const char* name;
  int argc;  // -1: any number
  void (*fn)(sqlite3_context*, int, sqlite3_value**);
};
const FunctionEntry kFunctions[] = {
    {"DATEDIFF", 3, DateDiff},
    {"DATEADD", 3, DateAdd},
    {"STRING", -1, StringConcat},
};

}  // namespace

bool ParseDateTime(std::string_view s, int64_t* seconds) {
  size_t pos = 0;
  int64_t y, mo, d, h = 0, mi = 0, sec = 0;
  if (!Digits(s, &pos, 4, &y) || !Expect(s, &pos, '-') || !Digits(s, &pos, 2, &mo) ||
      !Expect(s, &pos, '-') || !Digits(s, &pos, 2, &d)) {
    return false;
  }
  if (pos < s.size() && (s[pos] == ' ' || s[pos] == 'T')) {
    ++pos;
    if (!Digits(s, &pos, 2, &h) || !Expect(s, &pos, ':') || !Digits(s, &pos, 2, &mi)) return false;
    if (pos < s.size() && s[pos] == ':') {
      ++pos;
      if (!Digits(s, &pos, 2, &sec)) return false;
      if (pos < s.size() && s[pos] == '.') {
        ++pos;
        while (pos < s.size() && isdigit(static_cast<unsigned char>(s[pos]))) ++pos;
      }
    }
  }
  if (pos < s.size() && s[pos] == 'Z') ++pos;
  if (pos != s.size()) return false;
  static const int kMonthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (mo < 1 || mo > 12 || d < 1 || h > 23 || mi > 59 || sec > 59) return false;
  if (d > kMonthDays[mo - 1] + (mo == 2 && IsLeap(y) ? 1 : 0)) return false;
  *seconds = DaysFromCivil(y, mo, d) * 86400 + h * 3600 + mi * 60 + sec;
  return true;
}

int RegisterDialectFunctions(sqlite3* db) {
  for (const FunctionEntry& f : kFunctions) {
    const int rc =
        sqlite3_create_function_v2(db, f.name, f.argc, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   f.fn, nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) return rc;
  }
  return SQLITE_OK;
}

}  // namespace sqldb
