// Message catalogs and status texts.
//
// Messages: one message catalog per locale,
// <root>/share/msg/<locale>/cyclectl.cat, built with gencat(1) and read by a
// reader of our own that checks the file (message_catalog_file.h): a damaged,
// truncated or foreign catalog counts as missing. A message id "Sme" + area + four digits + "N" is
// found in the set of its area (Slp 1, Com 2, Dup 3, Imp 4, Ret 5, Cln 6, Err 7) under the number
// its digits give: SmeCom0030N is set 2, message 30. A locale's files are looked for under the
// names of LocaleCandidates (locale.h), so that de_DE.UTF-8 finds de_DE and every locale ends at
// the C catalog.
//
// A catalog text is used only when its printf conversions take the same
// argument types in the same order as the default text's (positional
// conversions such as %2$s may reorder them); otherwise, and for an id or a
// catalog that is missing, the default text is used.
//
// Status texts: <root>/share/status/<locale>/status.txt, lines of a status
// number, blanks and the text; empty lines and lines starting with '#' are
// skipped.
#ifndef PLATFORM_MSGCAT_H_
#define PLATFORM_MSGCAT_H_

#include <cstdarg>
#include <cstddef>
#include <ostream>
#include <string>

// Formats the text of message `id` for `locale` with the arguments into
// `buffer` (at most `size` bytes, always terminated), falling back to
// `defaultFormat`. When `locale2` and `buffer2` are given, also formats the
// text for `locale2` into `buffer2` (`size2` bytes). Returns 0 when the
// catalog text was used for `buffer`, 1 when the default was.
int zkgetmsg(const char* id, const char* locale, size_t size, char* buffer, const char* locale2,
             size_t size2, char* buffer2, const char* defaultFormat, ...)
    __attribute__((format(printf, 8, 9)));

// zkgetmsg with the arguments as a va_list (left unused up to the caller's
// va_end).
int vzkgetmsg(const char* id, const char* locale, size_t size, char* buffer, const char* locale2,
              size_t size2, char* buffer2, const char* defaultFormat, va_list ap);

// The catalog text of `id` for `locale` as stored, without the format check;
// false when the catalog or the id is missing.
bool LookupCatalogText(const char* id, const char* locale, std::string* text);

// The argument types a printf format consumes, one letter per argument in
// argument order: i int, l long, q long long, z size_t, j intmax_t,
// t ptrdiff_t, d double, D long double, s char*, S wchar_t*, w wint_t,
// p pointer. False for a format that is not valid or uses %n.
bool PrintfArgumentTypes(const char* format, std::string* types);

// The status text of a status code in the messages locale of the environment.
// Unknown codes give "unknown status code <n>". The text lives as long as the
// process.
const char* getECmsg(int status);

// A status code with its text in one locale, written to a stream as the text.
struct ECMsgL {
  int status;
  std::string text;
};

// The status text of `status` in `locale`; safe to call from any thread.
ECMsgL getECmsgl_ts(int status, const char* locale);

std::ostream& operator<<(std::ostream& out, const ECMsgL& msg);

#endif  // PLATFORM_MSGCAT_H_
