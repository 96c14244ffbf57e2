// Date-time columns of the catalog: 'YYYY-MM-DD HH:MM:SS' in UTC, turned into
// seconds since 1970 without going through the C library's time zone rules.
#include "platform/emmlib/sqlite_stmt.h"

namespace emm {
namespace {

// Reads `n` decimal digits at `p`; false when one is not a digit.
bool Digits(const unsigned char* p, int n, int* out) {
  int v = 0;
  for (int i = 0; i < n; ++i) {
    if (p[i] < '0' || p[i] > '9') return false;
    v = v * 10 + (p[i] - '0');
  }
  *out = v;
  return true;
}

// Days from 1970-01-01 to the given civil date (proleptic Gregorian).
int64_t DaysFromCivil(int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

}  // namespace

int64_t ColumnDateTime(sqlite3_stmt* stmt, int col) {
  const unsigned char* t = sqlite3_column_text(stmt, col);
  if (t == nullptr || sqlite3_column_bytes(stmt, col) < 19) return 0;
  int y, mo, d, h, mi, s;
  if (!Digits(t, 4, &y) || t[4] != '-' || !Digits(t + 5, 2, &mo) || t[7] != '-' ||
      !Digits(t + 8, 2, &d) || (t[10] != ' ' && t[10] != 'T') || !Digits(t + 11, 2, &h) ||
      t[13] != ':' || !Digits(t + 14, 2, &mi) || t[16] != ':' || !Digits(t + 17, 2, &s)) {
    return 0;
  }
  if (mo < 1 || mo > 12 || d < 1 || d > 31) return 0;
  return DaysFromCivil(y, static_cast<unsigned>(mo), static_cast<unsigned>(d)) * 86400 +
         h * 3600 + mi * 60 + s;
}

}  // namespace emm
