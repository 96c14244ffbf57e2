// Dialect translation: tokenize, let each rewrite rule mark its replacements
// on the significant tokens, then join the tokens again.
#include "platform/dal/sql_dialect.h"

#include <cctype>
#include <string>
#include <vector>

#include "platform/dal/sql_tokenizer.h"

namespace Corvela {
namespace Dal {

namespace {

// Schema qualifiers of the native engine; a SQLite catalog keeps every
// table in one database, so there the qualifier is dropped.
const char* const kSchemas[] = {"EMM_MAIN", "DBM_MAIN", "SLP_MAIN"};

// Functions that an engine knows under another name.
struct FunctionRename {
  const char* from;
  const char* to;
  bool postgresOnly;
};
const FunctionRename kFunctionRenames[] = {
    {"ISNULL", "COALESCE", false},
    {"STRING", "CONCAT", true},
};

// Functions whose first argument is a bare date-part keyword.
const char* const kDatePartFunctions[] = {"DATEDIFF", "DATEADD"};

// Keywords of the native IF expression and their CASE counterparts.
struct KeywordRewrite {
  const char* from;
  const char* to;
  int depthChange;  // +1 opens an IF expression, -1 closes one
};
const KeywordRewrite kIfKeywords[] = {
    {"IF", "CASE WHEN", +1},
    {"ELSEIF", "WHEN", 0},
    {"ENDIF", "END", -1},
};
// IF after these words belongs to SQLite's own IF [NOT] EXISTS.
const char* const kIfExistsContext[] = {"TABLE", "INDEX", "VIEW", "TRIGGER"};

const char* const kCompoundOperators[] = {"UNION", "EXCEPT", "INTERSECT"};

template <size_t N>
bool InList(std::string_view name, const char* const (&list)[N]) {
  for (const char* item : list) {
    if (EqualsIgnoreCase(name, item)) return true;
  }
  return false;
}

class Translator {
 public:
  Translator(std::string_view sql, sqldb::Engine target)
      : tokens_(TokenizeSql(sql)), postgres_(target == sqldb::Engine::kPostgres) {
    for (size_t i = 0; i < tokens_.size(); ++i) {
      out_.emplace_back(tokens_[i].text);
      if (tokens_[i].IsSignificant()) sig_.push_back(i);
    }
  }

  bool Run(std::string* out, std::string* why) {
    *why = Refusal();
    if (!why->empty()) return false;
    if (!postgres_) StripSchemas();
    RenameFunctions();
    QuoteDateParts();
    RewriteIfExpressions();
    if (!postgres_) WrapCompoundOperands();
    out->clear();
    for (const std::string& piece : out_) *out += piece;
    return true;
  }

 private:
  // The significant token at position p, or a blank placeholder past the end.
  const SqlToken& At(size_t p) const {
    static const SqlToken kNone{SqlTokenKind::kSpace, ""};
    return p < sig_.size() ? tokens_[sig_[p]] : kNone;
  }
  std::string& Out(size_t p) { return out_[sig_[p]]; }

  static bool IsName(const SqlToken& t) {
    return t.kind == SqlTokenKind::kWord || t.kind == SqlTokenKind::kQuotedIdent;
  }

  // Position of the ')' that closes the '(' at p, or sig_.size().
  size_t MatchingParen(size_t p) const {
    int depth = 0;
    for (size_t q = p; q < sig_.size(); ++q) {
      if (At(q).IsPunct('(')) ++depth;
      if (At(q).IsPunct(')') && --depth == 0) return q;
    }
    return sig_.size();
  }

  void StripSchemas() {
    for (size_t p = 0; p + 2 < sig_.size(); ++p) {
      if (!IsName(At(p)) || !InList(At(p).IdentifierName(), kSchemas)) continue;
      if (!At(p + 1).IsPunct('.') || !IsName(At(p + 2))) continue;
      if (p > 0 && At(p - 1).IsPunct('.')) continue;
      for (size_t i = sig_[p]; i < sig_[p + 2]; ++i) out_[i].clear();
    }
  }

  void RenameFunctions() {
    for (size_t p = 0; p + 1 < sig_.size(); ++p) {
      if (!At(p + 1).IsPunct('(')) continue;
      for (const FunctionRename& r : kFunctionRenames) {
        if (At(p).IsWord(r.from) && (postgres_ || !r.postgresOnly)) Out(p) = r.to;
      }
    }
  }

