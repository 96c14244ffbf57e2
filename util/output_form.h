// Output forms of the reports and the time-range selector shared by the
// front end and the handlers, and the message for a form a report lacks.
#ifndef UTIL_OUTPUT_FORM_H_
#define UTIL_OUTPUT_FORM_H_

enum outputform_e {
  OUTPUT_SHORT = 0,         // -l, the default
  OUTPUT_USER = 1,          // -U
  OUTPUT_BRIEF = 2,         // -b
  OUTPUT_JSON = 3,          // -json
  OUTPUT_JSON_COMPACT = 4,  // -json_compact
};

// Time range of -before / -after; goes with one time value.
enum TimeRangeType {
  TIME_RANGE_NONE = 0,
  TIME_RANGE_BEFORE = 1,
  TIME_RANGE_AFTER = 2,
};

// Prints "unrecognized output format: <form>" on standard error, after the
// pending standard output.
void PrintUnsupportedForm(outputform_e form);

#endif  // UTIL_OUTPUT_FORM_H_
