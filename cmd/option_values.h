// The enumerated option values: the record-type mask of -rt, the notification
// type of -ntype, the dump form of -df, the copy-type names of -copy_type and
// the subsystem abbreviations of -subsys (abrevMap, filled at start-up). Each
// Parse function turns the text given on the command line into its number and
// returns false for a text it does not know.
#ifndef CMD_OPTION_VALUES_H_
#define CMD_OPTION_VALUES_H_

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>

#include "catalog/record_types.h"
#include "util/service_enums.h"

// A name of an enumerated option value and its number.
struct NamedValue {
  const char* name;
  int value;
};

// The names each Parse function below knows, each table ended by a row whose
// name is null: -rt, -ntype, -df, -copy_type and -subsys (the abbreviations
// in the order they are inserted into abrevMap).
extern const NamedValue kRecordTypes[], kNotificationTypes[], kDumpForms[], kCopyTypes[],
    kSubsystemAbbreviations[];

// Subsystem abbreviation to subsystem, compared with case.
extern std::map<std::string, SubSystemID> abrevMap;

// Fills abrevMap with its 18 pairs (idempotent).
void InitAbrevMap();

// -rt: I, IC or C, ICF or F, ICFS or S (case ignored) to the mask 1, 3, 7, 15.
bool ParseRecordTypes(const char* text, int* mask);

// -ntype: all, conf, error (case ignored).
bool ParseNotificationType(const char* text, ImportNotificationType_e* type);

// -df: r, j, l (case ignored).
bool ParseDumpForm(const char* text, DumpFormSelector* form);

// A base-10 integer read as strtoll reads it (leading blanks and a sign,
// trailing characters ignored, no digits reads 0) into *value. False when the
// number does not fit T: such a value is refused, never wrapped or clamped.
template <typename T>
bool ParseInteger(const char* text, T* value) {
  errno = 0;
  const long long n = strtoll(text, nullptr, 10);
  if (errno == ERANGE || n < std::numeric_limits<T>::min() || n > std::numeric_limits<T>::max()) {
    return false;
  }
  *value = static_cast<T>(n);
  return true;
}

// -copy_type: a text beginning with a decimal digit is read as a base-10
// integer (ParseInteger) and taken as it is; otherwise a copy-type name,
// case ignored.
bool ParseCopyType(const char* text, int* copyType);

// -subsys: an abbreviation of abrevMap (case counts), else a text made only
// of decimal digits whose value is at most 17.
bool ParseSubsystem(const char* text, SubSystemID* subsystem);

#endif  // CMD_OPTION_VALUES_H_
