// Marks, SQLSTATE codes, bytea and COPY texts of the PostgreSQL engine.
#include "platform/sqldb/pg_text.h"

#include <cstring>

namespace sqldb {
namespace {

struct StateCode {
  const char* state;  // five characters, or a two-character class
  Code code;
};

// Exact states first; a class entry catches the rest of its class.
const StateCode kStateCodes[] = {
    {"53100", Code::kFull},  // disk full
    {"53200", Code::kNoMemory},
    {"25006", Code::kReadOnly},     // read-only transaction (a reading role)
    {"55P03", Code::kBusy},         // lock not available within lock_timeout
    {"40P01", Code::kBusy},         // deadlock
    {"40001", Code::kBusy},         // serialization failure
    {"57014", Code::kCanceled},     // statement canceled
    {"57P01", Code::kUnreachable},  // administrator shutdown
    {"57P02", Code::kUnreachable},  // crash shutdown
    {"57P03", Code::kUnreachable},  // cannot connect now (starting up)
    {"3D000", Code::kMissing},      // no such database
    {"3F000", Code::kMissing},      // no such schema
    {"28P01", Code::kNoAccess},     // wrong password
    {"22003", Code::kRange},        // numeric value out of range
    {"58030", Code::kIo},
    {"XX001", Code::kCorrupt},   // data corrupted
    {"XX002", Code::kCorrupt},   // index corrupted
    {"08", Code::kUnreachable},  // connection exceptions
    {"23", Code::kConstraint},   // integrity constraint violations
    {"28", Code::kNoAccess},     // invalid authorization
    {"53", Code::kFull},         // insufficient resources
    {"26", Code::kMisuse},       // invalid statement name
    {"25", Code::kMisuse},       // invalid transaction state
};

bool Contains(std::string_view text, const char* part) {
  return text.find(part) != std::string_view::npos;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::vector<size_t> MarkOffsets(std::string_view sql) {
  std::vector<size_t> marks;
  const size_t n = sql.size();
  size_t i = 0;
  while (i < n) {
    const char c = sql[i];
    if (c == '\'' || c == '"') {
      // A doubled quote inside stands for itself.
      for (++i; i < n; ++i) {
        if (sql[i] != c) continue;
        if (i + 1 < n && sql[i + 1] == c) {
          ++i;
        } else {
          break;
        }
      }
      ++i;
    } else if (c == '-' && i + 1 < n && sql[i + 1] == '-') {
      while (i < n && sql[i] != '\n') ++i;
    } else if (c == '/' && i + 1 < n && sql[i + 1] == '*') {
      const size_t end = sql.find("*/", i + 2);
      i = end == std::string_view::npos ? n : end + 2;
    } else {
      if (c == '?') marks.push_back(i);
      ++i;
    }
  }
  return marks;
}

std::string NumberMarks(std::string_view sql, int* count) {
  const std::vector<size_t> marks = MarkOffsets(sql);
  std::string out;
  out.reserve(sql.size() + 2 * marks.size());
  size_t from = 0;
  int number = 0;
  for (size_t at : marks) {
    out.append(sql.substr(from, at - from));
    out += '$';
    out += std::to_string(++number);
    from = at + 1;
  }
  out.append(sql.substr(from));
  *count = number;
  return out;
}

Code CodeForSqlState(std::string_view state, bool isQuery) {
  if (state.size() != 5) return Code::kError;
  if (state == "42501") return isQuery ? Code::kNoAccess : Code::kReadOnly;
  for (const StateCode& entry : kStateCodes) {
    if (state.compare(0, strlen(entry.state), entry.state) == 0) return entry.code;
  }
  return Code::kError;
}

Code CodeForConnectFailure(std::string_view message) {
  if (Contains(message, "password") || Contains(message, "authentication") ||
      Contains(message, "permission denied") || Contains(message, "role \"")) {
    return Code::kNoAccess;
  }
  if (Contains(message, "database \"") && Contains(message, "does not exist"))
    return Code::kMissing;
  if (Contains(message, "out of memory")) return Code::kNoMemory;
  return Code::kUnreachable;
}

std::string ConnectFailureReason(std::string_view message) {
  std::string_view line = message.substr(0, message.find('\n'));
  const size_t failed = line.rfind("failed: ");
  if (failed != std::string_view::npos) line.remove_prefix(failed + 8);
  return std::string(line);
}

bool DecodeByteaHex(std::string_view text, std::string* out) {
  out->clear();
  if (text.size() < 2 || text[0] != '\\' || text[1] != 'x' || text.size() % 2 != 0) return false;
  out->reserve((text.size() - 2) / 2);
  for (size_t i = 2; i < text.size(); i += 2) {
    const int high = HexDigit(text[i]);
    const int low = HexDigit(text[i + 1]);
    if (high < 0 || low < 0) return false;
    out->push_back(static_cast<char>(high << 4 | low));
  }
  return true;
}

void AppendCopyText(std::string_view text, std::string* out) {
  for (char c : text) {
    switch (c) {
      case '\\':
        *out += "\\\\";
        break;
      case '\t':
        *out += "\\t";
        break;
      case '\n':
        *out += "\\n";
        break;
      case '\r':
        *out += "\\r";
        break;
      default:
        *out += c;
    }
  }
}

void AppendCopyBytea(const void* data, size_t size, std::string* out) {
  static const char kHex[] = "0123456789abcdef";
  const unsigned char* bytes = static_cast<const unsigned char*>(data);
  // bytea's input form \x..., its backslash doubled for COPY.
  *out += "\\\\x";
  for (size_t i = 0; i < size; ++i) {
    *out += kHex[bytes[i] >> 4];
    *out += kHex[bytes[i] & 15];
  }
}

}  // namespace sqldb
