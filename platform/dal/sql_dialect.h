// The dialect adapter: the statements of the tool are written for the
// catalog's native SQL engine and sent unchanged; this module rewrites each
// for the engine the catalog is on before it is prepared. Rewrites, all on
// tokens (literals, quoted names and comments are never touched):
//
//                                 SQLite                 PostgreSQL
//   EMM_Main.T, DBM_Main.T,       T (one database)       kept (real schemas)
//   SLP_MAIN.T (any case)
//   ISNULL(a, b, ...)             COALESCE(a, b, ...)    the same
//   DATEDIFF(SECOND, a, b),       the date part quoted   the same, for the
//   DATEADD(SECOND, n, d)         ('SECOND'), for the    schema's functions
//                                 functions of
//                                 sql_functions.h
//   STRING(a, b, ...)             kept (a function of    CONCAT(a, b, ...)
//                                 sql_functions.h)
//   IF c THEN a [ELSEIF c2 THEN   CASE WHEN c THEN a     the same
//   b] ELSE d ENDIF               [WHEN c2 THEN b]
//                                 ELSE d END
//   ... EXCEPT (SELECT ...)       ... EXCEPT SELECT *    kept (native)
//   (also UNION [ALL],            FROM (SELECT ...)
//   INTERSECT, and a
//   parenthesized first operand)
//
// '?' parameter marks stay: the engine numbers them ($n on PostgreSQL).
// UPPER, AS aliases and case-insensitive names need no rewrite.
//
// A statement that the engine would run with another meaning is refused
// rather than translated: '+' beside a text literal (the native engine joins
// texts with '+', SQLite adds them as numbers, PostgreSQL has no such '+').
#ifndef PLATFORM_DAL_SQL_DIALECT_H_
#define PLATFORM_DAL_SQL_DIALECT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/sqldb/sqldb.h"

namespace Corvela {
namespace Dal {

// Puts the form of `sql` for `target` in *out and returns true; returns
// false with the reason in *why for a statement it cannot translate
// faithfully.
bool TranslateSql(std::string_view sql, std::string* out, std::string* why,
                  sqldb::Engine target = sqldb::Engine::kSqlite);

// A statement's translation: ok with the engine's form in `text`, or not ok
// with the reason in `text`.
struct SqlTranslation {
  bool ok = false;
  std::string text;
};

// Remembers up to `capacity` translations (0: none), forgetting all of them
// when full; statements repeat within a run (the same lookup for every
// image), so this spares the tokenizer most of its work.
class SqlTranslationCache {
 public:
  explicit SqlTranslationCache(size_t capacity, sqldb::Engine target = sqldb::Engine::kSqlite)
      : capacity_(capacity), target_(target) {}

  // The translation of `sql`; the reference stays valid until the next call.
  const SqlTranslation& Translate(const std::string& sql);

 private:
  size_t capacity_;
  sqldb::Engine target_;
  SqlTranslation last_;
  std::unordered_map<std::string, SqlTranslation> cache_;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_SQL_DIALECT_H_
