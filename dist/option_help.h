// What the manual page says about each option beyond the front end's tables:
// what it is for, the form of its value and what an operation takes when it
// is not given.
#ifndef DIST_OPTION_HELP_H_
#define DIST_OPTION_HELP_H_

#include "cmd/options.h"

struct OptionHelp {
  option_e option;
  const char* value;     // the value's name in the page ("date", "name", ...); null: a flag
  const char* meaning;   // one or more sentences, plain text
  const char* fallback;  // what an operation takes without it; null: nothing to say
};

// The help of `option`, or null when the table lacks it (the page generator
// then refuses to write the page).
const OptionHelp* FindOptionHelp(option_e option);

#endif  // DIST_OPTION_HELP_H_
