// The usage texts of cyclectl: the general usage (the list of operations)
// and the synopsis of every operation. The texts are fixed English and are
// not taken from the message catalog; only the date format text of the run's
// time locale is filled in where a date is expected.
#ifndef CMD_USAGE_H_
#define CMD_USAGE_H_

#include <ostream>

#include "cmd/operation_id.h"

enum usage_format_e {
  USAGE_ALL = 0,     // the general usage lists the internal operations too (-q)
  USAGE_PUBLIC = 1,  // the default
};

// Writes the usage of `op` to `out`: the general usage for OP_HELP (in the
// given form), the operation's synopsis for every other operation that has
// one, and nothing for remove_all, OP_NONE or an unknown id.
void CmdUsage(std::ostream& out, usage_format_e form, operation_e op);

#endif  // CMD_USAGE_H_
