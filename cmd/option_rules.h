// The option rules of the argument walker: one row per spelling cyclectl
// accepts (every name of optNames, and -h and -state; -m is -M, as case is ignored), saying which
// option number's given-flag it sets, whether it takes a value, which
// operation it selects when none is set yet, and how its value is stored.
#ifndef CMD_OPTION_RULES_H_
#define CMD_OPTION_RULES_H_

#include "cmd/command_line.h"

// The message that reports a value the rule's store function rejects.
enum ValueError {
  VALUE_NEVER_REJECTED,
  VALUE_NOT_RECOGNIZED,  // SmeSlp0490N, with the value as typed (-rt, -df)
  VALUE_INVALID,         // SmeSlp0570N (-copy_type, -ntype, -subsys, -before, -after,
                         // and a number that does not fit its field)
};

struct OptionRule {
  const char* spelling;  // matched over its whole length, case ignored
  option_e option;       // the option whose given-flag the rule sets; OPT_NONE: none
  bool takesValue;
  operation_e selects;  // taken as the operation when none is set yet; OP_NONE: none
  ValueError error;
  // Stores the option's effect in `line`; `value` is null for a flag. Returns
  // false when the value is rejected.
  bool (*store)(CommandLine& line, const char* value);
};

// The rules in the order they are tried; the first whose spelling matches
// the argument applies. Ended by a row whose spelling is null.
extern const OptionRule optionRules[];

#endif  // CMD_OPTION_RULES_H_
