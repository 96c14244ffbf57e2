// Locale services: the run's locale names from the POSIX locale environment,
// and the date-time forms of a time locale.
//
// Date-time forms, by time locale (a locale not listed uses the C form):
//
//   C, POSIX, en, en_US      mm/dd/yyyy HH:MM:SS
//   en_GB, en_AU, en_NZ, en_IE, en_IN     dd/mm/yyyy HH:MM:SS
//   de, de_DE, de_AT, de_CH  dd.mm.yyyy HH:MM:SS
//
// Month and day may have one or two digits, the year has four; the time may
// be given as HH:MM:SS or HH:MM, separated from the date by blanks, and is
// local time (the TZ environment).
#ifndef PLATFORM_LOCALE_H_
#define PLATFORM_LOCALE_H_

#include <cstddef>
#include <string>
#include <vector>

// Fills the locale names of the messages, character type, time, collation and
// numeric categories (each buffer `size` bytes, 256 at start-up) from the
// environment: LC_ALL, else LC_<CATEGORY>, else LANG, else "C". A name that
// is too long or holds characters other than letters, digits, '_', '.', '-'
// and '@' counts as unset. `status` (256 bytes or null) receives the name of
// the variable that decided the messages locale, or "default". Returns 0.
int zkgetlocaleEx(char* messages, size_t messagesSize, char* ctype, size_t ctypeSize, char* time,
                  size_t timeSize, char* collate, size_t collateSize, char* numeric,
                  size_t numericSize, char* status);

// The names under which the files of `locale` are looked for, most specific
// first, ending with "C": de_DE.UTF-8@euro gives de_DE.UTF-8@euro, de_DE.UTF-8,
// de_DE, de, C; POSIX and an empty name give C.
std::vector<std::string> LocaleCandidates(const char* locale);

// The date-time form of the time locale, as shown in usage texts
// ("mm/dd/yyyy HH:MM:SS" for C). The text lives as long as the process.
const char* getdtstring(const char* timeLocale);

// Converts a date-time text of the time locale into seconds since 1970 in
// *result. `flag` 1 (the front end's -before and -after) accepts a date alone,
// meaning 00:00:00 of that day; `flag` 0 (a reactivation time, a moment)
// requires the time as well. A non-null `format` replaces the locale's form
// by a strptime(3) format that must match the whole text. Returns nonzero on
// success, 0 for a text that does not match, an impossible date or time, or
// a null text or result.
int convert2unixdatel(const char* text, long* result, int flag, const char* timeLocale,
                      const char* format = nullptr);

#endif  // PLATFORM_LOCALE_H_
