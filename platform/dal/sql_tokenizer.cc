// SQL tokenizer: one pass over the text, one token per lexical element.
#include "platform/dal/sql_tokenizer.h"

#include <cctype>

namespace Corvela {
namespace Dal {

namespace {

bool IsWordStart(unsigned char c) { return isalpha(c) || c == '_' || c >= 0x80; }
bool IsWordPart(unsigned char c) {
  return isalnum(c) || c == '_' || c == '$' || c == '#' || c == '@' || c >= 0x80;
}

// End of a token delimited by `close` that starts at `pos` (the opening
// character); a doubled `close` inside stands for itself when `doubled`.
size_t DelimitedEnd(std::string_view s, size_t pos, char close, bool doubled) {
  size_t i = pos + 1;
  while (i < s.size()) {
    if (s[i] == close) {
      if (doubled && i + 1 < s.size() && s[i + 1] == close) {
        i += 2;
        continue;
      }
      return i + 1;
    }
    ++i;
  }
  return s.size();
}

size_t NumberEnd(std::string_view s, size_t i) {
  if (s[i] == '0' && i + 1 < s.size() && (s[i + 1] == 'x' || s[i + 1] == 'X')) {
    i += 2;
    while (i < s.size() && isxdigit(static_cast<unsigned char>(s[i]))) ++i;
    return i;
  }
  while (i < s.size() && (isdigit(static_cast<unsigned char>(s[i])) || s[i] == '.')) ++i;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    if (j < s.size() && isdigit(static_cast<unsigned char>(s[j]))) {
      i = j;
      while (i < s.size() && isdigit(static_cast<unsigned char>(s[i]))) ++i;
    }
  }
  return i;
}

}  // namespace

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (toupper(static_cast<unsigned char>(a[i])) != toupper(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

bool SqlToken::IsWord(std::string_view upperWord) const {
  return kind == SqlTokenKind::kWord && EqualsIgnoreCase(text, upperWord);
}

std::string_view SqlToken::IdentifierName() const {
  if (kind == SqlTokenKind::kQuotedIdent && text.size() >= 2) {
    return text.substr(1, text.size() - 2);
  }
  return text;
}

std::vector<SqlToken> TokenizeSql(std::string_view s) {
  std::vector<SqlToken> tokens;
  size_t i = 0;
  while (i < s.size()) {
    const unsigned char c = static_cast<unsigned char>(s[i]);
    const char next = i + 1 < s.size() ? s[i + 1] : '\0';
    SqlTokenKind kind;
    size_t end;
    if (isspace(c)) {
      kind = SqlTokenKind::kSpace;
      end = i + 1;
      while (end < s.size() && isspace(static_cast<unsigned char>(s[end]))) ++end;
    } else if (c == '-' && next == '-') {
      kind = SqlTokenKind::kComment;
      end = s.find('\n', i);
      end = end == std::string_view::npos ? s.size() : end;
    } else if (c == '/' && next == '*') {
      kind = SqlTokenKind::kComment;
      end = s.find("*/", i + 2);
      end = end == std::string_view::npos ? s.size() : end + 2;
    } else if (c == '\'') {
      kind = SqlTokenKind::kString;
      end = DelimitedEnd(s, i, '\'', true);
    } else if (c == '"' || c == '`') {
      kind = SqlTokenKind::kQuotedIdent;
      end = DelimitedEnd(s, i, static_cast<char>(c), true);
    } else if (c == '[') {
      kind = SqlTokenKind::kQuotedIdent;
      end = DelimitedEnd(s, i, ']', false);
    } else if (isdigit(c) || (c == '.' && isdigit(static_cast<unsigned char>(next)))) {
      kind = SqlTokenKind::kNumber;
      end = NumberEnd(s, i);
    } else if (IsWordStart(c)) {
      kind = SqlTokenKind::kWord;
      end = i + 1;
      while (end < s.size() && IsWordPart(static_cast<unsigned char>(s[end]))) ++end;
    } else if (c == '?') {
      kind = SqlTokenKind::kParameter;
      end = i + 1;
    } else {
      kind = SqlTokenKind::kPunct;
      end = i + 1;
    }
    tokens.push_back(SqlToken{kind, s.substr(i, end - i)});
    i = end;
  }
  return tokens;
}

}  // namespace Dal
}  // namespace Corvela
