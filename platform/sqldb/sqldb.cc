// The engine-neutral parts of sqldb.h: where the catalog is, opening it on
// its engine, the words for codes and the reading of numbers held as text.
#include "platform/sqldb/sqldb.h"

#include <cctype>

#include "platform/config.h"
#include "platform/sqldb/libpq_loader.h"
#include "platform/sqldb/pg_engine.h"
#include "platform/sqldb/sqlite_engine.h"

namespace sqldb {
namespace {

bool StartsWith(const std::string& text, const char* prefix) {
  return text.compare(0, std::char_traits<char>::length(prefix), prefix) == 0;
}

struct CodeWord {
  Code code;
  const char* text;
};
const CodeWord kCodeWords[] = {
    {Code::kOk, "ok"},
    {Code::kRow, "row"},
    {Code::kDone, "done"},
    {Code::kBusy, "locked"},
    {Code::kReadOnly, "read-only"},
    {Code::kConstraint, "constraint violated"},
    {Code::kFull, "disk full"},
    {Code::kIo, "I/O error"},
    {Code::kCorrupt, "not a catalog or damaged"},
    {Code::kMissing, "missing"},
    {Code::kNoAccess, "access denied"},
    {Code::kUnreachable, "server unreachable"},
    {Code::kCanceled, "canceled"},
    {Code::kNoMemory, "out of memory"},
    {Code::kRange, "value out of range"},
    {Code::kMisuse, "misuse"},
    {Code::kError, "error"},
};

}  // namespace

Location CatalogAt(const std::string& catalog) {
  Location where;
  where.busyTimeoutMs = SW_catalog_busy_timeout_ms();
  if (StartsWith(catalog, "postgresql://") || StartsWith(catalog, "postgres://")) {
    where.engine = Engine::kPostgres;
    where.conninfo = catalog;
    // Without libpq nothing can read the string; Open says what is missing.
    where.display = LoadLibpq(nullptr) ? PostgresDisplay(catalog) : "a PostgreSQL catalog";
    return where;
  }
  where.path = SW_catalog_path_of(catalog);
  where.display = where.path;
  return where;
}

Location ConfiguredLocation() { return CatalogAt(SW_config()->emmCatalog); }

Code Open(const Location& where, OpenMode mode, std::unique_ptr<Database>* db, std::string* why) {
  db->reset();
  if (where.engine == Engine::kPostgres) {
    if (!LoadLibpq(why)) return Code::kMissing;
    return OpenPostgres(where, mode, db, why);
  }
  return OpenSqlite(where, mode, db, why);
}

const char* CodeText(Code code) {
  for (const CodeWord& w : kCodeWords) {
    if (w.code == code) return w.text;
  }
  return "unknown";
}

// Leading blanks, a sign and decimal digits, as SQLite reads a number from
// text; anything after the digits is ignored, no digits give 0, and a value
// beyond 64 bits stops at the largest one.
int64_t Row::ParseInteger(const Cell& c) {
  if (c.type != Type::kText || c.data == nullptr) return 0;
  const char* p = c.data;
  const char* end = c.data + c.size;
  while (p < end && isspace(static_cast<unsigned char>(*p))) ++p;
  bool negative = false;
  if (p < end && (*p == '-' || *p == '+')) negative = *p++ == '-';
  uint64_t value = 0;
  const uint64_t limit = negative ? uint64_t{1} << 63 : (uint64_t{1} << 63) - 1;
  for (; p < end && isdigit(static_cast<unsigned char>(*p)); ++p) {
    const unsigned digit = static_cast<unsigned>(*p - '0');
    if (value > (limit - digit) / 10) {
      value = limit;
      break;
    }
    value = value * 10 + digit;
  }
  return negative ? static_cast<int64_t>(0 - value) : static_cast<int64_t>(value);
}

}  // namespace sqldb
