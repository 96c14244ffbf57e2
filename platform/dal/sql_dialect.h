// The dialect adapter: the statements of the tool are written for the
// catalog's native SQL engine and sent unchanged; this module rewrites each
// into SQLite before it is prepared. Rewrites, all on tokens (literals,
// quoted names and comments are never touched):
//
//   EMM_Main.T, DBM_Main.T, SLP_MAIN.T (any case)  ->  T
//   ISNULL(a, b, ...)                               ->  COALESCE(a, b, ...)
//   DATEDIFF(SECOND, a, b), DATEADD(SECOND, n, d)   ->  the date part quoted
//                                                       ('SECOND'), for the
//                                                       functions of sql_functions.h
//   IF c THEN a [ELSEIF c2 THEN b] ELSE d ENDIF     ->  CASE WHEN c THEN a
//                                                       [WHEN c2 THEN b] ELSE d END
//   ... EXCEPT (SELECT ...)                         ->  ... EXCEPT SELECT ...
//   (also UNION [ALL], INTERSECT, and a parenthesized first operand)
//
// STRING(...), UPPER, AS aliases and case-insensitive names need no rewrite:
// STRING is registered as a function, the rest is native to SQLite.
#ifndef PLATFORM_DAL_SQL_DIALECT_H_
#define PLATFORM_DAL_SQL_DIALECT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Corvela {
namespace Dal {

// The SQLite form of `sql`.
std::string TranslateSql(std::string_view sql);

// Remembers up to `capacity` translations (0: none), forgetting all of them
// when full; statements repeat within a run (the same lookup for every
// image), so this spares the tokenizer most of its work.
class SqlTranslationCache {
 public:
  explicit SqlTranslationCache(size_t capacity) : capacity_(capacity) {}

  // The translation of `sql`; the reference stays valid until the next call.
  const std::string& Translate(const std::string& sql);

 private:
  size_t capacity_;
  std::string last_;
  std::unordered_map<std::string, std::string> cache_;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_SQL_DIALECT_H_
