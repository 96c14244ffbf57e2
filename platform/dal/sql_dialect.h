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
//   ... EXCEPT (SELECT ...)                         ->  ... EXCEPT SELECT * FROM
//                                                       (SELECT ...)
//   (also UNION [ALL], INTERSECT, and a parenthesized first operand)
//
// STRING(...), UPPER, AS aliases and case-insensitive names need no rewrite:
// STRING is registered as a function, the rest is native to SQLite.
//
// A statement that SQLite would run with another meaning is refused rather
// than translated: '+' beside a text literal (the native engine joins texts
// with '+', SQLite adds them as numbers).
#ifndef PLATFORM_DAL_SQL_DIALECT_H_
#define PLATFORM_DAL_SQL_DIALECT_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Corvela {
namespace Dal {

// Puts the SQLite form of `sql` in *out and returns true; returns false with
// the reason in *why for a statement it cannot translate faithfully.
bool TranslateSql(std::string_view sql, std::string* out, std::string* why);

// A statement's translation: ok with the SQLite form in `text`, or not ok
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
  explicit SqlTranslationCache(size_t capacity) : capacity_(capacity) {}

  // The translation of `sql`; the reference stays valid until the next call.
  const SqlTranslation& Translate(const std::string& sql);

 private:
  size_t capacity_;
  SqlTranslation last_;
  std::unordered_map<std::string, SqlTranslation> cache_;
};

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_SQL_DIALECT_H_
