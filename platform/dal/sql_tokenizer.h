// Splits an SQL text into tokens for the dialect translator. Every byte of
// the input belongs to exactly one token, so concatenating the tokens gives
// the input back; string literals, quoted identifiers and comments are single
// tokens, so nothing inside them is ever rewritten. Never fails: an
// unterminated literal or comment runs to the end of the text.
#ifndef PLATFORM_DAL_SQL_TOKENIZER_H_
#define PLATFORM_DAL_SQL_TOKENIZER_H_

#include <string_view>
#include <vector>

namespace Corvela {
namespace Dal {

enum class SqlTokenKind {
  kSpace,        // blanks, tabs, line ends
  kComment,      // -- to end of line, or /* ... */
  kWord,         // keyword or unquoted identifier
  kQuotedIdent,  // "name", [name] or `name`
  kString,       // 'text' with '' inside
  kNumber,       // 12, 1.5, 1e3, 0x1F
  kParameter,    // ?
  kPunct,        // any other single character
};

struct SqlToken {
  SqlTokenKind kind;
  std::string_view text;  // points into the tokenized input

  bool IsSignificant() const {
    return kind != SqlTokenKind::kSpace && kind != SqlTokenKind::kComment;
  }
  // True for a word equal to `upperWord` without regard to ASCII case.
  bool IsWord(std::string_view upperWord) const;
  bool IsPunct(char c) const {
    return kind == SqlTokenKind::kPunct && text.size() == 1 && text[0] == c;
  }
  // An identifier's name: a word as written, a quoted identifier without its
  // quotes (doubled quotes are left as they are).
  std::string_view IdentifierName() const;
};

// The tokens of `sql`, which must outlive them.
std::vector<SqlToken> TokenizeSql(std::string_view sql);

// True when `a` and `b` are equal without regard to ASCII case.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

}  // namespace Dal
}  // namespace Corvela

#endif  // PLATFORM_DAL_SQL_TOKENIZER_H_