  void QuoteDateParts() {
    for (size_t p = 0; p + 3 < sig_.size(); ++p) {
      if (At(p).kind != SqlTokenKind::kWord || !InList(At(p).text, kDatePartFunctions)) continue;
      if (!At(p + 1).IsPunct('(') || At(p + 2).kind != SqlTokenKind::kWord ||
          !At(p + 3).IsPunct(',')) {
        continue;
      }
      std::string part;
      for (char c : At(p + 2).text)
        part += static_cast<char>(toupper(static_cast<unsigned char>(c)));
      Out(p + 2) = "'" + part + "'";
    }
  }

  void RewriteIfExpressions() {
    int depth = 0;
    for (size_t p = 0; p < sig_.size(); ++p) {
      for (const KeywordRewrite& k : kIfKeywords) {
        if (!At(p).IsWord(k.from)) continue;
        if (k.depthChange > 0 && p > 0 && At(p - 1).kind == SqlTokenKind::kWord &&
            InList(At(p - 1).text, kIfExistsContext)) {
          continue;
        }
        if (k.depthChange <= 0 && depth == 0) continue;
        Out(p) = k.to;
        depth += k.depthChange;
      }
    }
  }

  bool IsCompoundOperator(size_t p) const {
    return At(p).kind == SqlTokenKind::kWord && InList(At(p).text, kCompoundOperators);
  }

  // Why the engine would give the statement another meaning, or "". The
  // native engine joins texts with '+'; SQLite adds them as numbers ('a' +
  // 'b' is 0), PostgreSQL has no '+' for texts, and which operands are texts
  // is known only for literals.
  std::string Refusal() const {
    for (size_t p = 0; p < sig_.size(); ++p) {
      if (!At(p).IsPunct('+')) continue;
      if ((p > 0 && At(p - 1).kind == SqlTokenKind::kString) ||
          At(p + 1).kind == SqlTokenKind::kString) {
        return "'+' beside a text literal (use || to join texts)";
      }
    }
    return "";
  }

  // Makes the parenthesized sub-select at p a FROM clause of its own, which
  // SQLite accepts as a compound operand with the same meaning; merely
  // dropping the parentheses would regroup a compound operand.
  void WrapSelect(size_t p) {
    if (MatchingParen(p) != sig_.size()) Out(p) = "SELECT * FROM (";
  }

  void WrapCompoundOperands() {
    for (size_t p = 0; p < sig_.size(); ++p) {
      // A first operand: at the start of the statement or of a sub-select.
      if (At(p).IsPunct('(') && At(p + 1).IsWord("SELECT") && (p == 0 || At(p - 1).IsPunct('(')) &&
          IsCompoundOperator(MatchingParen(p) + 1)) {
        WrapSelect(p);
      }
      if (!IsCompoundOperator(p)) continue;
      size_t q = p + 1;
      if (At(q).IsWord("ALL") || At(q).IsWord("DISTINCT")) ++q;
      if (At(q).IsPunct('(') && At(q + 1).IsWord("SELECT")) WrapSelect(q);
    }
  }

  std::vector<SqlToken> tokens_;
  std::vector<std::string> out_;  // replacement text of every token
  std::vector<size_t> sig_;       // indexes of the significant tokens
  bool postgres_;
};

}  // namespace

bool TranslateSql(std::string_view sql, std::string* out, std::string* why, sqldb::Engine target) {
  return Translator(sql, target).Run(out, why);
}

const SqlTranslation& SqlTranslationCache::Translate(const std::string& sql) {
  auto translate = [this, &sql](SqlTranslation* t) {
    std::string why;
    t->ok = TranslateSql(sql, &t->text, &why, target_);
    if (!t->ok) t->text = why;
  };
  if (capacity_ == 0) {
    translate(&last_);
    return last_;
  }
  auto it = cache_.find(sql);
  if (it != cache_.end()) return it->second;
  if (cache_.size() >= capacity_) cache_.clear();
  SqlTranslation& t = cache_[sql];
  translate(&t);
  return t;
}

}  // namespace Dal
}  // namespace Corvela
