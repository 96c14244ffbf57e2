// Locale names from the environment and the date-time forms of the time
// locales, kept as a table of locales with their field order and separator.
#include "platform/locale.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

bool ValidLocaleName(const char* s, size_t size) {
  if (!s || !*s || strlen(s) >= size) return false;
  if (strstr(s, "..")) return false;
  for (const char* p = s; *p; ++p)
    if (!isalnum(static_cast<unsigned char>(*p)) && !strchr("_.-@", *p)) return false;
  return true;
}

void Copy(char* dst, size_t size, const char* src) {
  if (!dst || size == 0) return;
  snprintf(dst, size, "%s", src);
}

// The locale of one category; *source names the variable that decided it.
const char* CategoryLocale(const char* category, size_t size, const char** source) {
  const char* names[] = {"LC_ALL", category, "LANG"};
  for (const char* name : names) {
    const char* v = getenv(name);
    if (v && *v) {
      *source = name;
      return ValidLocaleName(v, size) ? v : "C";
    }
  }
  *source = "default";
  return "C";
}

enum FieldOrder { MDY, DMY };

const struct DateForm {
  const char* locale;
  FieldOrder order;
  char separator;
  const char* text;
} kDateForms[] = {
    {"C", MDY, '/', "mm/dd/yyyy HH:MM:SS"},     {"en", MDY, '/', "mm/dd/yyyy HH:MM:SS"},
    {"en_US", MDY, '/', "mm/dd/yyyy HH:MM:SS"}, {"en_GB", DMY, '/', "dd/mm/yyyy HH:MM:SS"},
    {"en_AU", DMY, '/', "dd/mm/yyyy HH:MM:SS"}, {"en_NZ", DMY, '/', "dd/mm/yyyy HH:MM:SS"},
    {"en_IE", DMY, '/', "dd/mm/yyyy HH:MM:SS"}, {"en_IN", DMY, '/', "dd/mm/yyyy HH:MM:SS"},
    {"de", DMY, '.', "dd.mm.yyyy HH:MM:SS"},    {"de_DE", DMY, '.', "dd.mm.yyyy HH:MM:SS"},
    {"de_AT", DMY, '.', "dd.mm.yyyy HH:MM:SS"}, {"de_CH", DMY, '.', "dd.mm.yyyy HH:MM:SS"},
};

const DateForm& FormOf(const char* timeLocale) {
  for (const std::string& name : LocaleCandidates(timeLocale))
    for (const DateForm& f : kDateForms)
      if (name == f.locale) return f;
  return kDateForms[0];
}

// Reads 1 to `maxDigits` digits (exactly `maxDigits` when `exact`).
bool Digits(const char** p, int maxDigits, bool exact, int* out) {
  int n = 0, value = 0;
  while (n < maxDigits && isdigit(static_cast<unsigned char>(**p))) {
    value = value * 10 + (**p - '0');
    ++*p;
    ++n;
  }
  if (n == 0 || (exact && n != maxDigits) || isdigit(static_cast<unsigned char>(**p))) return false;
  *out = value;
  return true;
}

void SkipBlanks(const char** p) {
  while (**p == ' ' || **p == '\t') ++*p;
}

bool LeapYear(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int DaysIn(int month, int year) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && LeapYear(year) ? 29 : kDays[month - 1];
}

// Local time of the fields; false when mktime cannot represent it.
bool ToSeconds(struct tm* t, long* result) {
  t->tm_isdst = -1;
  t->tm_wday = -1;  // mktime sets it only on success
  time_t s = mktime(t);
  if (t->tm_wday == -1) return false;
  *result = static_cast<long>(s);
  return true;
}

bool ParseLocaleForm(const char* text, int flag, const DateForm& form, long* result) {
  const char* p = text;
  SkipBlanks(&p);
  int a, b, year;
  if (!Digits(&p, 2, false, &a) || *p++ != form.separator) return false;
  if (!Digits(&p, 2, false, &b) || *p++ != form.separator) return false;
  if (!Digits(&p, 4, true, &year)) return false;
  int month = form.order == MDY ? a : b;
  int day = form.order == MDY ? b : a;
  int hour = 0, minute = 0, second = 0;
  const char* afterDate = p;
  SkipBlanks(&p);
  if (*p == '\0') {
    if (!flag) return false;
  } else {
    if (p == afterDate) return false;
    if (!Digits(&p, 2, false, &hour) || *p++ != ':') return false;
    if (!Digits(&p, 2, true, &minute)) return false;
    if (*p == ':') {
      ++p;
      if (!Digits(&p, 2, true, &second)) return false;
    }
    SkipBlanks(&p);
    if (*p != '\0') return false;
  }
  if (year < 1900 || month < 1 || month > 12 || day < 1 || day > DaysIn(month, year)) return false;
  if (hour > 23 || minute > 59 || second > 59) return false;
  struct tm t = {};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return ToSeconds(&t, result);
}

bool ParseWithFormat(const char* text, const char* format, long* result) {
  struct tm t = {};
  const char* end = strptime(text, format, &t);
  if (!end) return false;
  SkipBlanks(&end);
  if (*end != '\0') return false;
  if (t.tm_mday < 1 || t.tm_mon < 0 || t.tm_mon > 11 ||
      t.tm_mday > DaysIn(t.tm_mon + 1, t.tm_year + 1900))
    return false;
  return ToSeconds(&t, result);
}

}  // namespace

int zkgetlocaleEx(char* messages, size_t messagesSize, char* ctype, size_t ctypeSize, char* time,
                  size_t timeSize, char* collate, size_t collateSize, char* numeric,
                  size_t numericSize, char* status) {
  const char* source = "default";
  const char* ignored = nullptr;
  Copy(messages, messagesSize, CategoryLocale("LC_MESSAGES", messagesSize, &source));
  Copy(ctype, ctypeSize, CategoryLocale("LC_CTYPE", ctypeSize, &ignored));
  Copy(time, timeSize, CategoryLocale("LC_TIME", timeSize, &ignored));
  Copy(collate, collateSize, CategoryLocale("LC_COLLATE", collateSize, &ignored));
  Copy(numeric, numericSize, CategoryLocale("LC_NUMERIC", numericSize, &ignored));
  Copy(status, 256, source);
  return 0;
}

std::vector<std::string> LocaleCandidates(const char* locale) {
  std::vector<std::string> out;
  std::string name = locale ? locale : "";
  if (!ValidLocaleName(name.c_str(), 256) || name == "C" || name == "POSIX") return {"C"};
  auto add = [&out](const std::string& s) {
    if (!s.empty() && (out.empty() || out.back() != s)) out.push_back(s);
  };
  add(name);
  std::string noModifier = name.substr(0, name.find('@'));
  add(noModifier);
  std::string noCodeset = noModifier.substr(0, noModifier.find('.'));
  add(noCodeset);
  add(noCodeset.substr(0, noCodeset.find('_')));
  add("C");
  return out;
}

const char* getdtstring(const char* timeLocale) { return FormOf(timeLocale).text; }

int convert2unixdatel(const char* text, long* result, int flag, const char* timeLocale,
                      const char* format) {
  if (!text || !result) return 0;
  long seconds = 0;
  bool ok = format ? ParseWithFormat(text, format, &seconds)
                   : ParseLocaleForm(text, flag, FormOf(timeLocale), &seconds);
  if (!ok) return 0;
  *result = seconds;
  return 1;
}
